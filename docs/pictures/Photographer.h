// Takes pictures of windows and writes them as files.
#pragma once

#include <QImage>
#include <QString>
#include <QWidget>
#include <functional>

namespace kelvora {

class Photographer {
public:
    /// Makes the folder. Throws std::runtime_error.
    explicit Photographer(const QString& folder);

    /// Writes the window as "NAME.png". Throws std::runtime_error.
    void Take(QWidget& window, const QString& name) const;

    /// Writes a picture as "NAME.png", with a thin edge. Throws std::runtime_error.
    void Keep(QImage picture, const QString& name) const;

    /// Does `open`, and `act` with the dialog that it opens and waits for; the dialog is closed after that.
    /// Throws std::runtime_error when none comes, and what `act` throws.
    void TakeDialog(const std::function<void()>& open, const std::function<void(QWidget&)>& act) const;

private:
    void Save(const QImage& picture, const QString& name) const;

    QString folder_;
};

}  // namespace kelvora
