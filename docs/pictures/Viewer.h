// Who looks at the windows of the scenes, and what for.
#pragma once

#include <QImage>
#include <QString>
#include <QWidget>
#include <chrono>
#include <functional>

namespace kelvora {

class Viewer {
public:
    virtual ~Viewer() = default;

    /// Looks at the window, which is shown. Throws std::runtime_error.
    virtual void Take(QWidget& window, const QString& name) const = 0;

    /// Looks at a picture that the program made. Throws std::runtime_error.
    virtual void Keep(QImage picture, const QString& name) const = 0;

    /// Virtual time has passed since the start of the scenes.
    virtual void TimeIs(std::chrono::steady_clock::duration /*passed*/) const {}

    /// Does `open`, and `act` with the dialog that it opens and waits for; the dialog is closed after that.
    /// Throws std::runtime_error when none comes, and what `act` throws.
    static void TakeDialog(const std::function<void()>& open, const std::function<void(QWidget&)>& act);

protected:
    Viewer() = default;
    Viewer(const Viewer&) = default;
    Viewer& operator=(const Viewer&) = default;
};

}  // namespace kelvora
