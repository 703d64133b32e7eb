// Reading the text of a setup file, or the device map of a scanned line, into a setup.
// The format is told in setup/SetupWriter.h, the cutting into lines in setup/SetupLines.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "setup/SetupDocument.h"
#include "setup/SetupError.h"

namespace kelvora {

/// Whether a second module of one kind is read. A window could show only one of them and refuses it; read,
/// its lines go to the first module of the kind.
enum class RepeatedKinds { Read, Refuse };

/// The setup that `text` describes. Throws SetupError at the first line that is not valid.
SetupDocument ReadSetup(std::string_view text, RepeatedKinds repeated = RepeatedKinds::Refuse);

/// The same; nothing for a text that is not valid.
std::optional<SetupDocument> TryReadSetup(std::string_view text);

/// A device map that makes no setup, with the first position that does not fit.
class DeviceMapError : public SetupError {
public:
    DeviceMapError(std::uint32_t number, Expected expected, std::size_t position, std::uint8_t code)
        : SetupError(number, 0, expected), position_(position), code_(code)
    {
    }

    std::size_t Position() const { return position_; }  ///< counts from 1
    std::uint8_t Code() const { return code_; }         ///< the device code that stands there

private:
    std::size_t position_;
    std::uint8_t code_;
};

/// The setup of a line that reported these device codes, one character a position, under the rules of a setup
/// file. The device map is kept letter for letter; a code that no module has keeps its position without a
/// record. Throws DeviceMapError.
SetupDocument ReadDeviceMap(std::string_view deviceMap);

}  // namespace kelvora
