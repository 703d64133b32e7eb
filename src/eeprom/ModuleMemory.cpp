#include "eeprom/ModuleMemory.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "eeprom/ModuleRequest.h"

namespace kelvora {

namespace {

/// How long a reply is waited for, in milliseconds; from the module protocol.
constexpr int ReplyMs = 500;

constexpr int FastestSpeed = 1;
constexpr int SlowestSpeed = 4;

/// What the search's first answer at a speed adds to its progress.
constexpr int FirstAnswerSteps = 7;

/// A module that was too slow to acknowledge may do so yet: the next request must not meet that.
constexpr std::chrono::milliseconds QuietAfterFailure{200};

constexpr std::uint8_t FrameLength(std::size_t dataLength)
{
    return static_cast<std::uint8_t>(dataLength + ModuleFrameOverhead);
}

}  // namespace

SearchOutcome ModuleMemory::FindModules(SearchRepeats repeats)
{
    rows_.fill({});
    protocol_.SetReportCommsErrors(false);
    SetProgress(0);
    int answeredAt = 0;
    const SearchOutcome outcome = SearchSpeeds(repeats, answeredAt);
    // A repeated search may have gone on to other speeds when nobody answered any more.
    if (answeredAt != 0)
        SetSpeed(answeredAt);
    return outcome;
}

SearchOutcome ModuleMemory::SearchSpeeds(SearchRepeats repeats, int& answeredAt)
{
    int speed = FastestSpeed;
    do {
        SetSpeed(speed);
        const Pass pass = SearchAddresses();
        if (pass.found)
            answeredAt = speed;
        if (pass.end)
            return *pass.end;
        if (!pass.found)
            speed = speed == SlowestSpeed ? FastestSpeed : speed + 1;
        else if (repeats == SearchRepeats::Never)
            break;
        else if (speed != FastestSpeed && onRepeat)
            onRepeat();
        protocol_.CheckMsg();
    } while (speed != FastestSpeed);
    return Count() > 0 ? SearchOutcome::Found : SearchOutcome::NotFound;
}

ModuleMemory::Pass ModuleMemory::SearchAddresses()
{
    Pass pass;
    for (std::size_t address = 0; address < ModuleAddresses; ++address) {
        const bool sent = protocol_.SendMsg(RequestToIdentify(address));
        if (!sent) {
            SetProgress(progress_ + 1);
        } else if (Identify(address)) {
            SetProgress(pass.found ? SearchSteps : progress_ + FirstAnswerSteps);
            pass.found = true;
        }
        pass.end = EndOfSearch();
        // Addresses have no gaps: nobody stands behind one that does not answer.
        if (!sent || pass.end)
            break;
    }
    return pass;
}

bool ModuleMemory::Identify(std::size_t address)
{
    std::string reply = protocol_.WaitMsg(FrameLength(IdentifyLength), true, ReplyMs);
    if (reply.size() != IdentifyLength || protocol_.CommsError() != CommsErrorCode::None)
        return false;
    rows_.at(address).reply = std::move(reply);
    return true;
}

std::optional<SearchOutcome> ModuleMemory::EndOfSearch() const
{
    if (!protocol_.IsOpen())
        return SearchOutcome::LineLost;
    if (isInterrupted && isInterrupted())
        return SearchOutcome::Interrupted;
    return std::nullopt;
}

std::size_t ModuleMemory::Count() const
{
    const auto last =
        std::find_if(rows_.rbegin(), rows_.rend(), [](const ModuleRow& row) { return !row.reply.empty(); });
    return static_cast<std::size_t>(rows_.rend() - last);
}

bool ModuleMemory::ReadEeprom(ReadStops stops)
{
    protocol_.SetReportCommsErrors(true);
    std::array<std::optional<IdentityBlock>, ModuleAddresses> blocks;
    bool complete = true;
    for (std::size_t address = 0; address < Count(); ++address) {
        const bool isStopped = stops == ReadStops::WhenAsked && isInterrupted && isInterrupted();
        if (isStopped || !protocol_.SendMsg(RequestToRead(address))) {
            complete = false;
            break;
        }
        blocks.at(address) = ReceiveBlock();
        complete = complete && blocks.at(address);
    }
    const std::vector<DecodedIdentity> identities = DecodeIdentities(blocks);
    for (std::size_t address = 0; address < ModuleAddresses; ++address) {
        rows_.at(address).block = blocks.at(address);
        rows_.at(address).identity = identities.at(address);
    }
    return complete;
}

std::optional<IdentityBlock> ModuleMemory::ReceiveBlock()
{
    const std::string reply = protocol_.WaitMsg(FrameLength(ReadLength), true, ReplyMs);
    if (reply.size() != ReadLength || protocol_.CommsError() != CommsErrorCode::None)
        return std::nullopt;
    IdentityBlock block{};
    std::transform(reply.begin() + ReadHeadLength, reply.end(), block.begin(),
                   [](char byte) { return static_cast<std::uint8_t>(byte); });
    return block;
}

std::vector<std::size_t> ModuleMemory::WriteEeprom(std::span<const AddressedBlock> blocks)
{
    protocol_.SetReportCommsErrors(true);
    std::vector<std::size_t> failed;
    bool usable = true;
    for (const auto& [address, block] : blocks) {
        const std::string bytes(block.begin(), block.end());
        if (usable && address < WritableAddresses && protocol_.SendCmd(RequestToWrite(address), bytes))
            continue;
        failed.push_back(address);
        usable = usable && protocol_.WaitQuiet(QuietAfterFailure);
    }
    return failed;
}

void ModuleMemory::SetSpeed(int speed)
{
    protocol_.SetCommSpeed(speed);
    if (onSpeed)
        onSpeed();
}

void ModuleMemory::SetProgress(int progress)
{
    progress_ = std::min(progress, SearchSteps);
    if (onProgress)
        onProgress(progress_);
}

}  // namespace kelvora
