#include "picture/forms/CardDelegate.h"

#include <QAbstractItemView>
#include <QFontMetrics>
#include <QPainter>

#include "picture/forms/SvgPicture.h"
#include "platform/qt/ChoiceMarks.h"
#include "platform/qt/Contrast.h"

namespace kelvora {

namespace {

// In pixels: around a card, and within it around its content.
constexpr int Around = 5;
constexpr int Within = 10;

constexpr int Corner = 6;
constexpr int SignSide = 20;

/// The whole chain's form.
constexpr double PictureForm = 0.4;

/// How wide a card is, in characters.
constexpr int CardColumns = 32;

constexpr float FaintText = 0.75F;

bool IsChosen(const QStyleOptionViewItem& option)
{
    return option.state.testFlag(QStyle::State_Selected);
}

bool IsUnderMouse(const QStyleOptionViewItem& option)
{
    return option.state.testFlag(QStyle::State_MouseOver);
}

void DrawGround(QPainter& painter, const QRect& card, const QStyleOptionViewItem& option)
{
    const QPalette& palette = option.palette;
    const auto* const view = dynamic_cast<const QAbstractItemView*>(option.widget);
    painter.setPen(IsChosen(option) ? ChosenFrame(palette, view && view->hasFocus())
                                    : QPen(BorderColour(palette), 1));
    painter.setBrush(palette.brush(QPalette::Base));
    painter.drawRoundedRect(QRectF(card).adjusted(0.5, 0.5, -0.5, -0.5), Corner, Corner);
    if (!IsUnderMouse(option))
        return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(HoverTint(palette));
    painter.drawRoundedRect(card, Corner, Corner);
}

void DrawPicture(QPainter& painter, const QRect& place, const QModelIndex& index)
{
    const auto picture = index.data(CardPicture).value<SvgPicture>();
    if (const QString problem = index.data(CardProblem).toString(); !problem.isEmpty()) {
        painter.drawText(place, Qt::AlignCenter | Qt::TextWordWrap, problem);
    } else if (!picture.IsEmpty()) {
        QRect drawn(QPoint(), picture.SizeIn(place.size()));
        drawn.moveCenter(place.center());
        painter.drawPixmap(drawn, picture.Pixels(drawn.size(), painter.device()->devicePixelRatioF()));
    }
}

// On a ground of its own: the picture may reach below it.
void DrawTakeSign(QPainter& painter, const QRect& card, const QBrush& ground)
{
    const QRectF place(CardDelegate::TakeSign(card));
    painter.setBrush(ground);
    painter.drawEllipse(place);
    const QRectF sign = place.adjusted(6, 6, -6, -6);
    painter.drawLine(sign.topLeft(), sign.bottomRight());
    painter.drawLine(sign.topRight(), sign.bottomLeft());
}

}  // namespace

QRect CardDelegate::TakeSign(const QRect& card)
{
    return {card.right() - Around - SignSide - 2, card.top() + Around + 3, SignSide, SignSide};
}

QSize CardDelegate::CardSize(const QWidget& view) const
{
    const QFontMetrics metrics = view.fontMetrics();
    const int width = CardColumns * metrics.averageCharWidth();
    const int height = qRound(width * PictureForm) + Within + (lines + 1) * metrics.lineSpacing();
    return QSize(width, height) + 2 * QSize(Around + Within, Around + Within);
}

void CardDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QRect card = option.rect.adjusted(Around, Around, -Around, -Around);
    DrawGround(*painter, card, option);
    const QRect content = card.adjusted(Within, Within, -Within, -Within);
    QRect line = content;
    line.setHeight(qRound(content.width() * PictureForm));
    QColor ink = option.palette.color(QPalette::Text);
    painter->setPen(ink);
    DrawPicture(*painter, line, index);
    if (hasTakeSign && (IsChosen(option) || IsUnderMouse(option)))
        DrawTakeSign(*painter, option.rect, option.palette.brush(QPalette::Base));

    QFont bold = option.font;
    bold.setBold(true);
    line.moveTop(line.bottom() + Within);
    line.setHeight(option.fontMetrics.lineSpacing());
    painter->setFont(bold);
    painter->drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                      QFontMetrics(bold).elidedText(index.data().toString(), Qt::ElideMiddle, line.width()));
    painter->setFont(option.font);
    ink.setAlphaF(FaintText);
    painter->setPen(ink);
    for (const QString& text : index.data(CardLines).toStringList()) {
        line.translate(0, option.fontMetrics.lineSpacing());
        painter->drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                          option.fontMetrics.elidedText(text, Qt::ElideMiddle, line.width()));
    }
    painter->restore();
}

QSize CardDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const
{
    return CardSize(*option.widget);
}

}  // namespace kelvora
