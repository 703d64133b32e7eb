#include "flash/TransferTexts.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>
#include <tuple>

#include "comms/LineErrorText.h"
#include "flash/FlashTexts.h"
#include "platform/Encoding.h"
#include "platform/NumberText.h"
#include "platform/TextLines.h"
#include "setup/SetupTexts.h"

namespace kelvora {

namespace {

using Reason = TransferResult::Reason;
using State = TransferResult::State;

struct StateText {
    MessageId ofDownload;
    MessageId ofRestore;
    BoxIcon icon;
};

// In the order of TransferResult::State.
constexpr std::array StateTexts{
    StateText{Message::TransferOld, Message::TransferOld, BoxIcon::Exclamation},
    StateText{Message::TransferSame, Message::TransferSame, BoxIcon::Information},
    StateText{Message::TransferNew, Message::RestoreNew, BoxIcon::Information},
    StateText{Message::TransferUnknown, Message::RestoreUnknown, BoxIcon::Critical},
    StateText{Message::TransferForeign, Message::TransferForeign, BoxIcon::Exclamation}};
static_assert(StateTexts.size() == static_cast<std::size_t>(State::Last) + 1);

// The regions' names in their order, then the one of what is outside of them.
constexpr std::array RegionTexts{Message::RegionOptions, Message::RegionModules, Message::RegionTables,
                                 Message::RegionContents, Message::RegionOutside};
static_assert(RegionTexts.size() == FlashRegions.size() + 1);

void AddLine(std::string& text, const std::string& line)
{
    if (!text.empty() && !line.empty())
        text += LineEnd;
    text += line;
}

// Why the work on the line ended, and what did not end as it should; empty when all went well.
std::string LineText(const MessageCatalogue& catalogue, const LineTarget& target, const LineResult& result)
{
    std::string text;
    if (result.outcome == LineOutcome::Stopped) {
        text = catalogue.Caption(Message::TransferStopped);
    } else if (!result.IsDone()) {
        const LineErrorText error = DescribeLineFailure(catalogue, target, result);
        text = catalogue.Caption(error.message) + std::string(LineEnd) + error.extra;
    }
    for (const std::string& warning : WarningLines(catalogue, result.warnings))
        AddLine(text, warning);
    return text;
}

std::string ReasonText(const MessageCatalogue& catalogue, const LineTarget& target,
                       const TransferResult& result)
{
    switch (result.reason) {
        case Reason::Refused:
            return Describe(catalogue, *result.refusal);
        case Reason::NotKept:
            return catalogue.Caption(Message::TransferNotKept) + std::string(LineEnd) +
                   TextFromPath(result.backup) + ": " + result.fileError;
        case Reason::DeviceChanged:
            return catalogue.Caption(Message::TransferDeviceChanged);
        case Reason::Declined:
            return catalogue.Caption(Message::TransferDeclined);
        case Reason::ContentsKept:
            return ContentsText(catalogue, *result.plan) + std::string(LineEnd) +
                   catalogue.Caption(Message::TransferContentsKept);
        case Reason::Line:
        case Reason::Done:
            break;
    }
    std::string text = LineText(catalogue, target, result.line);
    if (result.state == State::New && !result.line.IsDone())
        text = catalogue.Caption(Message::TransferFailedAfter) + std::string(LineEnd) + text;
    return text;
}

// Whether the reason's text says how the work on the line ended.
bool IsToldOfLine(Reason reason)
{
    return reason == Reason::Line || reason == Reason::Done;
}

// What was only wished for, or only read, is no cause for alarm.
bool IsUsersOwnEnd(const TransferResult& result)
{
    return result.reason == Reason::Declined ||
           (result.reason == Reason::Line && result.line.outcome == LineOutcome::Stopped);
}

// In the order in which changes are told.
enum class Weight { Module, Key, Option, Bytes };

Weight WeightOf(const SetupDifference& change)
{
    using What = SetupDifference::What;
    switch (change.what) {
        case What::Added:
        case What::Removed:
        case What::Order:
        case What::UnknownModules:
            return Weight::Module;
        case What::Key:
            return Weight::Key;
        default:
            return Weight::Option;
    }
}

Weight WeightOf(const ImageDifference& change)
{
    using What = ImageDifference::What;
    switch (change.what) {
        case What::Bytes:
            return Weight::Bytes;
        case What::Key:
            return Weight::Key;
        case What::Module: {
            // Tracks and backlight are in the device code.
            const ModuleKind kind = KindOf(static_cast<std::uint8_t>(change.before));
            const bool isOption =
                kind != ModuleKind::None && kind == KindOf(static_cast<std::uint8_t>(change.after));
            return isOption ? Weight::Option : Weight::Module;
        }
        default:
            return Weight::Option;
    }
}

// Where on the line that kind of module stands first; the line's length when it is not there.
std::size_t PlaceOf(ModuleKind kind, std::string_view deviceMap)
{
    const auto* const found = std::ranges::find_if(
        deviceMap, [&](char code) { return KindOf(static_cast<std::uint8_t>(code)) == kind; });
    return static_cast<std::size_t>(found - deviceMap.begin());
}

std::string ModuleName(const MessageCatalogue& catalogue, std::uint8_t code)
{
    const ModuleKind kind = KindOf(code);
    return kind == ModuleKind::None ? std::to_string(code) : ModuleCaption(catalogue, kind);
}

}  // namespace

OutcomeText DescribeTransfer(const MessageCatalogue& catalogue, const LineTarget& target,
                             const TransferResult& result)
{
    const StateText& state = StateTexts.at(static_cast<std::size_t>(result.state));
    OutcomeText outcome{catalogue.Caption(result.isRestore ? state.ofRestore : state.ofDownload),
                        ReasonText(catalogue, target, result), state.icon};
    if (result.state == State::Old && IsUsersOwnEnd(result) && result.line.warnings.empty())
        outcome.icon = BoxIcon::Information;
    if (result.state == State::New && !(result.line.IsDone() && result.line.warnings.empty()))
        outcome.icon = BoxIcon::Exclamation;
    if (!IsToldOfLine(result.reason))
        for (const std::string& warning : WarningLines(catalogue, result.line.warnings))
            AddLine(outcome.extra, warning);
    const bool isHeld = result.state == State::New || result.state == State::Same;
    if (isHeld && result.plan && !result.plan->unheld.empty())
        AddLine(outcome.extra,
                catalogue.Caption(Message::AskUnheld) +
                    JoinLines(catalogue, UnheldLines(catalogue, *result.plan), result.plan->unheld.size()));
    const bool isWritten = result.state == State::New || result.state == State::Unknown;
    if (isWritten)
        AddLine(outcome.extra, catalogue.Caption(Message::TransferBackup) + std::string(LineEnd) +
                                   TextFromPath(result.backup));
    return outcome;
}

OutcomeText DescribeVerify(const MessageCatalogue& catalogue, const LineTarget& target,
                           const VerifyResult& result, std::size_t mostLines)
{
    switch (result.outcome) {
        case VerifyResult::Outcome::NotRead:
            break;
        case VerifyResult::Outcome::NotBuilt:
            return {Describe(catalogue, *result.refusal), {}, BoxIcon::Exclamation};
        case VerifyResult::Outcome::Different: {
            OutcomeText outcome{
                catalogue.Word(Message::VerifyDifferent) + HexText(result.firstDifference, 4) + " (hex)",
                catalogue.Caption(Message::VerifyChanges) +
                    JoinLines(catalogue, DifferenceLines(catalogue, result.differences), mostLines),
                BoxIcon::Exclamation};
            AddLine(outcome.extra, LineText(catalogue, target, result.line));
            return outcome;
        }
        case VerifyResult::Outcome::Same:
            return {catalogue.Caption(Message::VerifySame), LineText(catalogue, target, result.line),
                    BoxIcon::Information};
    }
    return {catalogue.Caption(Message::VerifyNotRead), LineText(catalogue, target, result.line),
            BoxIcon::Exclamation};
}

std::string Describe(const MessageCatalogue& catalogue, const TransferRefusal& refusal)
{
    using RefusalReason = TransferRefusal::Reason;
    switch (refusal.reason) {
        case RefusalReason::NotBuilt:
            return Describe(catalogue, *refusal.build);
        case RefusalReason::UnknownModule:
            return catalogue.Word(Message::TransferUnknownModule) + std::to_string(refusal.position + 1);
        case RefusalReason::OtherModules:
            return catalogue.Caption(Message::TransferOtherModules) + std::string(LineEnd) +
                   catalogue.Word(Message::ModulesOnLine) + ModuleNames(catalogue, refusal.lineMap) +
                   std::string(LineEnd) + catalogue.Word(Message::ModulesWanted) +
                   ModuleNames(catalogue, refusal.wantedCodes);
        case RefusalReason::OtherTerminal:
            return catalogue.Caption(Message::TransferOtherTerminal);
        case RefusalReason::NoModules:
            break;
    }
    return catalogue.Caption(Message::TransferNoModules);
}

std::string ModuleNames(const MessageCatalogue& catalogue, std::string_view deviceCodes)
{
    std::string names;
    for (const char character : deviceCodes) {
        const auto code = static_cast<std::uint8_t>(character);
        if (!IsPart(KindOf(code)))
            names += (names.empty() ? "" : ", ") + ModuleName(catalogue, code);
    }
    return names.empty() ? catalogue.Caption(Message::OptionNone) : names;
}

std::string ContentsText(const MessageCatalogue& catalogue, const TransferPlan& plan)
{
    if (!plan.TakesContents())
        return {};
    return catalogue.Word(plan.isOfSetup ? Message::AskSetupDump : Message::AskErasedDump) +
           std::to_string(plan.contentsLost);
}

std::string TakingQuestion(const MessageCatalogue& catalogue, const TransferPlan& plan)
{
    return catalogue.Caption(plan.contentsLost > 0 ? Message::AskContents : Message::AskSetupContents);
}

std::string DumpText(const MessageCatalogue& catalogue, const FlashDump& dump, const std::string& terminal)
{
    std::vector<std::string> parts;
    const DumpHead& head = dump.head;
    if (head.kind)
        parts.push_back(
            catalogue.Caption(*head.kind == DumpKind::Device ? Message::DumpOfDevice : Message::DumpOfSetup));
    for (const std::string& part :
         {head.terminal, head.deviceMap ? head.deviceMap->title : std::string(), TextFromPath(head.setup)})
        if (!part.empty())
            parts.push_back(part);
    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() ? "" : ", ") + part;
    if (!head.terminal.empty() && head.terminal != terminal)
        text += std::string(LineEnd) + catalogue.Word(Message::ModulesOnLine) + terminal;
    return text;
}

std::vector<std::string> ChangeLines(const MessageCatalogue& catalogue, const TransferPlan& plan)
{
    struct Line {
        std::tuple<Weight, std::size_t, int> order;
        std::string text;
    };
    std::vector<Line> lines;
    const auto add = [&](const auto& change, int number) {
        lines.push_back(
            {{WeightOf(change), PlaceOf(change.kind, plan.deviceMap), number}, Describe(catalogue, change)});
    };
    for (const SetupDifference& change : plan.setupChanges)
        add(change, change.what == SetupDifference::What::Key ? change.numberAfter : change.position);
    for (const ImageDifference& change : plan.imageChanges)
        add(change, change.number);
    std::ranges::stable_sort(lines, {}, &Line::order);
    std::vector<std::string> texts;
    std::ranges::transform(lines, std::back_inserter(texts), &Line::text);
    return texts;
}

std::vector<std::string> UnheldLines(const MessageCatalogue& catalogue, const TransferPlan& plan)
{
    std::vector<std::string> lines;
    for (const UnheldSetting& unheld : plan.unheld)
        lines.push_back(Describe(catalogue, unheld));
    return lines;
}

std::vector<std::string> DifferenceLines(const MessageCatalogue& catalogue,
                                         const std::vector<ImageDifference>& differences)
{
    std::vector<std::string> lines;
    for (const ImageDifference& difference : differences) {
        const MessageId& region = RegionTexts.at(difference.region.value_or(FlashRegions.size()));
        lines.push_back(catalogue.Caption(region) + ", " + Describe(catalogue, difference));
    }
    return lines;
}

std::string JoinLines(const MessageCatalogue& catalogue, const std::vector<std::string>& lines,
                      std::size_t most)
{
    std::string text;
    for (const std::string& line : std::span(lines).first(std::min(most, lines.size())))
        text.append(LineEnd).append(line);
    if (lines.size() > most)
        text.append(LineEnd)
            .append(catalogue.Word(Message::MoreChanges))
            .append(std::to_string(lines.size() - most));
    return text;
}

}  // namespace kelvora
