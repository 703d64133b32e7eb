// The help pages of the program's language in a window of their own, with a search over all of them.
#pragma once

#include <QListWidget>
#include <QMainWindow>
#include <optional>

#include "catalogue/MessageCatalogue.h"
#include "windows/forms/HelpBrowser.h"
#include "windows/forms/HelpIndex.h"

class QLabel;
class QLineEdit;

namespace kelvora {

class HelpWindow final : public QMainWindow {
public:
    /// Closes and deletes itself. While a dialog is open that lets no other window have the keys, `parent` is
    /// that dialog.
    HelpWindow(const MessageCatalogue& catalogue, const QString& folder, QWidget* parent = nullptr);

    /// Shows a page by its file name ("keys.html"), at a place of it ("keys.html#types") where one is named,
    /// or that the pages are missing.
    void ShowPage(const QString& page);

private:
    void MakeBar(const MessageCatalogue& catalogue);
    void MakeSearch(const MessageCatalogue& catalogue);
    void MakeKeys();
    void Search();
    void GoToResults();
    void ShowResult(int row);
    void MarkWords();
    void Escape();

    QString folder_;
    QString missing_;
    HelpBrowser* browser_;
    QLineEdit* search_;
    QWidget* found_;
    QLabel* count_;
    QListWidget* results_;
    std::optional<HelpIndex> index_;  ///< made at the first search
    QList<const HelpSection*> sections_;
};

}  // namespace kelvora
