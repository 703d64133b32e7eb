#include "report/ReportPage.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>
#include <utility>

#include "platform/Joined.h"
#include "platform/LocalTime.h"
#include "report/ReportTemplate.h"

namespace kelvora {

namespace {

std::string Html(std::string_view text)
{
    std::string html;
    for (const char c : text)
        switch (c) {
            case '&':
                html += "&amp;";
                break;
            case '<':
                html += "&lt;";
                break;
            case '>':
                html += "&gt;";
                break;
            case '"':
                html += "&quot;";
                break;
            default:
                html += c;
        }
    return html;
}

// "2026-03-09 07:05" on this machine's clock.
std::string ShortTime(std::chrono::sys_seconds time)
{
    std::string text = ZonedTimeText(time).substr(0, std::string_view("2026-03-09T07:05").size());
    std::ranges::replace(text, 'T', ' ');
    return text;
}

std::string DeviationsText(const FleetReport& report, const ReportTill& till)
{
    constexpr std::size_t MostTold = 5;
    const std::vector<std::size_t>& list = report.DeviationLists().at(till.deviations);
    std::vector<std::string> told;
    for (const std::size_t place : std::span(list).first(std::min(list.size(), MostTold)))
        told.push_back(report.Deviations().at(place));
    if (list.size() > MostTold)
        told.push_back("and " + std::to_string(list.size() - MostTold) + " more");
    return Joined(told, "; ");
}

std::string ResultText(const TillResult& result)
{
    return result.action + ": " + result.outcome + (result.message.empty() ? "" : ". " + result.message);
}

std::string Row(const FleetReport& report, const ReportTill& till)
{
    std::string row = "<tr><th scope=row>" + Html(till.name);
    if (till.setup) {
        const ReportSetup& setup = report.Setups().at(*till.setup);
        row += "<td>" + Html(setup.names) + "<td>" + Html(setup.options) + "<td>" +
               Html(DeviationsText(report, till));
    } else {
        row += "<td colspan=3>" + Html(till.file.empty() ? till.why : "Could not be read: " + till.why);
    }
    const auto& result = till.result;
    row += "<td>" + (result ? Html(ResultText(*result)) : "") + "<td>" +
           (result ? Html(ShortTime(result->time)) : "");
    return row + "\n";
}

std::string Rows(const FleetReport& report)
{
    std::string rows;
    for (const ReportTill& till : report.Tills())
        rows += Row(report, till);
    return rows;
}

using Part = std::pair<std::string_view, std::string>;

// Each part in its place, in the order of the page; what a part holds is not looked into.
std::string Filled(std::string_view page, std::span<const Part> parts)
{
    std::string text;
    for (const auto& [place, content] : parts) {
        const std::size_t at = page.find(place);
        text.append(page.substr(0, at)).append(content);
        page.remove_prefix(at + place.size());
    }
    return text.append(page);
}

}  // namespace

std::string ReportPage(const FleetReport& report, const ReportHeading& heading)
{
    const bool hasStandard = !heading.standard.empty();
    const std::array parts{
        Part{"{{FOLDER}}", Html(heading.folder)},
        Part{"{{FOLDER}}", Html(heading.folder)},
        Part{"{{COUNTS}}",
             Html(CountsText(report.Counts(), hasStandard) + ". Made " + ShortTime(heading.made))},
        Part{"{{STANDARD}}",
             hasStandard ? "Standard: " + Html(heading.standard) : "Not compared with a standard"},
        Part{"{{ROWS}}", Rows(report)},
        Part{"{{DATA}}", ReportData(report, heading)},
    };
    return Filled(ReportTemplate, parts);
}

std::string CountsText(const ReportCounts& counts, bool hasStandard)
{
    return std::to_string(counts.tills) + (counts.tills == 1 ? " till: " : " tills: ") +
           (hasStandard ? std::to_string(counts.deviating) + " deviate, " : std::string()) +
           std::to_string(counts.failed) + " failed, " + std::to_string(counts.unread) + " could not be read";
}

}  // namespace kelvora
