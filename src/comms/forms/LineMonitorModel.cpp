#include "comms/forms/LineMonitorModel.h"

#include <QApplication>
#include <QDateTime>
#include <QFontDatabase>
#include <QPalette>
#include <algorithm>
#include <array>

#include "platform/NumberText.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

// A cell shows the beginning of a long frame; the whole of it stands below the table.
constexpr std::size_t CellBytes = 64;

// What stands before the time of day; the saved text has it.
constexpr std::size_t DateLength = std::string_view("2026-01-31 ").size();

// In the order of the columns.
constexpr std::array Headings{Message::MonitorTime,      Message::MonitorPort,    Message::MonitorDirection,
                              Message::MonitorDamage,    Message::MonitorMeaning, Message::MonitorBytes,
                              Message::MonitorCharacters};
static_assert(Headings.size() == LineMonitorModel::ColumnCount);

// In the order of LineTraffic::Damage, without None.
constexpr std::array Damages{Message::DamageBadFrame, Message::DamageCutShort, Message::DamageNoise};

bool IsDark()
{
    return QApplication::palette().color(QPalette::Base).lightness() < 128;
}

// Both read on the table's ground, be it light or dark.
QColor DamageColour()
{
    return IsDark() ? QColor(255, 140, 130) : QColor(176, 0, 32);
}

QColor SentColour()
{
    return IsDark() ? QColor(140, 190, 255) : QColor(0, 70, 170);
}

bool IsOfBytes(int column)
{
    return column == LineMonitorModel::Bytes || column == LineMonitorModel::Characters;
}

}  // namespace

std::chrono::minutes ZoneOffset(std::chrono::system_clock::time_point time)
{
    const auto seconds = std::chrono::system_clock::to_time_t(time);
    return std::chrono::minutes(QDateTime::fromSecsSinceEpoch(seconds).offsetFromUtc() / 60);
}

LineMonitorModel::LineMonitorModel(const MessageCatalogue& catalogue, const LineMonitor& monitor,
                                   QObject* parent)
    : QAbstractTableModel(parent), catalogue_(catalogue), monitor_(monitor)
{
    Update();
}

void LineMonitorModel::Update()
{
    const LineEntries& now = monitor_.Entries();
    Forget(static_cast<std::size_t>(
        std::min<std::uint64_t>(monitor_.FirstNumber() - firstNumber_, entries_.size())));
    firstNumber_ = monitor_.FirstNumber();
    if (now.size() == entries_.size())
        return;
    const auto shown = entries_.size();
    beginInsertRows({}, static_cast<int>(shown), static_cast<int>(now.size()) - 1);
    entries_.insert(entries_.end(), now.begin() + static_cast<LineEntries::difference_type>(shown),
                    now.end());
    endInsertRows();
}

void LineMonitorModel::Forget(std::size_t count)
{
    if (count == 0)
        return;
    beginRemoveRows({}, 0, static_cast<int>(count) - 1);
    entries_.erase(entries_.begin(), entries_.begin() + static_cast<LineEntries::difference_type>(count));
    endRemoveRows();
}

void LineMonitorModel::Retranslate()
{
    emit headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
    if (!entries_.empty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
}

int LineMonitorModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

int LineMonitorModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString LineMonitorModel::Text(const MessageId& id) const
{
    return ToQString(catalogue_.Caption(id));
}

QString LineMonitorModel::Text(const LineEntry& entry, int column) const
{
    const std::string_view bytes = std::string_view(entry.bytes).substr(0, CellBytes);
    switch (column) {
        case Time:
            return ToQString(TimeText(entry.time, ZoneOffset(entry.time)).substr(DateLength));
        case Port:
            return QStringLiteral("COM%1").arg(entry.line);
        case Direction:
            return Text(entry.direction == LineTraffic::Direction::Sent ? Message::MonitorSent
                                                                        : Message::MonitorReceived);
        case Damage:
            return entry.damage == LineTraffic::Damage::None
                       ? QString()
                       : Text(Damages.at(static_cast<std::size_t>(entry.damage) - 1));
        case Meaning:
            return ToQString(entry.meaning);
        case Bytes:
            return ToQString(HexBytes(bytes));
        default:
            return ToQString(CharacterText(bytes));
    }
}

QVariant LineMonitorModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const LineEntry& entry = *entries_.at(static_cast<std::size_t>(index.row()));
    if (role == Qt::DisplayRole)
        return Text(entry, index.column());
    if (role == Qt::ForegroundRole && entry.damage != LineTraffic::Damage::None)
        return DamageColour();
    if (role == Qt::ForegroundRole && entry.direction == LineTraffic::Direction::Sent)
        return SentColour();
    if (role == Qt::FontRole && IsOfBytes(index.column()))
        return QFontDatabase::systemFont(QFontDatabase::FixedFont);
    return {};
}

QVariant LineMonitorModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    return Text(Headings.at(static_cast<std::size_t>(section)));
}

}  // namespace kelvora
