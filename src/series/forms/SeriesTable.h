// The tills of a series, a row each, the last one on top.
#pragma once

#include <QTableWidget>

#include "catalogue/MessageCatalogue.h"
#include "series/SeriesReport.h"

class QLabel;

namespace kelvora {

class SeriesTable final : public QTableWidget {
public:
    /// `catalogue` outlives the table.
    explicit SeriesTable(const MessageCatalogue& catalogue, QWidget* parent = nullptr);

    void Add(const SeriesEvent& result);
    const SeriesResults& Results() const { return results_; }

    void Retranslate();

private:
    void Fill(int row, const SeriesEvent& result);

    const MessageCatalogue& catalogue_;
    SeriesResults results_;
    QLabel* empty_;
};

}  // namespace kelvora
