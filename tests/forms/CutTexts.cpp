#include "forms/WindowFaults.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyleOptionComboBox>
#include <QStyleOptionFrame>
#include <QTabBar>
#include <QToolButton>
#include <QWidget>

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
    Option option;
    option.initFrom(&control);
    return SizeOf(control, text).width() -
           control.style()->subElementRect(element, &option, &control).width();
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
    QStyleOptionFrame option;
    option.initFrom(&field);
    const int room = field.style()->subElementRect(QStyle::SE_LineEditContents, &option, &field).width();
    return SizeOf(field, field.placeholderText()).width() - room;
}

int Lacks(const QMenuBar& bar)
{
    int lacks = 0;
    for (QAction* const action : bar.actions())
        if (action->isVisible())
            lacks = std::max(lacks, bar.actionGeometry(action).right() + 1 - bar.width());
    return lacks;
}

template <class Control, class... Others>
int LacksAs(const QWidget& widget)
{
    if (const auto* const control = dynamic_cast<const Control*>(&widget))
        return Lacks(*control);
    if constexpr (sizeof...(Others) > 0)
        return LacksAs<Others...>(widget);
    return 0;
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

void AddMnemonic(QMap<QString, QStringList>& owners, const QString& text)
{
    const QString key = QKeySequence::mnemonic(text).toString();
    if (!key.isEmpty())
        owners[key] << text;
}

QStringList Shared(const QMap<QString, QStringList>& owners)
{
    QStringList shared;
    for (auto it = owners.begin(); it != owners.end(); ++it)
        if (it.value().size() > 1)
            shared << it.key() + ": " + it.value().join(QStringLiteral(", "));
    return shared;
}

QStringList SharedIn(const QList<QAction*>& entries)
{
    QMap<QString, QStringList> owners;
    for (const QAction* const entry : entries)
        if (entry->isVisible())
            AddMnemonic(owners, entry->text());
    return Shared(owners);
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
            isOverflow ? widget->width()
                       : LacksAs<QLabel, QAbstractButton, QGroupBox, QTabBar, QComboBox, QLineEdit, QMenuBar>(
                             *widget);
        const bool hasText = !widget->property("text").toString().isEmpty();
        const int pixels = std::max(lacks, hasText ? StandsOut(*widget, window) : 0);
        if (pixels > 0)
            cut << Describe(*widget) + QStringLiteral(" lacks %1 pixels").arg(pixels);
    }
    return cut;
}

QStringList SharedMnemonics(QWidget& window)
{
    QMap<QString, QStringList> owners;
    QStringList shared;
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
        // Qt's own menus have no name.
        if (auto* const menu = dynamic_cast<QMenu*>(widget); menu && !menu->objectName().isEmpty())
            shared << SharedIn(menu->actions());
        if (!widget->isVisibleTo(&window) || widget->window() != window.window())
            continue;
        if (const auto* const bar = dynamic_cast<QMenuBar*>(widget)) {
            for (const QAction* const entry : bar->actions())
                if (entry->isVisible())
                    AddMnemonic(owners, entry->text());
        } else if (const auto* const label = dynamic_cast<QLabel*>(widget); !label || label->buddy()) {
            AddMnemonic(owners,
                        widget->property(dynamic_cast<QGroupBox*>(widget) ? "title" : "text").toString());
        }
    }
    return shared + Shared(owners);
}

}  // namespace kelvora
