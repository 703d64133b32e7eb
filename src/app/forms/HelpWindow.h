// The help pages of the program's language in a window of their own.
#pragma once

#include <QMainWindow>
#include <QTextBrowser>

#include "app/MessageCatalogue.h"

namespace kelvora {

class HelpWindow final : public QMainWindow {
public:
    /// Closes and deletes itself.
    HelpWindow(const MessageCatalogue& catalogue, const QString& folder);

    /// Shows a page by its file name ("keys.html"), or that the pages are missing.
    void ShowPage(const QString& page);

private:
    QTextBrowser* browser_;
    QString folder_;
    QString missing_;
};

}  // namespace kelvora
