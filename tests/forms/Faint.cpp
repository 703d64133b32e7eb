#include "forms/WindowFaults.h"

#include <algorithm>

#include "layout/forms/StripView.h"
#include "platform/qt/Contrast.h"
#include "series/forms/VerdictSign.h"

namespace kelvora {

namespace {

/// Strokes are one pixel wide at least then, and have their full colour somewhere.
constexpr int Sharpness = 3;

constexpr double TextContrast = 4.5;
constexpr double SignContrast = 3;

/// Where a text or a sign stands, what it says, and how much it shall stand out.
struct Spot {
    QRect place;
    QString what;
    double least = TextContrast;
};

// The pixels that stand out most of the most frequent ones.
double ContrastIn(const QImage& picture)
{
    QHash<QRgb, qsizetype> counts;
    for (int y = 0; y < picture.height(); ++y) {
        const auto* at = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        const auto* const end = at + picture.width();
        // Most pixels are like the one before.
        while (at != end) {
            const auto* const begin = at;
            while (at != end && *at == *begin)
                ++at;
            counts[*begin] += at - begin;
        }
    }
    const QRgb ground = std::ranges::max_element(counts, {}, [](qsizetype count) { return count; }).key();
    double most = 1;
    for (auto each = counts.keyBegin(); each != counts.keyEnd(); ++each)
        most = std::max(most, Contrast(QColor(ground), QColor(*each)));
    return most;
}

// The left edge of a frame, with some of what is on either side.
QRect Edge(const QRect& frame)
{
    return {frame.left() - 2, frame.top() + frame.height() / 4, 5, frame.height() / 2};
}

// The middle of a cap or a sign, without its edges.
QRect Middle(const QRect& rect)
{
    return rect.adjusted(rect.width() / 4, rect.height() / 4, -rect.width() / 4, -rect.height() / 4);
}

QList<Spot> SpotsOf(const QAbstractItemView& view)
{
    QList<Spot> spots;
    const auto* const model = view.model();
    for (int row = 0; model && row < model->rowCount(view.rootIndex()); ++row)
        for (int column = 0; column < model->columnCount(view.rootIndex()); ++column) {
            const QModelIndex index = model->index(row, column, view.rootIndex());
            const QRect place = view.visualRect(index) & view.viewport()->rect();
            if (place.height() >= view.fontMetrics().height() && index.flags().testFlag(Qt::ItemIsEnabled))
                spots << Spot{place.translated(view.viewport()->pos()), index.data().toString()};
        }
    return spots;
}

QList<Spot> SpotsOf(const QHeaderView& header)
{
    QList<Spot> spots;
    for (int section = 0; section < header.count(); ++section) {
        const int at = header.sectionViewportPosition(section);
        const int size = header.sectionSize(section);
        spots << Spot{QRect(header.orientation() == Qt::Horizontal ? QRect(at, 0, size, header.height())
                                                                   : QRect(0, at, header.width(), size))
                          .adjusted(3, 3, -3, -3),
                      header.model()->headerData(section, header.orientation()).toString()};
    }
    return spots;
}

// Each run of letters of one form, links too, that stands on one line.
QList<Spot> SpotsOf(const QTextBrowser& page)
{
    QList<Spot> spots;
    for (QTextBlock block = page.document()->begin(); block.isValid(); block = block.next())
        for (auto each = block.begin(); !each.atEnd(); ++each) {
            QTextCursor cursor(page.document());
            cursor.setPosition(each.fragment().position());
            const QRect first = page.cursorRect(cursor);
            cursor.setPosition(each.fragment().position() + each.fragment().length());
            const QRect last = page.cursorRect(cursor);
            if (first.top() == last.top())
                spots << Spot{(first | last).translated(page.viewport()->pos()), each.fragment().text()};
        }
    return spots;
}

// The two lines below each device.
QList<Spot> SpotsOf(const StripView& strip)
{
    QList<Spot> spots;
    const int line = strip.fontMetrics().height();
    int bottom = 0;
    for (const StripButtonShape& shape : StripButtons)
        if (strip.Button(shape.button).isVisible())
            bottom = std::max(bottom, strip.Button(shape.button).geometry().bottom());
    for (int number = 0; bottom > 0 && number < 2; ++number)
        spots << Spot{QRect(0, bottom + line / 2 + number * line, strip.width(), line), "a device's name"};
    return spots;
}

QList<Spot> SpotsOf(const QTabBar& tabs)
{
    QList<Spot> spots;
    for (int tab = 0; tab < tabs.count(); ++tab)
        spots << Spot{tabs.tabRect(tab).adjusted(6, 6, -6, -4), tabs.tabText(tab)};
    return spots;
}

QList<Spot> SpotsOf(const QMenuBar& bar)
{
    QList<Spot> spots;
    for (QAction* const entry : bar.actions())
        if (entry->isVisible() && entry->isEnabled())
            spots << Spot{bar.actionGeometry(entry).adjusted(2, 2, -2, -2), entry->text()};
    return spots;
}

QList<Spot> SpotsOf(const QAbstractButton& button)
{
    if (qobject_cast<const QCheckBox*>(&button))
        return {{Inside<QStyleOptionButton>(button, QStyle::SE_CheckBoxContents), button.text()},
                {Edge(Inside<QStyleOptionButton>(button, QStyle::SE_CheckBoxIndicator)),
                 button.text() + " box", SignContrast}};
    if (qobject_cast<const QRadioButton*>(&button))
        return {{Inside<QStyleOptionButton>(button, QStyle::SE_RadioButtonContents), button.text()},
                {Edge(Inside<QStyleOptionButton>(button, QStyle::SE_RadioButtonIndicator)),
                 button.text() + " box", SignContrast}};
    if (qobject_cast<const QPushButton*>(&button))
        return {{Inside<QStyleOptionButton>(button, QStyle::SE_PushButtonContents), button.text()},
                {Edge(button.rect()), button.text() + " border", SignContrast}};
    if (qobject_cast<const QToolButton*>(&button))
        return {{button.rect().adjusted(3, 3, -3, -3), button.text(),
                 button.text().isEmpty() ? SignContrast : TextContrast}};
    return {{Middle(button.rect()), button.text()}};
}

// Those of the kinds that have a name, a title or a field.
QList<Spot> SpotsOf(const QWidget& widget)
{
    if (dynamic_cast<const VerdictSign*>(&widget))
        return {{widget.rect(), widget.accessibleName()}};
    if (const auto* const label = qobject_cast<const QLabel*>(&widget))
        return {{label->contentsRect(), label->text()}};
    if (const auto* const box = qobject_cast<const QGroupBox*>(&widget))
        return {{QRect(0, 0, box->width(), box->fontMetrics().height()), box->title()}};
    const QRect edge = Edge(widget.rect());
    if (const auto* const field = qobject_cast<const QLineEdit*>(&widget))
        return {{Inside<QStyleOptionFrame>(*field, QStyle::SE_LineEditContents),
                 field->displayText() + field->placeholderText()},
                {edge, field->objectName() + " border", SignContrast}};
    if (const auto* const list = qobject_cast<const QComboBox*>(&widget))
        return {{list->rect().adjusted(4, 4, -20, -4), list->currentText()},
                {edge, list->objectName() + " border", SignContrast}};
    return {};
}

}  // namespace

QStringList Faint(QWidget& window)
{
    QImage picture(window.size() * Sharpness, QImage::Format_RGB32);
    picture.setDevicePixelRatio(Sharpness);
    window.render(&picture);
    QStringList faint;
    for (const QWidget* const widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(&window) || !widget->isEnabled() || widget->window() != window.window())
            continue;
        const auto spots = AsFirstOf<QHeaderView, QTextBrowser, StripView, QAbstractItemView, QTabBar,
                                     QMenuBar, QAbstractButton, QWidget>(
            *widget, [](const auto& control) { return SpotsOf(control); }, QList<Spot>());
        for (const Spot& spot : spots) {
            // What is scrolled away or lies below something else is not seen.
            const QRect own = spot.place & widget->rect();
            const bool isSeen = !own.isEmpty() && widget->visibleRegion().intersected(own) == QRegion(own);
            if (spot.what.trimmed().isEmpty() || !isSeen)
                continue;
            const QRect place(widget->mapTo(&window, spot.place.topLeft()), spot.place.size());
            const double contrast =
                ContrastIn(picture.copy(QRect(place.topLeft() * Sharpness, place.size() * Sharpness)));
            if (contrast < spot.least)
                faint << QStringLiteral("\"%1\" of %2 stands out by %3")
                             .arg(spot.what, QLatin1String(widget->metaObject()->className()))
                             .arg(contrast, 0, 'f', 1);
        }
    }
    return faint;
}

}  // namespace kelvora
