// The options of a module as a person sets them, out of and into a setup.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "setup/SetupDocument.h"

namespace kelvora {

/// The badge reader's options.
struct McrOptions {
    std::uint8_t tracks = 0;           ///< the device code that reads them: MCR12, MCR23 or MCR123
    std::array<char, 3> separators{};  ///< sent after track 1, 2, 3; Options::NoSeparator for none
    bool autoread = false;

    friend bool operator==(const McrOptions&, const McrOptions&) = default;
};

/// The main keyboard's options.
struct MasterOptions {
    bool fiscal = false;
    std::optional<bool> backlight;  ///< nothing where the line has no backlight part

    friend bool operator==(const MasterOptions&, const MasterOptions&) = default;
};

/// Nothing when the setup has no such module.
std::optional<McrOptions> ReadMcrOptions(const SetupDocument& document);
std::optional<MasterOptions> ReadMasterOptions(const SetupDocument& document);

/// The setup with these options; unchanged when it has no such module. A separator that a file cannot carry
/// is taken as none.
SetupDocument WithOptions(const SetupDocument& document, const McrOptions& options);
SetupDocument WithOptions(const SetupDocument& document, const MasterOptions& options);

}  // namespace kelvora
