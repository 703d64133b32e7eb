#include "series/SeriesReport.h"

#include <array>
#include <cmath>
#include <nlohmann/json.hpp>
#include <string_view>

#include "catalogue/Messages.h"
#include "journal/JournalFilter.h"
#include "journal/JournalText.h"
#include "picture/SheetText.h"
#include "picture/SvgDrawing.h"
#include "platform/Encoding.h"
#include "platform/Joined.h"
#include "platform/PortName.h"

namespace kelvora {

namespace {

using Result = JournalEntry::Result;

std::string Quoted(std::string_view text)
{
    if (text.find_first_of("\",\r\n;") == std::string_view::npos)
        return std::string(text);
    std::string quoted = "\"";
    for (const char c : text)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + "\"";
}

constexpr std::string_view Between = "; ";

std::string SecondsText(double seconds)
{
    constexpr int Tenths = 10;
    const auto tenths = std::lround(seconds * Tenths);
    return std::to_string(tenths / Tenths) + "." + std::to_string(tenths % Tenths);
}

// Lengths in twips, 1440 to an inch.
constexpr int Margin = 850;
constexpr int Right = SheetWidth - Margin;
constexpr int TitleSize = 340;
constexpr int TextSize = 170;
constexpr int LineHeight = 250;
constexpr int RowHeight = 3 * LineHeight + 60;
constexpr int TableTop = Margin + 1500;
constexpr int HeadingRise = 430;
constexpr int RuleRise = 280;
constexpr int RowsOnAPage = (SheetHeight - 2 * Margin - (TableTop - Margin)) / RowHeight - 2;

struct SheetColumn {
    MessageId heading;
    int left, width;
};

constexpr std::array Columns{
    SheetColumn{Message::ColumnTime, Margin, 2050},
    SheetColumn{Message::ColumnLine, Margin + 2100, 650},
    SheetColumn{Message::ColumnTerminal, Margin + 2800, 1900},
    SheetColumn{Message::ColumnModules, Margin + 4750, 2450},
    SheetColumn{Message::ColumnResult, Margin + 7250, Right - Margin - 7250},
};

// What a till's row says in each column.
std::array<std::string, Columns.size()> CellsOf(const SeriesEvent& event, const MessageCatalogue& catalogue)
{
    const JournalEntry& entry = event.entry;
    return {ShownTime(entry), PortName(entry.line), entry.terminal, entry.modules,
            Utf8FromText(ResultText(catalogue, entry.result))};
}

// And in the lines below: what changed or went wrong; the setup, and the backup.
std::array<std::string, 2> DetailsOf(const SeriesEvent& event)
{
    const JournalEntry& entry = event.entry;
    std::vector<std::string> files;
    for (const std::string& file : {entry.file, entry.backup})
        if (!file.empty())
            files.push_back(file.substr(file.rfind('/') + 1));
    return {event.changes.empty() ? entry.message : Joined(event.changes, Between), Joined(files, Between)};
}

class ReportPage {
public:
    explicit ReportPage(const MessageCatalogue& catalogue) : catalogue_(catalogue) {}

    void Head(const SeriesCounts& counts, const std::string& date)
    {
        Write(Margin, Margin + TitleSize / 2, TitleSize, true, Word(Message::SeriesSheetTitle));
        drawing_.Text(Right, Margin + TitleSize / 2, {TextSize, "#000000", Lettering::Anchor::End}, date);
        const std::string sums = Word(Message::SeriesDone) + ": " + std::to_string(counts.done) + "    " +
                                 Word(Message::SeriesSame) + ": " + std::to_string(counts.same) + "    " +
                                 Word(Message::SeriesFailed) + ": " +
                                 std::to_string(counts.failed + counts.stopped);
        Write(Margin, Margin + 700, TextSize + 30, false, sums);
        for (const SheetColumn& column : Columns)
            Write(column.left, TableTop - HeadingRise, TextSize, true,
                  Shortened(Word(column.heading), TextSize, column.width));
        drawing_.Line(Margin, TableTop - RuleRise, Right, TableTop - RuleRise, {"none", "#000000", 15});
    }

    void Row(int row, const SeriesEvent& event)
    {
        const auto cells = CellsOf(event, catalogue_);
        for (std::size_t i = 0; i < cells.size(); ++i)
            Write(Columns.at(i).left, TableTop + row * RowHeight, TextSize, false,
                  Shortened(cells.at(i), TextSize, Columns.at(i).width));
        constexpr int Indent = 300;
        int y = TableTop + row * RowHeight;
        for (const std::string& detail : DetailsOf(event))
            Write(Margin + Indent, y += LineHeight, TextSize, false,
                  Shortened(detail, TextSize, Right - Margin - Indent));
    }

    std::string Sheet(int page, int pages)
    {
        if (pages > 1)
            drawing_.Text(Right, SheetHeight - Margin, {TextSize, "#444444", Lettering::Anchor::End},
                          Utf8FromText(catalogue_.Word(Message::SheetPage)) + std::to_string(page) + "/" +
                              std::to_string(pages));
        return SvgSheet(drawing_.Shapes());
    }

private:
    void Write(int x, int y, int size, bool bold, const std::string& text)
    {
        drawing_.Text(x, y, {size, "#000000", Lettering::Anchor::Start, bold}, text);
    }
    std::string Word(const MessageId& message) const { return Utf8FromText(catalogue_.Caption(message)); }

    const MessageCatalogue& catalogue_;
    SvgDrawing drawing_;
};

}  // namespace

SeriesCounts CountsOf(const SeriesResults& results)
{
    SeriesCounts counts;
    for (const SeriesEvent& event : results)
        switch (event.entry.result) {
            case Result::Done:
                ++counts.done;
                break;
            case Result::Same:
                ++counts.same;
                break;
            case Result::Stopped:
                ++counts.stopped;
                break;
            default:
                ++counts.failed;
        }
    return counts;
}

std::string ReportCsv(const SeriesResults& results)
{
    std::string text = "time,line,terminal,modules,setup,result,changes,message,backup,seconds\r\n";
    for (const SeriesEvent& event : results) {
        const JournalEntry& entry = event.entry;
        std::string row;
        for (const std::string& cell :
             {ShownTime(entry), PortName(entry.line), entry.terminal, entry.modules, entry.file,
              std::string(ResultName(entry.result)), Joined(event.changes, Between), entry.message,
              entry.backup, SecondsText(entry.seconds)})
            row += (row.empty() ? "" : ",") + Quoted(cell);
        text += row + "\r\n";
    }
    return text;
}

std::string ReportJson(const SeriesResults& results)
{
    std::string text;
    for (const SeriesEvent& event : results)
        text += (text.empty() ? "" : ",") + nlohmann::ordered_json::parse(SeriesLine(event)).dump(2);
    return "[" + text + "]\n";
}

std::vector<std::string> ReportSheets(const SeriesResults& results, const std::string& date,
                                      const MessageCatalogue& catalogue)
{
    const auto count = static_cast<int>(results.size());
    const int pages = std::max(1, (count + RowsOnAPage - 1) / RowsOnAPage);
    std::vector<std::string> sheets;
    for (int page = 0; page < pages; ++page) {
        ReportPage sheet(catalogue);
        sheet.Head(CountsOf(results), date);
        const int first = page * RowsOnAPage;
        for (int row = 0; row < RowsOnAPage && first + row < count; ++row)
            sheet.Row(row, results[static_cast<std::size_t>(first) + static_cast<std::size_t>(row)]);
        sheets.push_back(sheet.Sheet(page + 1, pages));
    }
    return sheets;
}

}  // namespace kelvora
