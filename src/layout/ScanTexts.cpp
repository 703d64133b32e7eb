#include "layout/ScanTexts.h"

#include <algorithm>
#include <iterator>

#include "comms/LineErrorText.h"
#include "flash/FlashTexts.h"
#include "platform/PortName.h"
#include "setup/DeviceCode.h"
#include "setup/SetupErrorText.h"

namespace kelvora {

namespace {

std::string UnknownPositions(const SetupDocument& document)
{
    std::string positions;
    const std::string& map = document.DeviceMap;
    constexpr auto unknown = static_cast<char>(DeviceCode::Unknown);
    for (std::size_t at = map.find(unknown); at != std::string::npos; at = map.find(unknown, at + 1))
        positions += (positions.empty() ? "" : ", ") + std::to_string(at + 1);
    return positions;
}

bool LacksParts(const ModuleList& modules)
{
    const auto has = [&](ModuleKind kind) { return FindModule(modules, kind).has_value(); };
    return has(ModuleKind::KM096) && !(has(ModuleKind::Backlight) && has(ModuleKind::Code4));
}

// How the work ended: the message that leads, with the name of the line.
LaterMessage EndMessage(const MessageCatalogue& catalogue, const LineTarget& target, const ScanOutcome& scan)
{
    if (scan.refusal)
        return {Message::ScanRejected, BoxIcon::Exclamation, PortName(target.line)};
    if (scan.line.outcome == LineOutcome::Stopped)
        return {Message::ScanStopped, BoxIcon::Information, PortName(target.line)};
    if (!scan.line.IsDone()) {
        const LineErrorText error = DescribeLineFailure(catalogue, target, scan.line);
        return {error.message, BoxIcon::Exclamation, error.extra};
    }
    if (scan.line.deviceMap.empty())
        return {Message::LineNoDevices, BoxIcon::Exclamation, PortName(target.line)};
    return {Message::ScanRemarks, BoxIcon::Information, PortName(target.line)};
}

// What the setup is when the work did not come to its end, or could not be used.
std::string SetupText(const MessageCatalogue& catalogue, const ScanOutcome& scan)
{
    if (scan.refusal)
        return DescribeMapError(catalogue, *scan.refusal);
    if (scan.line.IsDone())
        return {};
    if (scan.line.deviceMap.empty())
        return catalogue.Caption(Message::ScanNothing);
    return catalogue.Caption(scan.image ? Message::ScanAllRead : Message::ScanNoImage);
}

std::vector<std::string> NoticeLines(const MessageCatalogue& catalogue, const ScanOutcome& scan)
{
    std::vector<std::string> lines;
    if (const std::string positions = UnknownPositions(scan.document); !positions.empty())
        lines.push_back(catalogue.Caption(Message::ScanUnknown) + " " + positions);
    if (LacksParts(scan.document.Modules))
        lines.push_back(catalogue.Caption(Message::ScanParts));
    for (const TakeNotice& notice : scan.notices)
        lines.push_back(Describe(catalogue, notice));
    return lines;
}

void Append(std::vector<std::string>& lines, const std::vector<std::string>& more)
{
    lines.insert(lines.end(), more.begin(), more.end());
}

std::string Below(std::string_view line, const std::vector<std::string>& others)
{
    std::string text(line);
    for (const std::string& other : others)
        text.append("\r\n").append(other);
    return text;
}

}  // namespace

std::vector<std::string> ScanRemarks(const MessageCatalogue& catalogue, const ScanOutcome& scan)
{
    std::vector<std::string> lines = NoticeLines(catalogue, scan);
    if (scan.line.outcome == LineOutcome::Stopped)
        lines.push_back(catalogue.Caption(Message::ScanStopped));
    Append(lines, WarningLines(catalogue, scan.line.warnings));
    return lines;
}

std::vector<LaterMessage> DescribeScan(const MessageCatalogue& catalogue, const LineTarget& target,
                                       const ScanOutcome& scan, std::string_view window)
{
    const std::string of = window.empty() ? std::string() : std::string(window) + ", ";
    const LaterMessage end = EndMessage(catalogue, target, scan);
    std::vector<std::string> lines;
    // Without a window there is no setup to see.
    if (!window.empty() || scan.refusal)
        if (const std::string setup = SetupText(catalogue, scan); !setup.empty())
            lines.push_back(setup);
    Append(lines, NoticeLines(catalogue, scan));
    // The mode in which the line was to be left has a message of its own.
    LineWarnings ofMode;
    LineWarnings others;
    std::ranges::partition_copy(
        scan.line.warnings, std::back_inserter(ofMode), std::back_inserter(others),
        [](const LineWarning& warning) { return warning.step == LineWarning::Step::ModeNotSet; });
    Append(lines, WarningLines(catalogue, others));
    std::vector<LaterMessage> messages;
    if (!lines.empty() || end.message.id != Message::ScanRemarks.id)
        messages.push_back(
            {end.message, others.empty() ? end.icon : BoxIcon::Exclamation, of + Below(end.extra, lines)});
    for (const LineWarning& warning : ofMode)
        messages.push_back(
            {Message::ModeNotSet, BoxIcon::Information, of + Below(PortName(target.line), {warning.detail})});
    return messages;
}

}  // namespace kelvora
