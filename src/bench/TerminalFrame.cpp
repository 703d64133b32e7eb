#include "bench/TerminalFrame.h"

namespace kelvora::bench {

namespace {

constexpr std::string_view HexDigits = "0123456789ABCDEF";
constexpr std::string_view Escaped("\x01\x03\x0A\x0D\x15\x1B");
constexpr char EscapeMark = '\x1B';
constexpr int EscapeXor = 0x40;

constexpr std::size_t ExchangeLength = 4;
constexpr std::size_t CheckLength = 4;

/// Far above any body that means something to the terminal.
constexpr std::size_t LongestContent = 1024;

/// Bytes that no undamaged body holds; 01 and 03 have their own meaning.
constexpr std::string_view NeverInBody("\x0A\x0D\x15");

}  // namespace

std::uint16_t Crc16(std::string_view bytes)
{
    unsigned crc = 0xFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned>(static_cast<unsigned char>(byte)) << 8;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc << 1) ^ ((crc & 0x8000U) != 0 ? 0x1021U : 0U);
    }
    return static_cast<std::uint16_t>(crc);
}

std::uint32_t Crc32(std::string_view bytes)
{
    std::uint32_t crc = 0xFFFFFFFFU;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1U) != 0 ? 0xEDB88320U : 0U);
    }
    return ~crc;
}

std::string Hex(std::uint32_t value, std::size_t digits)
{
    std::string text(digits, '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, value >>= 4)
        *digit = HexDigits[value & 0xFU];
    return text;
}

std::optional<std::uint32_t> ParseHex(std::string_view text, std::size_t digits)
{
    if (text.size() != digits)
        return std::nullopt;
    std::uint32_t value = 0;
    for (const char digit : text) {
        const std::size_t place = HexDigits.find(digit);
        if (place == std::string_view::npos)
            return std::nullopt;
        value = value << 4 | static_cast<std::uint32_t>(place);
    }
    return value;
}

std::string Escape(char byte)
{
    if (Escaped.find(byte) == std::string_view::npos)
        return {byte};
    return {EscapeMark, static_cast<char>(byte ^ EscapeXor)};
}

std::optional<std::string> Unescape(std::string_view text)
{
    std::string data;
    for (std::size_t index = 0; index < text.size(); ++index) {
        char byte = text[index];
        if (byte == EscapeMark) {
            if (++index == text.size())
                return std::nullopt;
            byte = static_cast<char>(text[index] ^ EscapeXor);
            if (Escaped.find(byte) == std::string_view::npos)
                return std::nullopt;
        }
        data += byte;
    }
    return data;
}

std::string MakeFrame(std::string_view exchange, std::string_view body)
{
    const std::string content = std::string(exchange).append(body);
    return Soh + content + Etx + Hex(Crc16(content), CheckLength);
}

FrameReceiver::Heard FrameReceiver::Take(char byte)
{
    if (byte == Soh) {
        part_ = Part::Content;
        content_.clear();
        check_.clear();
    } else if (part_ == Part::Content) {
        if (byte == Etx)
            part_ = Part::Check;
        else
            content_ += byte;
        if (content_.size() > LongestContent)
            return Judge();
    } else if (part_ == Part::Check) {
        check_ += byte;
        if (check_.size() == CheckLength)
            return Judge();
    }
    return Heard::Nothing;
}

FrameReceiver::Heard FrameReceiver::Judge()
{
    part_ = Part::Between;
    const bool whole = check_ == Hex(Crc16(content_), CheckLength) &&
                       ParseHex(content_.substr(0, ExchangeLength), ExchangeLength) &&
                       content_.find_first_of(NeverInBody) == std::string::npos;
    return whole ? Heard::Frame : Heard::Damage;
}

}  // namespace kelvora::bench
