// A flash image as text that people read, and that is read back: a line for each 16 bytes, from address 0.
//
//   UUUU:LL HH HH HH HH HH HH HH HH HH HH HH HH HH HH HH HH cccccccccccccccc
//
// UUUU is the address / 256, LL the address mod 256, HH a byte, c the same byte as a character ("." where it
// is not visible); all numbers are hexadecimal. Lines that begin with "'" are comments; those of
// flash/DumpHead.h say what the dump is. A device map dump is the comment "'DeviceMap: " with a title, and
// the map's codes as a dump line of their own, shorter than the image's lines; no line when the map is empty.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "flash/DumpHead.h"
#include "flash/FlashImage.h"

namespace kelvora {

/// An address as a dump line begins with it: "UUUU:LL".
std::string DumpAddress(std::size_t address);

/// The dump lines of these bytes, the first of which stands at `startAddress` (a multiple of 16); CR LF ends
/// each line. In a last line of fewer than 16 bytes blanks stand for the rest's numbers.
std::string FormatDump(std::size_t startAddress, std::span<const std::uint8_t> bytes);

std::string FormatDeviceMapDump(const DeviceMapDump& dump);

struct FlashDump {
    FlashImage image{};
    DumpHead head{};
    /// The user's word, for a dump that names no modules: the line is the one that it is for.
    bool isForTheLine = false;
};

/// The whole dump: what its head tells, the checksums, and the image.
std::string FormatFlashDump(const FlashDump& dump);

/// What is wrong with a line of a dump.
enum class DumpFault {
    Form,           ///< not a dump line
    Digits,         ///< no hexadecimal numbers where they belong
    Address,        ///< another address is due: a line is missing, repeated or out of order
    Characters,     ///< the characters are not those of the numbers
    MissingEnd,     ///< the text ends before the image does
    AfterEnd,       ///< something stands behind the image
    DeviceMapSize,  ///< a device map of more than seven modules
    DeviceMapCode,  ///< a device map with a code that no line reports
    Kind,           ///< a kind that is none, or a second one
    CrcForm,        ///< a checksum that is none, or a second one
    Crc,            ///< the image has another checksum than the line says
    MapCrc,         ///< the device map has another checksum than the line says
    Last = MapCrc,
};

/// Why a text is no dump of an image.
class DumpError : public std::runtime_error {
public:
    DumpError(std::size_t line, DumpFault fault, std::size_t address)
        : std::runtime_error("rejected flash dump"), line_(line), fault_(fault), address_(address)
    {
    }

    std::size_t Line() const { return line_; }  ///< counts from 1; where the next line is due for MissingEnd
    DumpFault Fault() const { return fault_; }
    std::size_t Address() const { return address_; }  ///< the one that is due there, 0 to 8192

private:
    std::size_t line_;
    DumpFault fault_;
    std::size_t address_;
};

/// The whole image that the text dumps, with what is told before it; checksums that stand there hold. A line
/// feed ends a line, with or without a carriage return before it. Blanks at the end of lines may be missing,
/// and empty lines may end the text. Throws DumpError.
FlashDump ReadDump(std::string_view text);

}  // namespace kelvora
