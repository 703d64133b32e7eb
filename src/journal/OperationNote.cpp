#include "journal/OperationNote.h"

#include <filesystem>
#include <utility>

#include "catalogue/OneLineText.h"
#include "comms/Crc.h"
#include "comms/LineErrorText.h"
#include "flash/TransferTexts.h"
#include "platform/Encoding.h"
#include "platform/Files.h"
#include "setup/ModuleRecord.h"

namespace kelvora {

namespace {

using Result = JournalEntry::Result;

Result ResultOf(const LineResult& line)
{
    if (line.outcome == LineOutcome::Stopped)
        return Result::Stopped;
    return line.IsDone() ? Result::Done : Result::Failed;
}

// What the device holds counts, not how the line took its leave.
Result ResultOf(const TransferResult& result)
{
    if (result.state == TransferResult::State::New)
        return Result::Done;
    if (result.state == TransferResult::State::Same)
        return Result::Same;
    if (result.reason == TransferResult::Reason::Declined ||
        result.reason == TransferResult::Reason::ContentsKept)
        return Result::Declined;
    return result.reason == TransferResult::Reason::Line && result.line.outcome == LineOutcome::Stopped
               ? Result::Stopped
               : Result::Failed;
}

Result ResultOf(const VerifyResult& result)
{
    switch (result.outcome) {
        case VerifyResult::Outcome::Same:
            return Result::Done;
        case VerifyResult::Outcome::Different:
            return Result::Different;
        case VerifyResult::Outcome::NotRead:
            return result.line.outcome == LineOutcome::Stopped ? Result::Stopped : Result::Failed;
        case VerifyResult::Outcome::NotBuilt:
            break;
    }
    return Result::Failed;
}

std::string MessageOf(const OutcomeText& text)
{
    return OneLineText(text.text + "\n" + text.extra);
}

std::string LineMessage(const LineTarget& target, const LineResult& line)
{
    if (line.IsDone() || line.outcome == LineOutcome::Stopped)
        return {};
    const MessageCatalogue english;
    const LineErrorText error = DescribeLineFailure(english, target, line);
    return OneLineText(std::string(error.message.fallback) + "\n" + error.extra);
}

}  // namespace

OperationNote::OperationNote(const Journal* journal, const char* operation, int line,
                             const std::string& device)
    : journal_(journal), begun_(journal ? journal->Begin(operation, line) : Journal::Begun())
{
    begun_.entry.device = Utf8FromPath(device);
}

void OperationNote::OfFile(const std::string& path, std::string_view content)
{
    // Whoever reads it stands elsewhere.
    begun_.entry.file = Utf8FromPath(std::filesystem::absolute(path).lexically_normal().string());
    if (journal_)
        begun_.entry.sha256 = journal_->Sha256(content);
}

void OperationNote::TellLine(const LineResult& line)
{
    JournalEntry& entry = begun_.entry;
    entry.terminal = Utf8FromText(line.terminalName);
    entry.modules = KindList(line.deviceMap);
    if (!line.image.empty())
        entry.crcBefore = Crc32(line.image);
    // Where the line was not asked for its modules, the image names those that the device was set up for.
    if (const auto image = ImageFrom(line.image); image && line.deviceMap.empty() && NamesModules(*image))
        entry.modules = KindList(DeviceCodesOf(*image));
    entry.crcAfter = entry.crcBefore;
}

void OperationNote::Tell(const LineTarget& target, const TransferResult& result)
{
    JournalEntry& entry = begun_.entry;
    TellLine(result.line);
    if (result.plan)
        entry.crcBefore = Crc32(TextOf(result.plan->held));
    entry.crcAfter = result.image ? std::optional(Crc32(TextOf(*result.image))) : std::nullopt;
    entry.result = ResultOf(result);
    OutcomeText told = DescribeTransfer(MessageCatalogue(), target, result);
    // In a table it is the reason that tells one failure from another.
    if (result.state == TransferResult::State::Old)
        std::swap(told.text, told.extra);
    entry.message = MessageOf(told);
    entry.backup = result.fileError.empty() ? Utf8FromPath(result.backup) : std::string();
}

void OperationNote::Tell(const LineTarget& target, const VerifyResult& result)
{
    TellLine(result.line);
    begun_.entry.result = ResultOf(result);
    OutcomeText told = DescribeVerify(MessageCatalogue(), target, result, 0);
    if (result.outcome == VerifyResult::Outcome::Different)
        told.extra.clear();
    begun_.entry.message = MessageOf(told);
}

void OperationNote::Tell(const LineTarget& target, const LineResult& read)
{
    TellLine(read);
    begun_.entry.result = ResultOf(read);
    begun_.entry.message = LineMessage(target, read);
}

std::string OperationNote::End()
{
    try {
        if (journal_)
            journal_->End(begun_);
        return {};
    } catch (const FileError& error) {
        return TextFromPath(error.Path()) + ": " + error.what();
    }
}

std::string KindList(std::string_view deviceCodes)
{
    std::string names;
    for (const char character : deviceCodes) {
        const auto code = static_cast<std::uint8_t>(character);
        const ModuleKind kind = KindOf(code);
        if (IsPart(kind))
            continue;
        names += names.empty() ? "" : ", ";
        names += kind == ModuleKind::None ? std::to_string(code) : std::string(KindName(kind));
    }
    return names;
}

}  // namespace kelvora
