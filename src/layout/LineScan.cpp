#include "layout/LineScan.h"

#include "app/FlashTexts.h"
#include "app/LineErrorText.h"
#include "app/SetupErrorText.h"
#include "comms/LineCommands.h"
#include "flash/TakeFromImage.h"
#include "setup/DeviceCode.h"
#include "setup/SetupError.h"
#include "setup/SetupReader.h"

namespace kelvora {

namespace {

std::string UnknownPositions(const SetupDocument& document)
{
    std::string positions;
    for (std::size_t i = 0; i < document.DeviceMap.size(); ++i)
        if (static_cast<std::uint8_t>(document.DeviceMap[i]) == DeviceCode::Unknown)
            positions += (positions.empty() ? "" : ", ") + std::to_string(i + 1);
    return positions;
}

bool LacksParts(const ModuleList& modules)
{
    const auto has = [&](ModuleKind kind) { return FindModule(modules, kind).has_value(); };
    return has(ModuleKind::KM096) && !(has(ModuleKind::Backlight) && has(ModuleKind::Code4));
}

// What the user should know of a setup that the line has given: a paragraph each.
std::string NoticesOf(const SetupDocument& document, const std::vector<TakeNotice>& taken,
                      const MessageCatalogue& catalogue)
{
    std::string notices;
    const auto add = [&](const std::string& notice) { notices += (notices.empty() ? "" : "\r\n") + notice; };
    if (const std::string positions = UnknownPositions(document); !positions.empty())
        add(catalogue.Caption(Message::ScanUnknown) + " " + positions);
    if (LacksParts(document.Modules))
        add(catalogue.Caption(Message::ScanParts));
    for (const TakeNotice& notice : taken)
        add(Describe(catalogue, notice));
    return notices;
}

void TakeMap(const LineResult& result, const MessageCatalogue& catalogue, ScanOutcome& outcome)
{
    try {
        outcome.document = ReadDeviceMap(result.deviceMap);
    } catch (const SetupError& error) {
        outcome.messages.push_back({Message::ScanRejected, BoxIcon::Exclamation,
                                    catalogue.Word(Message::ExpectedWord) + ExpectedText(catalogue, error)});
        return;
    }
    std::vector<TakeNotice> notices;
    if (outcome.image) {
        TakenSetup taken = TakeFromImage(outcome.document, *outcome.image);
        outcome.document = std::move(taken.document);
        notices = std::move(taken.notices);
    }
    std::string text = NoticesOf(outcome.document, notices, catalogue);
    if (!outcome.image)
        text += (text.empty() ? "" : "\r\n") + catalogue.Caption(Message::ScanNoImage);
    // What went wrong and what to mind make one message.
    if (!outcome.messages.empty() && !text.empty())
        outcome.messages.front().extra += "\r\n\r\n" + text;
    else if (!text.empty())
        outcome.messages.push_back({Message::ScanRemarks, BoxIcon::Information, std::move(text)});
}

}  // namespace

LineTarget TargetOf(const PosCfg& settings)
{
    return {settings.CommsPort, settings.PortSettings, 0};
}

ScanOutcome ScanLine(Comms& comms, const LineTarget& target, ConnectionMode mode, const LineHooks& hooks,
                     const MessageCatalogue& catalogue)
{
    const LineResult result = ScanWithUpload(comms, target, hooks);
    ScanOutcome outcome;
    outcome.outcome = result.outcome;
    outcome.image = ImageFrom(result.image);
    const bool failed = result.outcome == LineOutcome::Failed || result.outcome == LineOutcome::NoPort;
    if (failed) {
        const LineErrorText error = DescribeLineFailure(catalogue, target, result);
        outcome.messages.push_back({error.message, BoxIcon::Exclamation, error.extra});
    } else if (result.IsDone() && result.deviceMap.empty()) {
        outcome.messages.push_back({Message::LineNoDevices, BoxIcon::Exclamation, {}});
    }
    if (result.deviceMap.empty())
        return outcome;
    TakeMap(result, catalogue, outcome);
    // A line that has just failed would only fail once more, and who stops wants no more commands.
    if (mode == ConnectionMode::Pos && result.IsDone() &&
        !SendLineMode(comms, target, LineMode::Pos).IsDone())
        outcome.messages.push_back({Message::ModeNotSet, BoxIcon::Information, {}});
    return outcome;
}

}  // namespace kelvora
