#include "flash/DumpText.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/HexText.h"
#include "setup/ModuleRecord.h"

namespace kelvora {

namespace {

constexpr std::string_view DeviceMapHead = "'DeviceMap: ";
constexpr std::string_view LineEnd = "\r\n";
constexpr char CommentMark = '\'';

constexpr std::size_t BytesPerLine = 16;
constexpr std::size_t AddressLength = 8;  // of "UUUU:LL "
constexpr std::size_t NumberLength = 3;   // of "HH "
constexpr std::size_t NumbersEnd = AddressLength + BytesPerLine * NumberLength;

constexpr std::string_view Digits = "0123456789ABCDEF";

char Visible(std::uint8_t byte)
{
    return byte >= 32 && byte <= 126 ? static_cast<char>(byte) : '.';
}

std::string CharactersOf(std::span<const std::uint8_t> bytes)
{
    std::string text(bytes.size(), ' ');
    std::ranges::transform(bytes, text.begin(), Visible);
    return text;
}

std::optional<std::uint8_t> ByteOf(std::string_view number)
{
    const std::size_t high = Digits.find(number[0]);
    const std::size_t low = Digits.find(number[1]);
    if (high == std::string_view::npos || low == std::string_view::npos || number[2] != ' ')
        return std::nullopt;
    return static_cast<std::uint8_t>(high * 16 + low);
}

class Reader {
public:
    explicit Reader(std::string_view text) : text_(text) {}

    FlashDump Read();

private:
    bool NextLine();
    void TakeComment();
    void TakeLine();
    std::vector<std::uint8_t> BytesOfLine() const;
    [[noreturn]] void Reject(DumpFault fault) const { throw DumpError(line_, fault, address_); }

    std::string_view text_;
    std::size_t line_ = 0;
    std::string_view content_;  // of that line
    FlashDump dump_;
    std::size_t address_ = 0;  // of the image's next line
    bool isDeviceMapDue_ = false;
};

bool Reader::NextLine()
{
    ++line_;
    if (text_.empty())
        return false;
    const std::size_t end = std::min(text_.find('\n'), text_.size());
    content_ = text_.substr(0, end);
    text_.remove_prefix(std::min(end + 1, text_.size()));
    if (content_.ends_with('\r'))
        content_.remove_suffix(1);
    // The empty line with which the writer of text files ends a text.
    return !content_.empty() || !text_.empty();
}

void Reader::TakeComment()
{
    if (!content_.starts_with(DeviceMapHead) || dump_.deviceMap || address_ != 0)
        return;
    dump_.deviceMap = {std::string(content_.substr(DeviceMapHead.size())), {}};
    isDeviceMapDue_ = true;
}

// The bytes of a line whose form and characters are right; the line's length says how many there are.
std::vector<std::uint8_t> Reader::BytesOfLine() const
{
    if (content_.size() <= NumbersEnd || content_.size() > NumbersEnd + BytesPerLine)
        Reject(DumpFault::Form);
    const std::size_t count = content_.size() - NumbersEnd;
    std::vector<std::uint8_t> bytes;
    bytes.reserve(count);
    for (std::size_t at = AddressLength; bytes.size() < count; at += NumberLength) {
        const auto byte = ByteOf(content_.substr(at, NumberLength));
        if (!byte)
            Reject(DumpFault::Digits);
        bytes.push_back(*byte);
    }
    const std::size_t numbersEnd = AddressLength + count * NumberLength;
    if (content_.substr(numbersEnd, NumbersEnd - numbersEnd).find_first_not_of(' ') != std::string_view::npos)
        Reject(DumpFault::Form);
    if (content_.substr(NumbersEnd) != CharactersOf(bytes))
        Reject(DumpFault::Characters);
    return bytes;
}

void Reader::TakeLine()
{
    if (address_ == FlashSize)
        Reject(DumpFault::AfterEnd);
    const std::vector<std::uint8_t> bytes = BytesOfLine();
    if (!content_.starts_with(DumpAddress(address_) + ' '))
        Reject(DumpFault::Address);
    if (bytes.size() == BytesPerLine) {
        std::ranges::copy(bytes, dump_.image.begin() + static_cast<std::ptrdiff_t>(address_));
        address_ += BytesPerLine;
    } else if (!isDeviceMapDue_) {
        Reject(DumpFault::Form);
    } else if (bytes.size() > MaximumModules) {
        Reject(DumpFault::DeviceMapSize);
    } else {
        dump_.deviceMap->deviceMap.assign(bytes.begin(), bytes.end());
    }
    isDeviceMapDue_ = false;
}

FlashDump Reader::Read()
{
    while (NextLine()) {
        if (content_.starts_with(CommentMark))
            TakeComment();
        else
            TakeLine();
    }
    if (address_ != FlashSize)
        Reject(DumpFault::MissingEnd);
    return std::move(dump_);
}

}  // namespace

std::string DumpAddress(std::size_t address)
{
    return HexText(address / 256, 4) + ':' + HexText(address % 256, 2);
}

std::string FormatDump(std::size_t startAddress, std::span<const std::uint8_t> bytes)
{
    std::string text;
    text.reserve((bytes.size() / BytesPerLine + 1) * (NumbersEnd + BytesPerLine + LineEnd.size()));
    for (std::size_t at = 0; at < bytes.size(); at += BytesPerLine) {
        const auto line = bytes.subspan(at, std::min(BytesPerLine, bytes.size() - at));
        const std::size_t start = text.size();
        text.append(DumpAddress(startAddress + at)).push_back(' ');
        for (const std::uint8_t byte : line) {
            text += HexText(byte, 2);
            text += ' ';
        }
        text.resize(start + NumbersEnd, ' ');
        text.append(CharactersOf(line)).append(LineEnd);
    }
    return text;
}

std::string FormatDeviceMapDump(const DeviceMapDump& dump)
{
    const std::vector<std::uint8_t> codes(dump.deviceMap.begin(), dump.deviceMap.end());
    return std::string(DeviceMapHead).append(dump.title).append(LineEnd).append(FormatDump(0, codes));
}

FlashDump ReadDump(std::string_view text)
{
    return Reader(text).Read();
}

}  // namespace kelvora
