#include "forms/WindowFaults.h"

#include "platform/qt/ElidedLabel.h"

namespace kelvora {

namespace {

QSize SizeOf(const QWidget& widget, const QString& text)
{
    return widget.fontMetrics().size(Qt::TextShowMnemonic, text);
}

// How many pixels the text of each kind of control lacks.

int Lacks(const QLabel& label)
{
    if (dynamic_cast<const ElidedLabel*>(&label) || label.text().isEmpty())
        return 0;
    const QSize needed = label.wordWrap()
                             ? QSize(label.minimumSizeHint().width(), label.heightForWidth(label.width()))
                             : label.sizeHint();
    return std::max(needed.width() - label.width(), needed.height() - label.height());
}

template <class Option>
int LacksIn(const QWidget& control, const QString& text, QStyle::SubElement element)
{
    return SizeOf(control, text).width() - Inside<Option>(control, element).width();
}

int Lacks(const QAbstractButton& button)
{
    if (dynamic_cast<const QPushButton*>(&button))
        return LacksIn<QStyleOptionButton>(button, button.text(), QStyle::SE_PushButtonContents) +
               (button.icon().isNull() ? 0 : button.iconSize().width());
    if (dynamic_cast<const QCheckBox*>(&button))
        return LacksIn<QStyleOptionButton>(button, button.text(), QStyle::SE_CheckBoxContents);
    if (dynamic_cast<const QRadioButton*>(&button))
        return LacksIn<QStyleOptionButton>(button, button.text(), QStyle::SE_RadioButtonContents);
    // Others draw themselves.
    return dynamic_cast<const QToolButton*>(&button) ? button.sizeHint().width() - button.width() : 0;
}

int Lacks(const QGroupBox& box)
{
    return box.title().isEmpty() ? 0 : box.minimumSizeHint().width() - box.width();
}

// The heads of a table that lack some, by their words.
QStringList CutHeads(const QHeaderView& header)
{
    QStringList cut;
    const int margins = 2 * header.style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, &header);
    for (int section = 0; header.orientation() == Qt::Horizontal && section < header.count(); ++section) {
        const QString text = header.model()->headerData(section, Qt::Horizontal).toString();
        const int lacks = SizeOf(header, text).width() + margins - header.sectionSize(section);
        if (!header.isSectionHidden(section) && lacks > 0)
            cut << QStringLiteral("head \"%1\" lacks %2 pixels").arg(text).arg(lacks);
    }
    return cut;
}

int Lacks(const QTabBar& tabs)
{
    int lacks = tabs.count() > 0 ? tabs.tabRect(tabs.count() - 1).right() + 1 - tabs.width() : 0;
    for (int tab = 0; tab < tabs.count(); ++tab)
        lacks = std::max(lacks, SizeOf(tabs, tabs.tabText(tab)).width() - tabs.tabRect(tab).width());
    return lacks;
}

// A list's own texts; what is typed or found elsewhere may be of any length.
int Lacks(const QComboBox& list)
{
    if (list.isEditable())
        return 0;
    QStyleOptionComboBox option;
    option.initFrom(&list);
    option.editable = false;
    const int room = list.style()
                         ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &list)
                         .width();
    return SizeOf(list, list.currentText()).width() - room;
}

int Lacks(const QLineEdit& field)
{
    return LacksIn<QStyleOptionFrame>(field, field.placeholderText(), QStyle::SE_LineEditContents);
}

int Lacks(const QMenuBar& bar)
{
    int lacks = 0;
    for (QAction* const action : bar.actions())
        if (action->isVisible())
            lacks = std::max(lacks, bar.actionGeometry(action).right() + 1 - bar.width());
    return lacks;
}

// By how much it stands out of what shows it.
int StandsOut(const QWidget& widget, const QWidget& window)
{
    QRect place = widget.rect();
    for (const QWidget* at = &widget; at != &window; at = at->parentWidget()) {
        place.translate(at->pos());
        const QWidget* const above = at->parentWidget();
        if (dynamic_cast<const QAbstractScrollArea*>(above->parentWidget()))
            return 0;
        const int out = std::max({-place.left(), -place.top(), place.right() + 1 - above->width(),
                                  place.bottom() + 1 - above->height()});
        if (out > 0)
            return out;
    }
    return 0;
}

QString Describe(const QWidget& widget)
{
    QString text = widget.metaObject()->className() + QStringLiteral(" ") + widget.objectName();
    for (const char* const property : {"text", "title", "placeholderText", "currentText"})
        if (const QString value = widget.property(property).toString(); !value.isEmpty())
            text += " \"" + value + '"';
    return text;
}

}  // namespace

QStringList CutTexts(QWidget& window)
{
    QStringList cut;
    for (const QWidget* const widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(&window) || widget->window() != window.window())
            continue;
        // Qt shows these where a bar does not have room for all of its buttons.
        const bool isOverflow = widget->objectName() == QLatin1String("qt_toolbar_ext_button") ||
                                widget->objectName() == QLatin1String("qt_menubar_ext_button");
        if (const auto* const header = dynamic_cast<const QHeaderView*>(widget))
            cut << CutHeads(*header);
        if (const auto* const area = dynamic_cast<const QScrollArea*>(widget);
            area && area->horizontalScrollBar()->maximum() > 0)
            cut << QStringLiteral("what scrolls lacks %1 pixels").arg(area->horizontalScrollBar()->maximum());
        const int lacks =
            isOverflow
                ? widget->width()
                : AsFirstOf<QLabel, QAbstractButton, QGroupBox, QTabBar, QComboBox, QLineEdit, QMenuBar>(
                      *widget, [](const auto& control) { return Lacks(control); }, 0);
        const bool hasText = !widget->property("text").toString().isEmpty();
        const int pixels = std::max(lacks, hasText ? StandsOut(*widget, window) : 0);
        if (pixels > 0)
            cut << Describe(*widget) + QStringLiteral(" lacks %1 pixels").arg(pixels);
    }
    return cut;
}

QStringList SharedMnemonics(QWidget& window)
{
    // By the menu that they are entries of, or none.
    QMap<std::pair<const QMenu*, QString>, QStringList> owners;
    const auto add = [&](const QMenu* menu, const QString& text) {
        if (const QString key = QKeySequence::mnemonic(text).toString(); !key.isEmpty())
            owners[{menu, key}] << text;
    };
    for (const QWidget* const widget : window.findChildren<QWidget*>()) {
        const auto* const menu = qobject_cast<const QMenu*>(widget);
        const auto* const label = qobject_cast<const QLabel*>(widget);
        const bool isSeen = widget->isVisibleTo(&window) && widget->window() == window.window();
        // Qt's own menus have no name.
        if (menu ? !menu->objectName().isEmpty() : isSeen && qobject_cast<const QMenuBar*>(widget)) {
            for (const QAction* const entry : widget->actions())
                if (entry->isVisible())
                    add(menu, entry->text());
        } else if (isSeen && (!label || label->buddy())) {
            add(nullptr,
                widget->property(qobject_cast<const QGroupBox*>(widget) ? "title" : "text").toString());
        }
    }
    QStringList shared;
    for (auto each = owners.begin(); each != owners.end(); ++each)
        if (each.value().size() > 1)
            shared << each.key().second + ": " + each.value().join(QStringLiteral(", "));
    return shared;
}

}  // namespace kelvora
