// What the main window shows while no setup is open: what to begin with, the setups opened lately, and a
// place to drop files.
#pragma once

#include <QLabel>
#include <QScrollArea>
#include <QToolButton>
#include <functional>
#include <vector>

#include "picture/forms/SetupCards.h"
#include "windows/forms/Commands.h"
#include "windows/forms/DropPlace.h"

namespace kelvora {

class StartPage final : public QScrollArea {
    Q_OBJECT

public:
    /// All outlive the page.
    StartPage(const Commands& commands, const Files& files, const MessageCatalogue& catalogue,
              QWidget* parent);

    /// The paths of the setups opened lately; must be set before they are listed.
    std::function<QStringList()> recentFiles;

    /// Asks for them anew.
    void ListRecentFiles();

    /// Files that can be dropped are above the window, or no longer.
    void ShowDrop(bool isAbove) { drop_->ShowAbove(isAbove); }

    /// Sets all texts anew from the catalogue.
    void Retranslate();

signals:
    /// A recent file was chosen, or taken from the list.
    void opened(const QString& path);
    void taken(const QString& path);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    QWidget* MakeCommands(const Commands& commands);
    QWidget* MakeRecent();
    QLabel* AddHeading(QWidget& column, const char* name);
    void SizeHeadings();

    const MessageCatalogue& catalogue_;
    QLabel* begin_;
    DropPlace* drop_;
    QLabel* lately_ = nullptr;
    QLabel* none_;
    SetupCards* cards_;
    std::vector<QToolButton*> buttons_;
};

}  // namespace kelvora
