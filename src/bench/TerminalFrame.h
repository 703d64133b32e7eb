// The terminal's side of the link's frames:
//   SOH (01)  exchange: 4 hex digits  body  ETX (03)  CRC: 4 hex digits
// with a CRC-16/CCITT-FALSE over exchange and body as sent. Written apart from the program's own frames,
// which are checked against it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "bench/ControlBytes.h"

namespace kelvora::bench {

/// Polynomial 1021, start value FFFF, nothing reflected.
std::uint16_t Crc16(std::string_view bytes);

/// Polynomial 04C11DB7 reflected, start value and final XOR FFFFFFFF.
std::uint32_t Crc32(std::string_view bytes);

/// The lowest `digits` hexadecimal digits of a number, upper case.
std::string Hex(std::uint32_t value, std::size_t digits);

/// The number that an upper-case hexadecimal text of exactly `digits` digits stands for; nothing for another.
std::optional<std::uint32_t> ParseHex(std::string_view text, std::size_t digits);

/// A byte of block data as it stands in a body: 01 03 0A 0D 15 1B become 1B and the byte XOR 40.
std::string Escape(char byte);

/// Block data from its escaped form; nothing when an escape stands for none of the six, or at the end.
std::optional<std::string> Unescape(std::string_view text);

/// The whole frame for an exchange's four digits and a body.
std::string MakeFrame(std::string_view exchange, std::string_view body);

/// Puts frames together from the bytes that come in.
class FrameReceiver {
public:
    enum class Heard { Nothing, Frame, Damage };

    /// What is complete with this byte. SOH always begins a new frame; what is outside a frame is passed
    /// over.
    Heard Take(char byte);

    bool InFrame() const { return part_ != Part::Between; }
    /// The rest of a frame that has begun is not coming.
    void Forget() { part_ = Part::Between; }

    /// Of the frame heard last.
    std::string_view Exchange() const { return std::string_view(content_).substr(0, 4); }
    std::string_view Body() const { return std::string_view(content_).substr(4); }

private:
    enum class Part { Between, Content, Check };

    Heard Judge();

    Part part_ = Part::Between;
    std::string content_;  ///< exchange and body
    std::string check_;
};

}  // namespace kelvora::bench
