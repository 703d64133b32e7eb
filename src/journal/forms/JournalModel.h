// The table of the journal's window: all entries, the newest first, and those of them that fit a search.
#pragma once

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>
#include <vector>

#include "catalogue/MessageCatalogue.h"
#include "journal/JournalFilter.h"

namespace kelvora {

class JournalModel final : public QAbstractTableModel {
public:
    enum Column {
        Time,
        Line,
        Operation,
        Result,
        Terminal,
        Modules,
        File,
        Message,
        Backup,
        Who,
        Seconds,
        ColumnCount
    };

    /// `catalogue` outlives the model.
    JournalModel(const MessageCatalogue& catalogue, QObject* parent);

    /// Shows these, which are in the order of their time.
    void ShowEntries(std::vector<JournalEntry> entries);
    const JournalEntry& EntryAt(int row) const;
    /// All that is known of an entry, a line each.
    QString DetailText(int row) const;

    /// Whether a row shows the words, in letters of any case.
    bool Contains(int row, const QString& words) const;
    bool IsLess(int left, int right, int column) const;

    void Retranslate();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString Text(const JournalEntry& entry, int column) const;
    QString Caption(const MessageId& message) const;
    QString OperationText(const JournalEntry& entry) const;

    const MessageCatalogue& catalogue_;
    std::vector<JournalEntry> entries_;
};

class JournalProxy final : public QSortFilterProxyModel {
public:
    JournalProxy(JournalModel& model, QObject* parent);

    /// Shows what has the words, in letters of any case.
    void Search(const QString& words);
    void ShowFailuresOnly(bool failuresOnly);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    void FilterAnew();
    JournalModel& model_;
    QString words_;
    JournalFilter filter_;
};

}  // namespace kelvora
