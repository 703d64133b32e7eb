// What a dump says of itself: comment lines before its image, each a name and what it tells.
//
//   'DeviceMap: COM1, 2026-03-09 07:05:00   where and when, see flash/BackupTitle.h; the map's dump line
//   follows 'MapCRC: 1F2E3D4C                       CRC-32 of the map 'Kind: device read from a device, or
//   "setup": made from one 'Terminal: TILL 7                       the name of the line's terminal 'Setup:
//   /tills/till07.dat               the setup's file 'CRC: 90ABCDEF                          CRC-32 of the
//   image
//
// None is needed, and other comments mean nothing. Terminal and Setup may hold any byte: "%" and two
// hexadecimal digits stand for one that is not a visible ASCII character, for "%" itself, and for a blank at
// the end.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kelvora {

/// Where a dump's image comes from.
enum class DumpKind { Device, Setup, Last = Setup };

/// A line's device map, and the text that tells where it comes from.
struct DeviceMapDump {
    std::string title;  ///< one line
    std::string deviceMap;

    friend bool operator==(const DeviceMapDump&, const DeviceMapDump&) = default;
};

/// What is told; the checksums come from what they are of.
struct DumpHead {
    std::optional<DeviceMapDump> deviceMap{};
    std::optional<DumpKind> kind{};
    std::string terminal{};  ///< empty when not told
    std::string setup{};     ///< path; empty when not told

    friend bool operator==(const DumpHead&, const DumpHead&) = default;
};

struct HeadLine {
    enum class Name { DeviceMap, MapCrc, Kind, Terminal, Setup, Crc, Last = Crc };

    Name name = Name::DeviceMap;
    std::string_view value;  ///< as it stands there
};

/// A head line's name and value; nothing for another line.
std::optional<HeadLine> ParseHeadLine(std::string_view line);

/// The head line, without its end.
std::string FormatHeadLine(HeadLine::Name name, std::string_view value);

/// Any bytes as one line of visible ASCII, and back. A "%" that no such number follows stands for itself.
std::string HeadText(std::string_view bytes);
std::string BytesOfHeadText(std::string_view text);

/// "device" or "setup", and back; nothing for another text.
std::string_view KindText(DumpKind kind);
std::optional<DumpKind> KindOfText(std::string_view text);

/// A checksum's eight hexadecimal digits; nothing for another text.
std::optional<std::uint32_t> ParseCrc(std::string_view text);

}  // namespace kelvora
