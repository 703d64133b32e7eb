#include "platform/qt/WindowKeys.h"

#include <QAction>
#include <QWidget>

namespace kelvora {

void AddKeys(QWidget& window, const QList<QKeySequence>& keys, const std::function<void()>& action)
{
    auto* const entry = new QAction(&window);
    entry->setShortcuts(keys);
    QObject::connect(entry, &QAction::triggered, &window, action);
    window.addAction(entry);
}

}  // namespace kelvora
