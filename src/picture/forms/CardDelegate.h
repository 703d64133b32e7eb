// Draws one card of SetupCards.
#pragma once

#include <QStyledItemDelegate>

namespace kelvora {

/// What the model holds of a card beside its name, which is its text.
enum CardRole {
    CardPath = Qt::UserRole,
    CardPicture,  ///< an SvgPicture
    CardLines,    ///< the lines below the name
    CardProblem,  ///< in the picture's place; empty for none
    CardIsRead,   ///< whether its file has been looked at
};

class CardDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// Where a card has the sign that takes it from the list; `card` is its place.
    static QRect TakeSign(const QRect& card);

    /// How large each card is, with the space around it.
    QSize CardSize(const QWidget& view) const;

    /// Cards have that sign, while they are chosen or under the mouse.
    bool hasTakeSign = false;
    int lines = 2;  ///< below the name

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace kelvora
