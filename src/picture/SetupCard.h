// What a card shows of a setup file: its modules and their picture, or why it cannot be shown.
#pragma once

#include <optional>
#include <string>

#include "catalogue/MessageCatalogue.h"
#include "platform/Files.h"
#include "setup/SetupError.h"

namespace kelvora {

struct SetupCard {
    enum class State { Whole, Gone, NotRead };

    State state = State::Whole;
    std::string reason{};               ///< why it was not read, in the system's words
    std::optional<SetupError> fault{};  ///< or what is wrong with its text
    std::string modules{};              ///< "KM096, MCR"; empty for none
    std::string picture{};              ///< of the strip, as SVG text; empty for none
};

/// Looks at the file, on any thread.
SetupCard ReadSetupCard(const Files& files, const std::string& path);

/// Why it was not read, in the catalogue's language; empty where it was.
std::string ReasonOf(const SetupCard& card, const MessageCatalogue& catalogue);

}  // namespace kelvora
