#include "forms/WindowFaults.h"

#include <QTest>

namespace kelvora {

namespace {

bool NeedsName(const QWidget& widget, const QAccessibleInterface& access)
{
    const QWidget* const above = widget.parentWidget();
    // Parts of a control that has the name; a label is its own, and a box's sign says nothing that its words
    // do not.
    if (access.role() == QAccessible::Client || (above && widget.focusProxy() == above) ||
        qobject_cast<const QLabel*>(&widget))
        return false;
    return widget.focusPolicy() != Qt::NoFocus || qobject_cast<const QAbstractButton*>(&widget) ||
           qobject_cast<const QProgressBar*>(&widget) || access.role() == QAccessible::Graphic;
}

}  // namespace

QStringList Nameless(QWidget& window)
{
    QStringList nameless;
    const auto check = [&](const QWidget& widget, const QAccessibleInterface* access) {
        if (access && access->text(QAccessible::Name).isEmpty())
            nameless << QStringLiteral("%1 %2 in %3 has no name")
                            .arg(QLatin1String(widget.metaObject()->className()), widget.objectName(),
                                 QLatin1String(widget.parentWidget()->metaObject()->className()));
    };
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
        QAccessibleInterface* const access = QAccessible::queryAccessibleInterface(widget);
        if (!access || !widget->isVisibleTo(&window) || widget->window() != window.window())
            continue;
        if (NeedsName(*widget, *access))
            check(*widget, access);
        if (const auto* const tabs = qobject_cast<QTabBar*>(widget))
            for (int tab = 0; tab < tabs->count(); ++tab)
                check(*tabs, access->child(tab));
    }
    return nameless;
}

QStringList Unreached(QWidget& window)
{
    // Tab stays within the setup there, and menus reach the rest.
    if (qobject_cast<const QMainWindow*>(&window))
        return {};
    QSet<const QWidget*> reached;
    QWidget* const before = window.focusWidget();
    const QList<QWidget*> all = window.findChildren<QWidget*>();
    for (qsizetype step = 0; step < all.size(); ++step) {
        QTest::keyClick(window.focusWidget() ? window.focusWidget() : &window, Qt::Key_Tab);
        reached << window.focusWidget();
    }
    if (before)
        before->setFocus();
    QStringList unreached;
    for (const QWidget* const widget : all)
        if (widget->isVisibleTo(&window) && widget->isEnabled() && widget->window() == &window &&
            (widget->focusPolicy() & Qt::TabFocus) != 0 && !widget->focusProxy() && !reached.contains(widget))
            unreached << QLatin1String(widget->metaObject()->className()) + ' ' + widget->objectName() +
                             " is reached by no Tab";
    return unreached;
}

}  // namespace kelvora
