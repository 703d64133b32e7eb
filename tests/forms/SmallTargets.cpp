#include "forms/WindowFaults.h"

#include "layout/forms/ModuleButton.h"
#include "platform/qt/ProgramStyle.h"

namespace kelvora {

namespace {

/// As large as nothing is: rows and heads are as wide as what they stand in.
constexpr int Wide = 10000;

QList<QSize> TargetsOf(const QWidget& widget)
{
    QList<QSize> targets;
    if (const auto* const header = qobject_cast<const QHeaderView*>(&widget)) {
        if (header->sectionsClickable() && header->count() > 0)
            targets << QSize(Wide, header->height());
    } else if (const auto* const view = qobject_cast<const QAbstractItemView*>(&widget)) {
        const QModelIndex first =
            view->model() ? view->model()->index(0, 0, view->rootIndex()) : QModelIndex();
        if (first.isValid() && view->selectionMode() != QAbstractItemView::NoSelection)
            targets << QSize(Wide, view->visualRect(first).height());
    } else if (const auto* const tabs = qobject_cast<const QTabBar*>(&widget)) {
        for (int tab = 0; tab < tabs->count(); ++tab)
            targets << tabs->tabRect(tab).size();
    } else if (const auto* const bar = qobject_cast<const QMenuBar*>(&widget)) {
        for (QAction* const entry : bar->actions())
            if (entry->isVisible())
                targets << bar->actionGeometry(entry).size();
    } else if (const auto* const module = dynamic_cast<const ModuleButton*>(&widget);
               (module && (!TakesFocus(module->Button()) || !module->isEnabled())) ||
               qobject_cast<const QComboBox*>(widget.parentWidget())) {
        // Parts that a press does nothing to, and that belong to a whole that is large enough.
    } else if (const auto* const scroll = qobject_cast<const QScrollBar*>(&widget)) {
        targets << (scroll->orientation() == Qt::Horizontal ? QSize(Wide, scroll->height())
                                                            : QSize(scroll->width(), Wide));
    } else if (const auto* const handle = qobject_cast<const QSplitterHandle*>(&widget)) {
        targets << handle->size();
    } else if (qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QComboBox*>(&widget) ||
               qobject_cast<const QLineEdit*>(&widget)) {
        targets << widget.size();
    }
    return targets;
}

QList<QSize> EntriesOf(QMenu& menu)
{
    QList<QSize> entries;
    menu.ensurePolished();
    menu.sizeHint();
    for (QAction* const entry : menu.actions())
        if (entry->isVisible() && !entry->isSeparator())
            entries << menu.actionGeometry(entry).size();
    return entries;
}

}  // namespace

QStringList SmallTargets(QWidget& window)
{
    QStringList small;
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
        auto* const menu = qobject_cast<QMenu*>(widget);
        // The sign that clears a field comes with the first letter.
        const bool isSeen = (widget->isVisibleTo(&window) || qobject_cast<QLineEdit*>(widget->parent())) &&
                            widget->window() == window.window();
        for (const QSize& size : menu ? EntriesOf(*menu) : isSeen ? TargetsOf(*widget) : QList<QSize>())
            if (std::min(size.width(), size.height()) < TouchTarget)
                small << QStringLiteral("%1 %2 \"%3\" has %4 by %5 pixels")
                             .arg(QLatin1String(widget->metaObject()->className()), widget->objectName(),
                                  widget->property("text").toString())
                             .arg(size.width())
                             .arg(size.height());
    }
    return small;
}

}  // namespace kelvora
