#include "journal/forms/JournalModel.h"

#include <QFont>
#include <array>
#include <utility>

#include "catalogue/Messages.h"
#include "journal/JournalText.h"
#include "platform/PortName.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

constexpr std::array Headings{Message::ColumnTime,   Message::ColumnLine,     Message::ColumnOperation,
                              Message::ColumnResult, Message::ColumnTerminal, Message::ColumnModules,
                              Message::ColumnFile,   Message::ColumnMessage,  Message::ColumnBackup,
                              Message::ColumnWho,    Message::ColumnSeconds};
static_assert(Headings.size() == JournalModel::ColumnCount);

constexpr std::array Operations{
    std::pair{JournalOperation::Scan, Message::OperationScan},
    std::pair{JournalOperation::Download, Message::OperationDownload},
    std::pair{JournalOperation::Verify, Message::OperationVerify},
    std::pair{JournalOperation::Dump, Message::OperationDump},
    std::pair{JournalOperation::Restore, Message::OperationRestore},
    std::pair{JournalOperation::ReadIdentities, Message::OperationReadIdentities},
    std::pair{JournalOperation::WriteIdentities, Message::OperationWriteIdentities},
    std::pair{JournalOperation::RestoreIdentities, Message::OperationRestoreIdentities}};

using Field = std::string JournalEntry::*;

// What a column is sorted by, where that is a text of the entry; in the order of the columns.
constexpr std::array<Field, JournalModel::ColumnCount> Fields{&JournalEntry::time,
                                                              nullptr,
                                                              &JournalEntry::operation,
                                                              nullptr,
                                                              &JournalEntry::terminal,
                                                              &JournalEntry::modules,
                                                              &JournalEntry::file,
                                                              &JournalEntry::message,
                                                              &JournalEntry::backup,
                                                              &JournalEntry::who,
                                                              nullptr};

const std::string* FieldOf(const JournalEntry& entry, int column)
{
    const Field field = Fields.at(static_cast<std::size_t>(column));
    return field ? &(entry.*field) : nullptr;
}

QString FileName(const std::string& path)
{
    return QString::fromStdString(path.substr(path.rfind('/') + 1));
}

QString CrcText(const std::optional<std::uint32_t>& crc)
{
    constexpr int Digits = 8;
    constexpr int Hexadecimal = 16;
    return crc ? QString::number(*crc, Hexadecimal).toUpper().rightJustified(Digits, QLatin1Char('0'))
               : QStringLiteral("-");
}

}  // namespace

JournalModel::JournalModel(const MessageCatalogue& catalogue, QObject* parent)
    : QAbstractTableModel(parent), catalogue_(catalogue)
{
}

void JournalModel::ShowEntries(std::vector<JournalEntry> entries)
{
    beginResetModel();
    entries_ = std::move(entries);
    endResetModel();
}

const JournalEntry& JournalModel::EntryAt(int row) const
{
    return entries_[entries_.size() - 1 - static_cast<std::size_t>(row)];
}

QString JournalModel::Caption(const MessageId& message) const
{
    return ToQString(catalogue_.Caption(message));
}

// One that a later version has written is shown as it stands.
QString JournalModel::OperationText(const JournalEntry& entry) const
{
    for (const auto& [name, message] : Operations)
        if (entry.operation == name)
            return Caption(message);
    return QString::fromStdString(entry.operation);
}

QString JournalModel::Text(const JournalEntry& entry, int column) const
{
    switch (column) {
        case Time:
            return QString::fromStdString(ShownTime(entry));
        case Line:
            return ToQString(PortName(entry.line));
        case Operation:
            return OperationText(entry);
        case Result:
            return ToQString(ResultText(catalogue_, entry.result));
        case File:
            return FileName(entry.file);
        case Backup:
            return FileName(entry.backup);
        case Seconds:
            return QString::number(entry.seconds, 'f', 1);
        default:
            break;
    }
    const std::string* const field = FieldOf(entry, column);
    return field ? QString::fromStdString(*field) : QString();
}

QString JournalModel::DetailText(int row) const
{
    const JournalEntry& entry = EntryAt(row);
    QString text;
    for (int column = 0; column < ColumnCount; ++column) {
        QString value = Text(entry, column);
        if (column == File)
            value = QString::fromStdString(entry.file);
        if (column == Backup)
            value = QString::fromStdString(entry.backup);
        if (!value.isEmpty())
            text +=
                Caption(Headings.at(static_cast<std::size_t>(column))) + QStringLiteral(": ") + value + '\n';
    }
    if (!entry.sha256.empty())
        text += QStringLiteral("SHA-256: ") + QString::fromStdString(entry.sha256) + '\n';
    text += QStringLiteral("CRC-32: ") + CrcText(entry.crcBefore) + QStringLiteral(" -> ") +
            CrcText(entry.crcAfter) + '\n';
    return text + QString::fromStdString(entry.program + " " + entry.version + "  " + entry.device);
}

bool JournalModel::Contains(int row, const QString& words) const
{
    const JournalEntry& entry = EntryAt(row);
    for (int column = 0; column < ColumnCount; ++column)
        if (Text(entry, column).contains(words, Qt::CaseInsensitive))
            return true;
    return false;
}

bool JournalModel::IsLess(int left, int right, int column) const
{
    const JournalEntry& one = EntryAt(left);
    const JournalEntry& other = EntryAt(right);
    if (const std::string* const field = FieldOf(one, column))
        return *field < *FieldOf(other, column);
    if (column == Line)
        return one.line < other.line;
    return column == Seconds ? one.seconds < other.seconds : one.result < other.result;
}

void JournalModel::Retranslate()
{
    if (!entries_.empty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
    emit headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
}

int JournalModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

int JournalModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant JournalModel::data(const QModelIndex& index, int role) const
{
    const JournalEntry& entry = EntryAt(index.row());
    if (role == Qt::DisplayRole)
        return Text(entry, index.column());
    // Not by colour alone.
    if (role == Qt::FontRole && entry.IsFailure()) {
        QFont bold;
        bold.setBold(true);
        return bold;
    }
    return {};
}

QVariant JournalModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return Caption(Headings.at(static_cast<std::size_t>(section)));
}

JournalProxy::JournalProxy(JournalModel& model, QObject* parent)
    : QSortFilterProxyModel(parent), model_(model)
{
    setSourceModel(&model);
}

void JournalProxy::Search(const QString& words)
{
    words_ = words.trimmed();
    FilterAnew();
}

void JournalProxy::ShowFailuresOnly(bool failuresOnly)
{
    filter_.failedOnly = failuresOnly;
    FilterAnew();
}

// To tell the views of each run of rows that goes takes seconds where there are many.
void JournalProxy::FilterAnew()
{
    setSourceModel(nullptr);
    setSourceModel(&model_);
}

bool JournalProxy::filterAcceptsRow(int row, const QModelIndex& /*parent*/) const
{
    return Matches(model_.EntryAt(row), filter_) && (words_.isEmpty() || model_.Contains(row, words_));
}

bool JournalProxy::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    return model_.IsLess(left.row(), right.row(), left.column());
}

}  // namespace kelvora
