#include "flash/DumpText.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "comms/Crc.h"
#include "platform/Blanks.h"
#include "platform/NumberText.h"
#include "platform/TextLines.h"
#include "setup/DeviceCode.h"
#include "setup/ModuleRecord.h"

namespace kelvora {

namespace {

constexpr char CommentMark = '\'';

constexpr std::size_t BytesPerLine = 16;
constexpr std::size_t AddressLength = 8;  // of "UUUU:LL "
constexpr std::size_t NumberLength = 3;   // of "HH "
constexpr std::size_t NumbersEnd = AddressLength + BytesPerLine * NumberLength;
constexpr std::size_t LineLength = NumbersEnd + BytesPerLine;

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

bool IsBlank(std::string_view text)
{
    return text.find_first_not_of(' ') == std::string_view::npos;
}

// A code that a line reports for one of its modules.
bool IsReported(char code)
{
    const auto number = static_cast<std::uint8_t>(code);
    return number == DeviceCode::Unknown || KindOf(number) != ModuleKind::None;
}

class Reader {
public:
    // Empty lines at the end come from the writer of text files, from editors and from mails.
    explicit Reader(std::string_view text) : text_(text.substr(0, text.find_last_not_of("\r\n ") + 1)) {}

    FlashDump Read();

private:
    // A checksum, and the line that says it.
    struct Check {
        std::uint32_t crc;
        std::size_t line;
    };

    bool NextLine();
    void TakeComment();
    void TakeKind(std::string_view value);
    void TakeCheck(std::optional<Check>& check, std::string_view value) const;
    void TakeLine();
    void TakeDeviceMap(const std::vector<std::uint8_t>& codes);
    std::vector<std::uint8_t> BytesOfLine() const;
    void CheckSums() const;
    [[noreturn]] void Reject(DumpFault fault) const { throw DumpError(line_, fault, address_); }

    std::string_view text_;
    std::size_t line_ = 0;
    std::string_view content_;  // of that line
    FlashDump dump_;
    std::optional<Check> imageCheck_;
    std::optional<Check> mapCheck_;
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
    return true;
}

void Reader::TakeComment()
{
    const auto told = address_ == 0 ? ParseHeadLine(content_) : std::nullopt;
    if (!told)
        return;
    DumpHead& head = dump_.head;
    switch (told->name) {
        case HeadLine::Name::DeviceMap:
            isDeviceMapDue_ = !head.deviceMap;
            if (isDeviceMapDue_)
                head.deviceMap = {std::string(told->value), {}};
            return;
        case HeadLine::Name::Kind:
            return TakeKind(told->value);
        case HeadLine::Name::Terminal:
            head.terminal = BytesOfHeadText(told->value);
            return;
        case HeadLine::Name::Setup:
            head.setup = BytesOfHeadText(told->value);
            return;
        case HeadLine::Name::MapCrc:
            return TakeCheck(mapCheck_, told->value);
        case HeadLine::Name::Crc:
            return TakeCheck(imageCheck_, told->value);
    }
}

void Reader::TakeKind(std::string_view value)
{
    const auto kind = KindOfText(Trim(value));
    if (!kind || dump_.head.kind)
        Reject(DumpFault::Kind);
    dump_.head.kind = kind;
}

void Reader::TakeCheck(std::optional<Check>& check, std::string_view value) const
{
    const auto crc = ParseCrc(Trim(value));
    if (!crc || check)
        Reject(DumpFault::CrcForm);
    check = {*crc, line_};
}

// The bytes of a line whose form and characters are right; a line of fewer bytes has blanks for their
// numbers.
std::vector<std::uint8_t> Reader::BytesOfLine() const
{
    if (content_.size() > LineLength)
        Reject(DumpFault::Form);
    std::string line(content_);
    line.resize(LineLength, ' ');
    const std::string_view numbers(line.data(), NumbersEnd);
    std::vector<std::uint8_t> bytes;
    std::size_t at = AddressLength;
    for (; !IsBlank(numbers.substr(at, NumberLength)); at += NumberLength) {
        const auto byte = ByteOf(numbers.substr(at, NumberLength));
        if (!byte)
            Reject(DumpFault::Digits);
        bytes.push_back(*byte);
    }
    if (bytes.empty() || !IsBlank(numbers.substr(at)))
        Reject(DumpFault::Form);
    std::string characters = CharactersOf(bytes);
    characters.resize(BytesPerLine, ' ');
    if (line.substr(NumbersEnd) != characters)
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
    } else {
        TakeDeviceMap(bytes);
    }
    isDeviceMapDue_ = false;
}

void Reader::TakeDeviceMap(const std::vector<std::uint8_t>& codes)
{
    if (!isDeviceMapDue_)
        Reject(DumpFault::Form);
    if (codes.size() > MaximumModules)
        Reject(DumpFault::DeviceMapSize);
    std::string& map = dump_.head.deviceMap->deviceMap;
    map.assign(codes.begin(), codes.end());
    if (!std::ranges::all_of(map, IsReported))
        Reject(DumpFault::DeviceMapCode);
}

void Reader::CheckSums() const
{
    const auto check = [](const std::optional<Check>& said, std::string_view bytes, DumpFault fault) {
        if (said && said->crc != Crc32(bytes))
            throw DumpError(said->line, fault, 0);
    };
    if (dump_.head.deviceMap)
        check(mapCheck_, dump_.head.deviceMap->deviceMap, DumpFault::MapCrc);
    check(imageCheck_, TextOf(dump_.image), DumpFault::Crc);
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
    CheckSums();
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
    for (std::size_t address = startAddress; !bytes.empty(); address += BytesPerLine) {
        const auto line = bytes.first(std::min(BytesPerLine, bytes.size()));
        const std::size_t start = text.size();
        text.append(DumpAddress(address)).push_back(' ');
        for (const std::uint8_t byte : line) {
            text += HexText(byte, 2);
            text += ' ';
        }
        text.resize(start + NumbersEnd, ' ');
        text.append(CharactersOf(line)).append(LineEnd);
        bytes = bytes.subspan(line.size());
    }
    return text;
}

std::string FormatDeviceMapDump(const DeviceMapDump& dump)
{
    const std::vector<std::uint8_t> codes(dump.deviceMap.begin(), dump.deviceMap.end());
    return FormatHeadLine(HeadLine::Name::DeviceMap, dump.title).append(LineEnd) + FormatDump(0, codes);
}

std::string FormatFlashDump(const FlashDump& dump)
{
    using Name = HeadLine::Name;
    const DumpHead& head = dump.head;
    std::string text = head.deviceMap ? FormatDeviceMapDump(*head.deviceMap) : std::string();
    const auto tell = [&](Name name, std::string_view value) {
        if (!value.empty())
            text.append(FormatHeadLine(name, value)).append(LineEnd);
    };
    const auto crc = [](std::string_view bytes) { return HexText(Crc32(bytes), 8); };
    if (head.deviceMap && !head.deviceMap->deviceMap.empty())
        tell(Name::MapCrc, crc(head.deviceMap->deviceMap));
    if (head.kind)
        tell(Name::Kind, KindText(*head.kind));
    tell(Name::Terminal, HeadText(head.terminal));
    tell(Name::Setup, HeadText(head.setup));
    tell(Name::Crc, crc(TextOf(dump.image)));
    return text + FormatDump(0, dump.image);
}

FlashDump ReadDump(std::string_view text)
{
    return Reader(text).Read();
}

}  // namespace kelvora
