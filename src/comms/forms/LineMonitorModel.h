// The table of the line monitor's window: a copy of the monitor's entries, brought up to date when asked.
#pragma once

#include <QAbstractTableModel>
#include <chrono>
#include <cstdint>

#include "catalogue/MessageCatalogue.h"
#include "comms/LineMonitor.h"

namespace kelvora {

class LineMonitorModel final : public QAbstractTableModel {
public:
    enum Column { Time, Port, Direction, Damage, Meaning, Bytes, Characters, ColumnCount };

    /// Both outlive the model.
    LineMonitorModel(const MessageCatalogue& catalogue, const LineMonitor& monitor, QObject* parent);

    /// Takes in what the monitor has got and forgotten since.
    void Update();

    /// The entries that are shown.
    const LineEntries& Entries() const { return entries_; }

    /// Shows the texts of another language.
    void Retranslate();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void Forget(std::size_t count);
    QString Text(const LineEntry& entry, int column) const;
    QString Text(const MessageId& id) const;

    const MessageCatalogue& catalogue_;
    const LineMonitor& monitor_;
    LineEntries entries_;
    std::uint64_t firstNumber_ = 0;
};

/// How far east of Greenwich this machine's clock is at that time.
std::chrono::minutes ZoneOffset(std::chrono::system_clock::time_point time);

}  // namespace kelvora
