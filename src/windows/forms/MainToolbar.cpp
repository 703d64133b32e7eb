#include "windows/forms/MainToolbar.h"

#include <QMenu>

#include "platform/qt/Text.h"
#include "windows/forms/Icons.h"

namespace kelvora {

namespace {

constexpr int ToolbarIconSide = 24;

constexpr QLatin1StringView DumpSetupKey("DUMPSETUP");
constexpr QLatin1StringView DumpUploadKey("DUMPUPLOAD");

}  // namespace

MainToolbar::MainToolbar(Commands& commands, const MessageCatalogue& catalogue, QWidget* parent)
    : QToolBar(parent), catalogue_(catalogue)
{
    setObjectName(QStringLiteral("MainToolbar"));
    setIconSize({ToolbarIconSide, ToolbarIconSide});
    setMovable(false);
    AddButton(commands, "FILENEW", Command::FileMenuNew, Message::ToolNew, Message::ToolNewTip);
    AddButton(commands, "FILEOPEN", Command::FileMenuOpen, Message::ToolOpen, Message::ToolOpenTip);
    AddButton(commands, "FILESAVE", Command::FileMenuSave, Message::ToolSave, Message::ToolSaveTip);
    AddButton(commands, "FILESAVEAS", Command::FileMenuSaveAs, Message::ToolSaveAs, Message::ToolSaveAsTip);
    addSeparator();
    AddButton(commands, "KBMASTER", Command::LayoutMenuAddKBMASTER, Message::ToolMaster,
              Message::ToolMasterTip);
    AddButton(commands, "KB64", Command::LayoutMenuAddKB64, Message::ToolKB64, Message::ToolKB64Tip);
    AddButton(commands, "MCR", Command::LayoutMenuAddMCR, Message::ToolMCR, Message::ToolMCRTip);
    AddButton(commands, "ICCR", Command::LayoutMenuAddICCR, Message::ToolICCR, Message::ToolICCRTip);
    addSeparator();
    AddButton(commands, "FILESCAN", Command::FileMenuScan, Message::ToolScan, Message::ToolScanTip);
    AddButton(commands, "RESCAN", Command::ToolsMenuRescanLine, Message::ToolRescan, Message::ToolRescanTip);
    AddButton(commands, "DOWNLOAD", Command::ToolsMenuFlashDownload, Message::ToolDownload,
              Message::ToolDownloadTip);
    AddButton(commands, "VERIFY", Command::ToolsMenuFlashVerify, Message::ToolVerify, Message::ToolVerifyTip);
    AddDump(commands);
}

void MainToolbar::AddButton(Commands& commands, const char* key, Command command, const MessageId& caption,
                            const MessageId& tip)
{
    QAction& action = commands[command];
    auto* button = new QToolButton(this);
    button->setObjectName(QString::fromLatin1(key));
    button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    button->setAutoRaise(true);
    button->setIcon(action.icon());
    button->setEnabled(action.isEnabled());
    // The caption is the toolbar's own, shorter than the menu's: the button follows the action instead of
    // being its default button.
    connect(button, &QToolButton::clicked, &action, &QAction::trigger);
    connect(&action, &QAction::enabledChanged, button, &QToolButton::setEnabled);
    addWidget(button);
    buttons_.push_back({button, caption, tip});
}

void MainToolbar::AddDump(Commands& commands)
{
    auto* menu = new QMenu(this);
    dumpSetup_ = menu->addAction(QString());
    dumpUpload_ = menu->addAction(QString());
    dump_ = new QToolButton(this);
    dump_->setObjectName(QStringLiteral("DUMP"));
    dump_->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    dump_->setPopupMode(QToolButton::MenuButtonPopup);
    dump_->setAutoRaise(true);
    dump_->setMenu(menu);
    dump_->setIcon(ThemedIcon(QStringLiteral("dump")));
    QAction& setup = commands[Command::ToolsMenuFlashDumpSetup];
    QAction& upload = commands[Command::ToolsMenuFlashDumpUpload];
    dump_->setEnabled(setup.isEnabled());
    connect(&setup, &QAction::enabledChanged, dump_, &QToolButton::setEnabled);
    connect(dump_, &QToolButton::clicked, this,
            [this, &setup, &upload] { (DumpTag() == DumpUploadKey ? upload : setup).trigger(); });
    connect(dumpSetup_, &QAction::triggered, this, [this] { ChooseDump(DumpSetupKey); });
    connect(dumpUpload_, &QAction::triggered, this, [this] { ChooseDump(DumpUploadKey); });
    addWidget(dump_);
}

void MainToolbar::ChooseDump(const QString& key)
{
    if (mayChooseDump && !mayChooseDump())
        return;
    dump_->setProperty("Tag", key);
    Retranslate();
}

void MainToolbar::Retranslate()
{
    setWindowTitle(ToQString(catalogue_.Caption(Message::ToolbarTitle)));
    for (const Button& row : buttons_) {
        row.button->setText(ToQString(catalogue_.Caption(row.caption)));
        row.button->setToolTip(ToQString(catalogue_.Caption(row.tip)));
    }
    dumpSetup_->setText(ToQString(catalogue_.Caption(Message::ToolDumpSetup)));
    dumpUpload_->setText(ToQString(catalogue_.Caption(Message::ToolDumpUpload)));
    // Until one of them is chosen the button bears the name of the whole.
    const QString tag = DumpTag();
    dump_->setText(ToQString(catalogue_.Caption(tag.isEmpty()         ? Message::ToolDump
                                                : tag == DumpSetupKey ? Message::ToolDumpSetup
                                                                      : Message::ToolDumpUpload)));
    dump_->setToolTip(ToQString(catalogue_.Caption(tag.isEmpty()         ? Message::ToolDumpTip
                                                   : tag == DumpSetupKey ? Message::ToolDumpSetupTip
                                                                         : Message::ToolDumpUploadTip)));
}

}  // namespace kelvora
