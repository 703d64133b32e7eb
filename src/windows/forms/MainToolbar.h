// The main toolbar: a button for each of the most used commands, told apart by its key.
#pragma once

#include <QToolBar>
#include <QToolButton>
#include <functional>
#include <vector>

#include "catalogue/MessageCatalogue.h"
#include "windows/forms/Commands.h"

namespace kelvora {

class MainToolbar final : public QToolBar {
public:
    /// Both outlive the toolbar.
    MainToolbar(Commands& commands, const MessageCatalogue& catalogue, QWidget* parent);

    /// Asked before the drop-down of DUMP changes the button's action: only with a setup window in front.
    std::function<bool()> mayChooseDump;

    /// Sets all texts anew from the catalogue.
    void Retranslate();

    /// The action that a click on DUMP runs: the key DUMPSETUP or DUMPUPLOAD.
    QString DumpTag() const { return dump_->property("Tag").toString(); }

private:
    struct Button {
        QToolButton* button;
        MessageId caption;
        MessageId tip;
    };

    void AddButton(Commands& commands, const char* key, Command command, const MessageId& caption,
                   const MessageId& tip);
    void AddDump(Commands& commands);
    void ChooseDump(const QString& key);

    const MessageCatalogue& catalogue_;
    std::vector<Button> buttons_;
    QToolButton* dump_ = nullptr;
    QAction* dumpSetup_ = nullptr;
    QAction* dumpUpload_ = nullptr;
};

}  // namespace kelvora
