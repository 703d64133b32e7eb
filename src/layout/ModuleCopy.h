// A module's key map and options, taken from one setup into another by way of a text: a setup file with that
// module alone, so that it can also come from a file, and go into one.
#pragma once

#include <string>
#include <string_view>

#include "setup/SetupDocument.h"

namespace kelvora {

/// The text of the main module of that kind, a main keyboard with its backlight; of a module that the setup
/// has not, an empty setup.
std::string CopyModule(const SetupDocument& document, ModuleKind kind);

struct ModulePasting {
    enum class Outcome {
        Done,
        NoModule,  ///< the text is not that of one module
        NotThere,  ///< the setup has no module of that kind
        Same,      ///< the setup's module has these keys and options
    };

    Outcome outcome = Outcome::NoModule;
    ModuleKind kind = ModuleKind::None;
    SetupDocument document{};  ///< when Done: the setup with the keys and options of the text
};

ModulePasting PasteModule(const SetupDocument& document, std::string_view text);

}  // namespace kelvora
