#include "platform/qt/ReaderRoles.h"

#include <QAccessibleWidget>
#include <utility>

#include "platform/qt/WindowParts.h"

namespace kelvora {

namespace {

class Entry final : public QAccessibleWidget {
public:
    Entry(QAbstractButton& button, std::function<bool()> isSelected)
        : QAccessibleWidget(&button, QAccessible::ListItem),
          button_(button),
          isSelected_(std::move(isSelected))
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectable = true;
        state.selected = isSelected_();
        return state;
    }

    QStringList actionNames() const override
    {
        return QStringList{pressAction()} + QAccessibleWidget::actionNames();
    }

    void doAction(const QString& action) override
    {
        if (action != pressAction())
            return QAccessibleWidget::doAction(action);
        // Not at once: who asks waits for the end of what a press opens.
        if (!IsUnderDialog(button_))
            button_.animateClick();
    }

private:
    QAbstractButton& button_;
    std::function<bool()> isSelected_;
};

}  // namespace

void ShowAsWindow(QWidget& window)
{
    QAccessible::registerAccessibleInterface(new QAccessibleWidget(&window, QAccessible::Window));
}

void ShowAsPicture(QWidget& picture)
{
    QAccessible::registerAccessibleInterface(new QAccessibleWidget(&picture, QAccessible::Graphic));
}

void ShowAsList(QWidget& list)
{
    QAccessible::registerAccessibleInterface(new QAccessibleWidget(&list, QAccessible::List));
}

void ShowAsEntry(QAbstractButton& button, std::function<bool()> isSelected)
{
    QAccessible::registerAccessibleInterface(new Entry(button, std::move(isSelected)));
}

void TellSelection(QWidget& entry)
{
    QAccessibleEvent event(&entry, QAccessible::Selection);
    QAccessible::updateAccessibility(&event);
}

}  // namespace kelvora
