#include "bench/StateText.h"

#include <algorithm>
#include <span>

#include "bench/TerminalFrame.h"

namespace kelvora::bench {

namespace {

constexpr std::string_view ModeHead = "'Mode: ";
constexpr std::string_view ModuleHead = "'Module ";
constexpr std::size_t BytesPerLine = 16;

std::string HexBytes(std::span<const std::uint8_t> bytes)
{
    std::string text;
    for (const std::uint8_t byte : bytes)
        text.append(Hex(byte, 2)).append(1, ' ');
    return text;
}

std::string ModuleLine(std::size_t address, const IdentityBytes& block)
{
    std::string line =
        std::string(ModuleHead).append(std::to_string(address)).append(": ").append(HexBytes(block));
    line.pop_back();
    return line;
}

std::string DumpLine(std::size_t address, std::span<const std::uint8_t> bytes)
{
    std::string line = Hex(static_cast<std::uint32_t>(address / 256), 4) + ":" +
                       Hex(static_cast<std::uint32_t>(address % 256), 2) + " " + HexBytes(bytes);
    for (const std::uint8_t byte : bytes)
        line += byte >= 32 && byte <= 126 ? static_cast<char>(byte) : '.';
    return line;
}

/// The lines of a state text, counted from 1.
class Lines {
public:
    explicit Lines(std::string_view text) : rest_(text) {}

    bool AtEnd() const { return rest_.empty(); }

    /// The line in front, without its end; empty behind the last.
    std::string_view Front() const
    {
        std::string_view line = rest_.substr(0, rest_.find('\n'));
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        return line;
    }

    void Next()
    {
        const std::size_t end = rest_.find('\n');
        if (end == std::string_view::npos)
            Fail("a line end");
        rest_.remove_prefix(end + 1);
        ++number_;
    }

    [[noreturn]] void Fail(std::string_view expected) const
    {
        throw StateError("line " + std::to_string(number_) + ": " + std::string(expected) + " expected");
    }

private:
    std::string_view rest_;
    int number_ = 1;
};

/// Bytes that stand from `start` on in the line in front, each two digits and a blank.
void ReadBytes(const Lines& lines, std::size_t start, std::span<std::uint8_t> bytes)
{
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        const std::string_view line = lines.Front();
        const std::size_t place = std::min(line.size(), start + 3 * index);
        const auto byte = ParseHex(line.substr(place, 2), 2);
        if (!byte)
            lines.Fail("two hexadecimal digits in column " + std::to_string(place + 1));
        bytes[index] = static_cast<std::uint8_t>(*byte);
    }
}

char ReadMode(Lines& lines)
{
    const std::string_view line = lines.Front();
    const bool isMode = line.size() == ModeHead.size() + 1 && line.starts_with(ModeHead) &&
                        line.back() >= '0' && line.back() <= '3';
    if (!isMode)
        lines.Fail("\"'Mode: \" and a digit from 0 to 3");
    const char mode = line.back();
    lines.Next();
    return mode;
}

std::vector<IdentityBytes> ReadModules(Lines& lines)
{
    std::vector<IdentityBytes> modules;
    while (lines.Front().starts_with(ModuleHead)) {
        if (modules.size() == MostModules)
            lines.Fail("the flash, after seven modules,");
        IdentityBytes& block = modules.emplace_back();
        ReadBytes(lines, ModuleHead.size() + std::string_view("0: ").size(), block);
        if (const std::string line = ModuleLine(modules.size() - 1, block); lines.Front() != line)
            lines.Fail("\"" + line + "\"");
        lines.Next();
    }
    return modules;
}

FlashBytes ReadFlash(Lines& lines)
{
    FlashBytes flash{};
    for (std::size_t address = 0; address < FlashSize; address += BytesPerLine) {
        const std::string head = DumpLine(address, {});
        if (!lines.Front().starts_with(head))
            lines.Fail("the flash at \"" + head + "\"");
        const auto bytes = std::span(flash).subspan(address, BytesPerLine);
        ReadBytes(lines, head.size(), bytes);
        if (lines.Front() != DumpLine(address, bytes))
            lines.Fail("sixteen bytes and the same as characters");
        lines.Next();
    }
    return flash;
}

}  // namespace

std::string FormatState(const LineState& state)
{
    std::string text = std::string(ModeHead).append(1, state.mode).append("\r\n");
    for (std::size_t address = 0; address < state.modules.size(); ++address)
        text.append(ModuleLine(address, state.modules[address])).append("\r\n");
    for (std::size_t address = 0; address < FlashSize; address += BytesPerLine)
        text.append(DumpLine(address, std::span(state.flash).subspan(address, BytesPerLine))).append("\r\n");
    return text;
}

LineState ReadState(std::string_view text)
{
    Lines lines(text);
    LineState state;
    state.mode = ReadMode(lines);
    state.modules = ReadModules(lines);
    state.flash = ReadFlash(lines);
    if (!lines.AtEnd())
        lines.Fail("the end of the file");
    return state;
}

}  // namespace kelvora::bench
