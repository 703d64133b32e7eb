// Opens the help at the page of the window that the user is in: by the menu, and by F1 in any window, a
// dialog that holds all others up included.
#pragma once

#include <QObject>
#include <QPointer>
#include <functional>

#include "windows/Language.h"

namespace kelvora {

class HelpWindow;

/// The page of a window or of something in it, by the names of its windows ("keys.html"); empty when none of
/// them has one.
QString HelpPageOf(const QWidget* widget);

class HelpOpener final : public QObject {
public:
    /// Both outlive the object. `front` is the setup window in front, or null.
    HelpOpener(const Texts& texts, const Language& language, std::function<QWidget*()> front);
    ~HelpOpener() override;

    /// Opens the help for where the keys go now.
    void Show();
    /// Closes the help, if it is open: its pages are those of one language.
    void Close();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    const Texts& texts_;
    const Language& language_;
    std::function<QWidget*()> front_;
    QPointer<HelpWindow> help_;
};

}  // namespace kelvora
