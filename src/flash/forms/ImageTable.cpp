#include "flash/forms/ImageTable.h"

#include <QEvent>
#include <QFontDatabase>
#include <QHeaderView>
#include <QPainter>
#include <QStyledItemDelegate>
#include <array>
#include <span>

#include "flash/DumpText.h"
#include "platform/qt/ProgramStyle.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

constexpr std::size_t LineBytes = 16;
constexpr int Rows = static_cast<int>(FlashSize / LineBytes);

// Where a dump line's parts stand in it, and how many characters they take.
constexpr std::size_t AddressLength = 7;
constexpr std::size_t CellWidth = 3;  ///< of a byte's two digits and their blank
constexpr std::size_t BytesAt = AddressLength + 1;
constexpr std::size_t CharactersAt = BytesAt + CellWidth * LineBytes;
constexpr std::array ColumnWidths{AddressLength, CellWidth* LineBytes, CellWidth* LineBytes, LineBytes,
                                  LineBytes};

// On either side of a column's text, in pixels.
constexpr int Margin = 6;

/// Of the lines above and below a framed byte, in pixels.
constexpr qreal MarkWidth = 2;

bool IsOfBytes(const QModelIndex& index)
{
    return index.column() == ImageTable::Before || index.column() == ImageTable::After;
}

bool IsDark(const QPalette& palette)
{
    return palette.color(QPalette::Base).lightness() < 128;
}

// The ground of a byte that differs.
QColor DifferenceGround(const QPalette& palette)
{
    return IsDark(palette) ? QColor(132, 92, 0) : QColor(255, 213, 105);
}

QColor DifferenceText(const QPalette& palette)
{
    return IsDark(palette) ? QColor(255, 246, 222) : QColor(0, 0, 0);
}

class ImageModel final : public QAbstractTableModel {
public:
    ImageModel(const ImageComparison& images, QObject* parent) : QAbstractTableModel(parent), images_(images)
    {
    }

    int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : Rows; }
    int columnCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : ImageTable::ColumnCount;
    }

    QVariant data(const QModelIndex& index, int role) const override
    {
        if (!index.isValid() || role != Qt::DisplayRole)
            return {};
        const bool isAfter =
            index.column() == ImageTable::After || index.column() == ImageTable::AfterCharacters;
        const std::size_t address = static_cast<std::size_t>(index.row()) * LineBytes;
        const FlashImage& image = isAfter ? images_.after : images_.before;
        const std::string line = FormatDump(address, std::span(image).subspan(address, LineBytes));
        if (index.column() == ImageTable::Address)
            return ToQString(line.substr(0, AddressLength));
        return ToQString(line.substr(IsOfBytes(index) ? BytesAt : CharactersAt,
                                     ColumnWidths.at(static_cast<std::size_t>(index.column()))));
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
            return {};
        if (section == ImageTable::Address)
            return {};
        const bool isBefore = section == ImageTable::Before || section == ImageTable::BeforeCharacters;
        return ToQString(isBefore ? images_.beforeName : images_.afterName);
    }

    bool Differs(std::size_t address) const
    {
        return images_.before.at(address) != images_.after.at(address);
    }

    void Mark(std::size_t first, std::size_t last)
    {
        first_ = first;
        last_ = last;
        emit dataChanged(index(0, 0), index(Rows - 1, ImageTable::ColumnCount - 1));
    }

    bool IsMarked(std::size_t address) const { return address >= first_ && address <= last_; }

private:
    const ImageComparison& images_;
    std::size_t first_ = FlashSize;
    std::size_t last_ = 0;
};

// Draws a cell of bytes byte by byte: each may differ from the other image's.
class BytesDelegate final : public QStyledItemDelegate {
public:
    BytesDelegate(const ImageModel& model, QObject* parent) : QStyledItemDelegate(parent), model_(model) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        if (index.column() == ImageTable::Address)
            return QStyledItemDelegate::paint(painter, option, index);
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        painter->save();
        painter->setFont(option.font);
        painter->fillRect(option.rect,
                          option.palette.brush(isSelected ? QPalette::Highlight : QPalette::Base));
        const QString text = index.data().toString();
        const auto length = static_cast<qsizetype>(IsOfBytes(index) ? CellWidth : 1);
        const qreal width = QFontMetricsF(option.font).horizontalAdvance('0') * static_cast<qreal>(length);
        for (std::size_t i = 0; i < LineBytes; ++i) {
            const QRectF cell(option.rect.left() + Margin + width * static_cast<qreal>(i), option.rect.top(),
                              width, option.rect.height());
            PaintByte(*painter, cell, option, static_cast<std::size_t>(index.row()) * LineBytes + i,
                      text.mid(static_cast<qsizetype>(i) * length, length));
        }
        painter->restore();
    }

private:
    void PaintByte(QPainter& painter, const QRectF& cell, const QStyleOptionViewItem& option,
                   std::size_t address, const QString& text) const
    {
        const bool differs = model_.Differs(address);
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        QFont font = option.font;
        font.setBold(differs);
        painter.setFont(font);
        if (differs)
            painter.fillRect(cell, DifferenceGround(option.palette));
        const QColor ink =
            differs ? DifferenceText(option.palette)
                    : option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text);
        if (model_.IsMarked(address)) {
            painter.fillRect(QRectF(cell.topLeft(), QSizeF(cell.width(), MarkWidth)), ink);
            painter.fillRect(QRectF(cell.left(), cell.bottom() - MarkWidth, cell.width(), MarkWidth), ink);
        }
        painter.setPen(ink);
        const int align = text.size() > 1 ? Qt::AlignHCenter : Qt::AlignLeft;
        painter.drawText(cell, align | Qt::AlignVCenter | Qt::TextDontClip, text.trimmed());
    }

    const ImageModel& model_;
};

}  // namespace

ImageTable::ImageTable(const ImageComparison& images, QWidget* parent) : QTableView(parent)
{
    setObjectName(QStringLiteral("Images"));
    auto* const model = new ImageModel(images, this);
    setModel(model);
    setItemDelegate(new BytesDelegate(*model, this));
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    FitColumns();
    setCurrentIndex(model->index(0, 0));
}

void ImageTable::FitColumns()
{
    // Bold digits may be wider.
    QFont bold = font();
    bold.setBold(true);
    const qreal digit =
        std::max(QFontMetricsF(font()).horizontalAdvance('0'), QFontMetricsF(bold).horizontalAdvance('0'));
    for (int column = 0; column < ColumnCount; ++column)
        setColumnWidth(column, 2 * Margin + static_cast<int>(digit * static_cast<qreal>(ColumnWidths.at(
                                                                         static_cast<std::size_t>(column)))));
    verticalHeader()->setDefaultSectionSize(
        ProgramStyle::LeastTarget(*this, fontMetrics().lineSpacing() + fontMetrics().descent()));
}

void ImageTable::ShowBytes(std::size_t first, std::size_t last)
{
    auto* const images = static_cast<ImageModel*>(model());
    images->Mark(first, last);
    framed_ = first;
    const int row = static_cast<int>(first / LineBytes);
    setCurrentIndex(images->index(row, std::max(0, currentIndex().column())));
    scrollTo(images->index(row, Address), PositionAtCenter);
}

std::size_t ImageTable::RowStart() const
{
    return static_cast<std::size_t>(std::max(0, currentIndex().row())) * LineBytes;
}

std::size_t ImageTable::Place() const
{
    const std::size_t start = RowStart();
    return framed_ && *framed_ / LineBytes * LineBytes == start ? *framed_ : start;
}

std::size_t ImageTable::SearchStart() const
{
    return Place() + (framed_ == Place() ? 1 : 0);
}

void ImageTable::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if ((event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) && model())
        FitColumns();
}

}  // namespace kelvora
