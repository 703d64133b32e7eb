// The page of the help that belongs to what is going on in a window, where that is not always the same.
#pragma once

#include <QPointer>
#include <QString>
#include <QVariant>

class QWidget;

namespace kelvora {

/// Gives a window another page while it lives; what the window had before comes back afterwards.
class HelpTopic {
public:
    /// `page` is a file name of the help, with a place of it where there is one: "flash.html#verify".
    HelpTopic(QWidget& window, const char* page);
    ~HelpTopic();
    HelpTopic(const HelpTopic&) = delete;
    HelpTopic& operator=(const HelpTopic&) = delete;

    /// The page that a window has been given; empty for none.
    static QString Of(const QWidget& window);

private:
    QPointer<QWidget> window_;
    QVariant before_;
};

}  // namespace kelvora
