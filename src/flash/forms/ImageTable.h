// Two flash images side by side as the lines of their dumps, the bytes that differ marked by colour and bold
// type.
#pragma once

#include <QTableView>
#include <optional>

#include "flash/ImageComparison.h"

namespace kelvora {

class ImageTable final : public QTableView {
public:
    /// The bytes of both beside each other, then their characters: a narrow screen has room for the bytes.
    enum Column { Address, Before, After, BeforeCharacters, AfterCharacters, ColumnCount };

    /// `images` outlives the table.
    explicit ImageTable(const ImageComparison& images, QWidget* parent = nullptr);

    /// Brings these bytes into view and frames them, in both images.
    void ShowBytes(std::size_t first, std::size_t last);

    /// Where the user is: the first of the framed bytes while the user has stayed in their row, else the
    /// start of the row that the user stands on.
    std::size_t Place() const;

    /// Where a search goes on: behind the first framed byte, or at the row.
    std::size_t SearchStart() const;

protected:
    void changeEvent(QEvent* event) override;

private:
    void FitColumns();
    std::size_t RowStart() const;

    std::optional<std::size_t> framed_;  ///< the first framed byte
};

}  // namespace kelvora
