#include "eeprom/IdentityCopy.h"

#include <algorithm>

#include "platform/LocalTime.h"
#include "platform/PortName.h"
#include "platform/TextLines.h"

namespace kelvora {

namespace {

constexpr std::string_view Header = "Kelvora module identities";
constexpr std::string_view DateWord = "Date ";
constexpr std::string_view LineWord = "Line ";
constexpr std::string_view AfterAddress = ": ";

// Takes the lines of a text one after the other.
class Lines {
public:
    explicit Lines(std::string_view text) : rest_(text) {}

    /// Whether nothing follows but empty lines.
    bool IsAtEnd() const { return rest_.find_first_not_of(LineEnd) == std::string_view::npos; }
    std::size_t Number() const { return number_; }  ///< of the line taken last, from 1

    std::string_view Take()
    {
        ++number_;
        const std::size_t end = rest_.find('\n');
        std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        return line;
    }

    [[noreturn]] void Reject(CopyExpected expected) const { throw IdentityCopyError(number_, expected); }

    std::string TakeAfter(std::string_view word, CopyExpected expected)
    {
        const std::string_view line = Take();
        if (!line.starts_with(word))
            Reject(expected);
        return std::string(line.substr(word.size()));
    }

private:
    std::string_view rest_;
    std::size_t number_ = 0;
};

AddressedBlock TakeBlock(Lines& lines, const std::vector<AddressedBlock>& before)
{
    const std::string_view line = lines.Take();
    const std::string_view head = line.substr(0, 1 + AfterAddress.size());
    if (!head.ends_with(AfterAddress))
        lines.Reject(CopyExpected::Block);
    const auto address = static_cast<std::size_t>(static_cast<unsigned char>(head[0])) - '0';
    const auto block = ParseBlock(line.substr(head.size()));
    if (address >= WritableAddresses || !block)
        lines.Reject(CopyExpected::Block);
    if (!before.empty() && address <= before.back().address)
        lines.Reject(CopyExpected::NextAddress);
    return {address, *block};
}

}  // namespace

std::string IdentityFolder(const std::string& dataFolder)
{
    return dataFolder + "/identities";
}

std::string WriteIdentityCopy(const IdentityCopy& copy)
{
    std::string text;
    text.append(Header).append(LineEnd);
    text.append(DateWord).append(copy.date).append(LineEnd);
    text.append(LineWord).append(copy.line).append(LineEnd);
    for (const auto& [address, block] : copy.blocks)
        text.append(std::to_string(address)).append(AfterAddress).append(BlockText(block)).append(LineEnd);
    return text;
}

IdentityCopy ReadIdentityCopy(std::string_view text)
{
    Lines lines(text);
    if (lines.Take() != Header)
        lines.Reject(CopyExpected::Header);
    IdentityCopy copy;
    copy.date = lines.TakeAfter(DateWord, CopyExpected::Date);
    copy.line = lines.TakeAfter(LineWord, CopyExpected::Line);
    do
        copy.blocks.push_back(TakeBlock(lines, copy.blocks));
    while (!lines.IsAtEnd());
    return copy;
}

std::string NewCopyPath(const Files& files, const std::string& folder, int port,
                        std::chrono::local_seconds time)
{
    std::string date = LocalTimeText(time);
    std::erase_if(date, [](char c) { return c == '-' || c == ':'; });
    std::ranges::replace(date, ' ', '-');
    const std::string start = folder + "/identities-" + PortName(port) + "-" + date;
    std::string path = start + ".txt";
    for (int number = 2; files.Exists(path); ++number)
        path = start + "-" + std::to_string(number) + ".txt";
    return path;
}

}  // namespace kelvora
