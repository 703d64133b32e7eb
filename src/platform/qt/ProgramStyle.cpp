#include "platform/qt/ProgramStyle.h"

#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QStyleOptionFrame>
#include <QStyleOptionMenuItem>
#include <QWidget>
#include <algorithm>

#include "platform/qt/Contrast.h"

namespace kelvora {

namespace {

/// Asked of the style by what draws itself: a touch target's side, or 0.
constexpr auto TargetMetric = static_cast<QStyle::PixelMetric>(QStyle::PM_CustomBase + 1);

/// How much darker than the window Qt's own style draws a border, in percent.
constexpr int OutlineDarkness = 140;

// The style takes the colour of all borders from that of the window.
QPalette WithSeenBorders(QPalette palette)
{
    palette.setColor(QPalette::Window, BorderColour(palette).lighter(OutlineDarkness));
    return palette;
}

template <class Option>
bool DrawsWithSeenBorders(const QStyleOption* option, const auto& draw)
{
    const auto* const own = qstyleoption_cast<const Option*>(option);
    if (!own)
        return false;
    Option seen(*own);
    seen.palette = WithSeenBorders(seen.palette);
    draw(seen);
    return true;
}

}  // namespace

ProgramStyle::ProgramStyle(bool forTouch) : forTouch_(forTouch) {}

int ProgramStyle::LeastTarget(const QWidget& widget, int least)
{
    return std::max(least, widget.style()->pixelMetric(TargetMetric, nullptr, &widget));
}

void ProgramStyle::polish(QPalette& palette)
{
    QProxyStyle::polish(palette);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        const auto colour = [&](QPalette::ColorRole role) { return palette.color(group, role); };
        const QColor base = colour(QPalette::Base);
        palette.setColor(group, QPalette::PlaceholderText,
                         Standing(colour(QPalette::Text), base, ReadableContrast));
        palette.setColor(group, QPalette::Link, Readable(colour(QPalette::Link), base));
        palette.setColor(group, QPalette::Highlight,
                         Readable(colour(QPalette::Highlight), colour(QPalette::HighlightedText)));
    }
}

int ProgramStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    if (metric == TargetMetric)
        return forTouch_ ? TouchTarget : 0;
    const int own = QProxyStyle::pixelMetric(metric, option, widget);
    if (!forTouch_)
        return own;
    switch (metric) {
        case PM_HeaderDefaultSectionSizeVertical:
        case PM_MenuButtonIndicator:
        case PM_ScrollBarExtent:
        case PM_ScrollBarSliderMin:
        case PM_SplitterWidth:
        case PM_TabBarScrollButtonWidth:
        case PM_TitleBarHeight:
        case PM_ToolBarExtensionExtent:
            return std::max(own, TouchTarget);
        // Two pixels lower than the button around it.
        case PM_LineEditIconSize:
            return std::max(own, TouchTarget - 2);
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight:
            return std::max(own, TouchTarget / 2);
        default:
            return own;
    }
}

QSize ProgramStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                     const QWidget* widget) const
{
    const QSize own = QProxyStyle::sizeFromContents(type, option, size, widget);
    if (!forTouch_)
        return own;
    switch (type) {
        case CT_MenuItem: {
            const auto* const item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
            if (item && item->menuItemType == QStyleOptionMenuItem::Separator)
                return own;
            return own.expandedTo({0, TouchTarget});
        }
        case CT_ItemViewItem:
        case CT_HeaderSection:
            return own.expandedTo({0, TouchTarget});
        case CT_MdiControls:
            return own.expandedTo({3 * TouchTarget, TouchTarget});
        case CT_PushButton:
        case CT_ToolButton:
        case CT_CheckBox:
        case CT_RadioButton:
        case CT_ComboBox:
        case CT_LineEdit:
        case CT_MenuBarItem:
        case CT_TabBarTab:
            return own.expandedTo({TouchTarget, TouchTarget});
        default:
            return own;
    }
}

QRect ProgramStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                   const QWidget* widget) const
{
    QRect own = QProxyStyle::subControlRect(control, option, part, widget);
    const auto* const list = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (!forTouch_ || control != CC_ComboBox || !list || !list->editable)
        return own;
    // Beside a field that is typed in, the arrow alone opens the list.
    const QRect arrow = visualRect(list->direction, list->rect,
                                   list->rect.adjusted(list->rect.width() - TouchTarget, 0, 0, 0));
    if (part == SC_ComboBoxArrow)
        return arrow;
    if (part == SC_ComboBoxEditField && list->direction == Qt::LeftToRight)
        own.setRight(arrow.left() - 1);
    return own;
}

void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const
{
    const auto draw = [&](const QStyleOption& seen) {
        QProxyStyle::drawPrimitive(element, &seen, painter, widget);
    };
    const bool isButton = element == PE_PanelButtonCommand || element == PE_IndicatorCheckBox ||
                          element == PE_IndicatorRadioButton;
    if (isButton && DrawsWithSeenBorders<QStyleOptionButton>(option, draw))
        return;
    const bool isFrame = element == PE_FrameLineEdit || element == PE_Frame;
    if (isFrame && DrawsWithSeenBorders<QStyleOptionFrame>(option, draw))
        return;
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void ProgramStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                      QPainter* painter, const QWidget* widget) const
{
    const auto draw = [&](const QStyleOptionComplex& seen) {
        QProxyStyle::drawComplexControl(control, &seen, painter, widget);
    };
    if (control != CC_ComboBox || !DrawsWithSeenBorders<QStyleOptionComboBox>(option, draw))
        QProxyStyle::drawComplexControl(control, option, painter, widget);
}

}  // namespace kelvora
