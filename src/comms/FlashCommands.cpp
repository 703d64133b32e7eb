#include "comms/FlashCommands.h"

#include "comms/LinkFrame.h"
#include "comms/Reply.h"
#include "platform/NumberText.h"

namespace kelvora {

namespace {

constexpr int AddressDigits = 4;
constexpr int CrcDigits = 8;

/// Status, address and one or two fields of data.
constexpr std::size_t FewestBlockFields = 3;
constexpr std::size_t MostBlockFields = 4;

[[noreturn]] void RejectBlock(const char* reason)
{
    throw ReplyError(ReplyErrorNumber::Malformed, std::string("20: ") + reason);
}

// The bytes of the block that is expected at `address`.
std::string AskBlock(LineWork& work, std::size_t address)
{
    const auto fields = work.Ask("20", FewestBlockFields, MostBlockFields);
    if (fields[1] != HexText(address, AddressDigits))
        RejectBlock("a block of another address");
    std::string block;
    for (std::size_t i = FewestBlockFields - 1; i < fields.size(); ++i) {
        const auto data = UnescapeData(fields[i]);
        if (!data)
            RejectBlock("data that is not escaped as it should be");
        block += *data;
    }
    if (block.empty())
        RejectBlock("an empty block");
    if (address + block.size() > FlashSize)
        RejectBlock("more than the flash holds");
    return block;
}

// Tells how far the work is that began at `start`; the time left is as if it went on at the same pace.
void TellProgress(const LineWork& work, EventLoop::Time start, std::size_t done, std::size_t total)
{
    const auto left = (work.Now() - start) * (total - done) / done;
    work.Tell({done, total, std::chrono::ceil<std::chrono::seconds>(left)});
}

}  // namespace

void ResetBlockAddress(LineWork& work)
{
    work.Ask("000", 1);
}

void OpenFlash(LineWork& work)
{
    if (work.Ask("0FB0", 2)[1] != std::to_string(FlashSize))
        throw ReplyError(ReplyErrorNumber::Failed, "0FB0: the flash has another size");
}

std::string ReadFlash(LineWork& work)
{
    std::string image;
    const EventLoop::Time start = work.Now();
    work.Tell({.total = FlashSize});
    while (image.size() < FlashSize) {
        image += AskBlock(work, image.size());
        TellProgress(work, start, image.size(), FlashSize);
    }
    return image;
}

std::uint32_t AskFlashCrc(LineWork& work)
{
    const std::string digits = work.Ask("0F02", 2)[1];
    const auto crc = WholeNumber<std::uint32_t>(digits, 16);
    if (!crc || HexText(*crc, CrcDigits) != digits)
        throw ReplyError(ReplyErrorNumber::Malformed, "0F02: no CRC");
    return *crc;
}

void StageBlock(LineWork& work, std::size_t address, std::string_view bytes)
{
    work.Ask("0FB1" + HexText(address, AddressDigits) + EscapeData(bytes), 1);
}

void StageDifferences(LineWork& work, std::string_view held, std::string_view wanted)
{
    std::vector<std::size_t> addresses;
    for (std::size_t address = 0; address < wanted.size(); address += StageBlockSize)
        if (held.substr(address, StageBlockSize) != wanted.substr(address, StageBlockSize))
            addresses.push_back(address);
    const EventLoop::Time start = work.Now();
    const std::size_t total = addresses.size() * StageBlockSize;
    work.Tell({.total = total});
    std::size_t done = 0;
    for (const std::size_t address : addresses) {
        StageBlock(work, address, wanted.substr(address, StageBlockSize));
        done += StageBlockSize;
        TellProgress(work, start, done, total);
    }
}

void EndStaging(LineWork& work)
{
    work.Ask("0FB1", 1);
}

void CommitFlash(LineWork& work, std::uint32_t crc)
{
    work.Ask("0FB3" + HexText(crc, CrcDigits), 1);
}

void CloseFlash(LineWork& work)
{
    work.Ask("0FB3", 1);
}

}  // namespace kelvora
