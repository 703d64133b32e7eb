#include "comms/LineCommands.h"

#include <algorithm>
#include <array>

#include "comms/Reply.h"
#include "platform/NumberText.h"

namespace kelvora {

namespace {

constexpr std::size_t MostPositions = 7;
/// Statuses of the device map.
constexpr std::string_view Done = "0";
constexpr std::string_view NothingThere = "1";

constexpr char UnknownCode = '\xFF';
constexpr std::array<unsigned, 9> KnownCodes{214, 191, 23, 31, 4, 3, 2, 1, 8};

[[noreturn]] void RejectMap(const char* reason)
{
    throw ReplyError(ReplyErrorNumber::Malformed, std::string("device map: ") + reason);
}

char DeviceCodeOf(std::string_view item)
{
    if (item.empty() || item.find_first_not_of("0123456789") != std::string_view::npos)
        RejectMap("an item is no number");
    // One that is too large for a number is unknown all the same.
    const unsigned code = WholeNumber<unsigned>(item).value_or(0);
    return std::ranges::find(KnownCodes, code) != KnownCodes.end() ? static_cast<char>(code) : UnknownCode;
}

}  // namespace

std::string Attention(LineWork& work)
{
    return work.Ask("$9900", 2)[1];
}

void HoldLine(LineWork& work)
{
    // Nothing is sent once a stop is wanted, and nothing owed then.
    work.CheckStop();
    work.Debts().release = true;
    work.Ask("$9918", 1);
}

void ReleaseLine(LineWork& work)
{
    work.Ask("$9911", 1);
}

std::string AskDeviceMap(LineWork& work)
{
    const auto fields = work.Exchange("$9902");
    if (fields[0] == NothingThere)
        throw ReplyError(ReplyErrorNumber::NoDevices, "$9902");
    if (fields[0] != Done || fields.size() != 3)
        RejectMap("another status or number of fields");
    return ParseDeviceList(fields[1], fields[2]);
}

std::string ParseDeviceList(std::string_view count, std::string_view codes)
{
    std::string map;
    while (!codes.empty()) {
        const std::size_t comma = codes.find(',');
        map += DeviceCodeOf(codes.substr(0, comma));
        if (map.size() > MostPositions)
            RejectMap("more than seven devices");
        if (comma == std::string_view::npos)
            break;
        codes.remove_prefix(comma + 1);
        if (codes.empty())
            RejectMap("an item is no number");
    }
    if (count != std::to_string(map.size()))
        RejectMap("the count is another one");
    return map;
}

void SetLineMode(LineWork& work, char mode)
{
    const auto fields = work.Ask(std::string("$9904!") + mode, 2);
    if (fields[1] != std::string(1, mode))
        throw ReplyError(ReplyErrorNumber::Failed, "$9904: another mode is set");
}

}  // namespace kelvora
