// The controls of a window, by their names, and its dialogs.
#pragma once

#include <gmock/gmock.h>

#include <QTest>
#include <QtWidgets>
#include <functional>
#include <stdexcept>
#include <string>

namespace kelvora {

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

/// The control of that type, whatever its name without one. Throws std::logic_error where there is none.
template <class Widget>
Widget& Find(const QWidget& window, const std::string& name = {})
{
    auto* const found = window.findChild<Widget*>(name.empty() ? QString() : QString::fromStdString(name));
    if (!found)
        throw std::logic_error("no " + name);
    return *found;
}

/// The text of a label, a button or a field.
inline std::string Says(const QWidget& window, const std::string& name)
{
    const auto& widget = Find<QWidget>(window, name);
    const QVariant text = widget.property("text");
    return (text.isValid() ? text : widget.property("plainText")).toString().toStdString();
}

inline bool IsUsable(const QWidget& window, const std::string& name)
{
    return Find<QWidget>(window, name).isEnabled();
}

inline void Press(const QWidget& window, const std::string& name)
{
    Find<QAbstractButton>(window, name).click();
}

/// Does `open`, and `act` on the modal dialog that it opens.
template <class Dialog>
void InDialog(const std::function<void()>& open, const std::function<void(Dialog&)>& act)
{
    bool seen = false;
    QTimer watch;
    watch.callOnTimeout([&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal)
            return;
        auto* dialog = dynamic_cast<Dialog*>(modal);
        EXPECT_TRUE(dialog) << modal->objectName().toStdString();
        if (dialog) {
            watch.stop();
            act(*dialog);
        }
        seen = dialog != nullptr;
        // Whatever went wrong, no dialog may hold the test up.
        if (modal->isVisible())
            modal->hide();
    });
    watch.start(0);
    open();
    EXPECT_TRUE(seen);
}

}  // namespace kelvora
