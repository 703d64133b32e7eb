// What is wrong with a window as it stands on the screen, for eyes, hands and screen readers.
#pragma once

#include <QtWidgets>

namespace kelvora {

/// Where a control of that kind, as it is, has that part.
template <class Option>
QRect Inside(const QWidget& control, QStyle::SubElement element)
{
    Option option;
    option.initFrom(&control);
    return control.style()->subElementRect(element, &option, &control);
}

/// What `judge` says of the widget as the first of those kinds that it is, or `ofOthers`.
template <class... Kinds, class Judge, class Result>
Result AsFirstOf(const QWidget& widget, const Judge& judge, Result ofOthers)
{
    const auto take = [&](const auto* as) {
        if (as)
            ofOthers = judge(*as);
        return as != nullptr;
    };
    (take(dynamic_cast<const Kinds*>(&widget)) || ...);
    return ofOthers;
}

/// The labels, buttons, boxes, titles, heads, tabs, hints and menus of a shown window whose text is wider or
/// higher than its place, a line each; none when all can be read.
QStringList CutTexts(QWidget& window);

/// The letters that two of its controls, or two entries of a menu, go by.
QStringList SharedMnemonics(QWidget& window);

/// What takes the focus, can be pressed, or is a picture, and has no name, a line each.
QStringList Nameless(QWidget& window);

/// What the Tab key stops at nowhere on its way through the window, though it should, a line each.
QStringList Unreached(QWidget& window);

/// The texts that stand out of their ground by less than 4.5 to 1, and the signs and borders that do by less
/// than 3 to 1, by the pixels that are painted, a line each. What is disabled may.
QStringList Faint(QWidget& window);

/// What can be pressed, in its menus too, and is smaller than a touch target, a line each.
QStringList SmallTargets(QWidget& window);

}  // namespace kelvora
