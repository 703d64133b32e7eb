#include "series/forms/SeriesTable.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <array>

#include "journal/JournalFilter.h"
#include "journal/JournalText.h"
#include "platform/PortName.h"
#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"

namespace kelvora {

namespace {

constexpr std::array Headings{Message::ColumnTime,    Message::ColumnLine,   Message::ColumnTerminal,
                              Message::ColumnModules, Message::ColumnResult, Message::ColumnChanges,
                              Message::ColumnBackup};

/// Widths of the columns but the last, in characters.
constexpr std::array Widths{30, 8, 20, 26, 18, 60};

QString OnePerLine(const std::vector<std::string>& lines)
{
    QStringList list;
    for (const std::string& line : lines)
        list << QString::fromStdString(line);
    return list.join(QStringLiteral("; "));
}

}  // namespace

SeriesTable::SeriesTable(const MessageCatalogue& catalogue, QWidget* parent)
    : QTableWidget(0, static_cast<int>(Headings.size()), parent),
      catalogue_(catalogue),
      empty_(new QLabel(viewport()))
{
    setObjectName(QStringLiteral("Tills"));
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setShowGrid(false);
    verticalHeader()->hide();
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    horizontalHeader()->setHighlightSections(false);
    for (int column = 0; column < static_cast<int>(Widths.size()); ++column)
        setColumnWidth(column,
                       Widths.at(static_cast<std::size_t>(column)) * fontMetrics().averageCharWidth());
    KeepHeadsWhole(*this);
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setWordWrap(true);
    auto* const over = new QHBoxLayout(viewport());
    over->addWidget(empty_);
    Retranslate();
}

void SeriesTable::Add(const SeriesEvent& result)
{
    results_.push_back(result);
    insertRow(0);
    Fill(0, result);
    empty_->hide();
    scrollToTop();
}

void SeriesTable::Fill(int row, const SeriesEvent& result)
{
    const JournalEntry& entry = result.entry;
    const bool isPassed =
        entry.result == JournalEntry::Result::Done || entry.result == JournalEntry::Result::Same;
    const QString backup = QString::fromStdString(entry.backup);
    const std::array cells{QString::fromStdString(ShownTime(entry)),
                           ToQString(PortName(entry.line)),
                           QString::fromStdString(entry.terminal),
                           QString::fromStdString(entry.modules),
                           ToQString(ResultText(catalogue_, entry.result)),
                           isPassed ? OnePerLine(result.changes) : QString::fromStdString(entry.message),
                           backup.section(QLatin1Char('/'), -1)};
    for (int column = 0; column < static_cast<int>(cells.size()); ++column) {
        auto* const cell = new QTableWidgetItem(cells.at(static_cast<std::size_t>(column)));
        cell->setToolTip(column + 1 == static_cast<int>(cells.size()) ? backup : cell->text());
        if (!isPassed) {
            QFont bold = font();
            bold.setBold(true);
            cell->setFont(bold);
        }
        setItem(row, column, cell);
    }
}

void SeriesTable::Retranslate()
{
    QStringList headings;
    for (const MessageId& heading : Headings)
        headings << ToQString(catalogue_.Caption(heading));
    setHorizontalHeaderLabels(headings);
    empty_->setText(ToQString(catalogue_.Caption(Message::SeriesEmpty)));
    for (int row = 0; row < rowCount(); ++row)
        Fill(row, results_[results_.size() - 1 - static_cast<std::size_t>(row)]);
}

}  // namespace kelvora
