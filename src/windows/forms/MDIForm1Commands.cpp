// The commands of the main window: what each of them does, as a list.
#include <QApplication>
#include <QFileInfo>

#include "layout/forms/frmConfig.h"
#include "platform/qt/Announcement.h"
#include "platform/qt/ProgramStyle.h"
#include "platform/qt/Text.h"
#include "windows/forms/MDIForm1.h"

namespace kelvora {

void MDIForm1::ConnectFileCommands()
{
    On(Command::FileMenuNew, [this] { setups_.New(SetupMode::New); });
    On(Command::FileMenuNewFromTemplate, [this] { templates_.New(); });
    On(Command::FileMenuOpen, [this] { setups_.Open(); });
    On(Command::FileMenuScan, [this] { setups_.New(SetupMode::Scan); });
    OnSetup(Command::FileMenuSave, [](frmConfig& setup) { setup.FileMenuSave_Click(); });
    OnSetup(Command::FileMenuSaveAs, [](frmConfig& setup) { setup.FileMenuSaveAs_Click(); });
    OnSetup(Command::FileMenuSaveAsTemplate, [this](const frmConfig& setup) {
        const SetupSession& session = setup.Session();
        const std::string& path = session.File().path;
        const std::string name = PathFromQString(
            QFileInfo(PathToQString(path.empty() ? session.settings.Name : path)).completeBaseName());
        if (templates_.Save(session.document, name))
            ShowHint(Message::TemplateKept);
    });
    const auto sheet = [this](Command command, void (SheetForms::*click)()) {
        OnSetup(command, [click](frmConfig& setup) { (setup.Sheet().*click)(); });
    };
    sheet(Command::FileMenuPrint, &SheetForms::Print);
    sheet(Command::FileMenuPrintPreview, &SheetForms::Preview);
    sheet(Command::FileMenuExport, &SheetForms::Export);
    On(Command::FileMenuClose, [this] { area_->closeActiveSubWindow(); });
    On(Command::FileMenuExit, [this] { close(); });
    const auto steps = [this](Command command, void (QUndoGroup::*step)()) {
        On(command, [this, command, step] {
            Announce(*this, commands_[command].text().remove('&'));
            (undoGroup_.*step)();
        });
    };
    steps(Command::EditMenuUndo, &QUndoGroup::undo);
    steps(Command::EditMenuRedo, &QUndoGroup::redo);
}

void MDIForm1::ConnectLayoutCommands()
{
    const auto adds = [this](Command command, ModuleKind kind) {
        OnSetup(command, [kind](frmConfig& setup) { setup.LayoutMenuAdd_Click(kind); });
    };
    adds(Command::LayoutMenuAddKBMASTER, ModuleKind::KM096);
    adds(Command::LayoutMenuAddKB64, ModuleKind::KM064);
    adds(Command::LayoutMenuAddMCR, ModuleKind::MCR);
    adds(Command::LayoutMenuAddICCR, ModuleKind::ICCR);
    OnSetup(Command::EditMenuCopy, [](frmConfig& setup) { setup.CopyFocusedModule(); });
    OnSetup(Command::EditMenuPaste, [](frmConfig& setup) { setup.PasteIntoModule(); });
    OnSetup(Command::LayoutMenuDel, [](frmConfig& setup) { setup.LayoutMenuDel_Click(); });
    OnSetup(Command::LayoutMenuMove, [](frmConfig& setup) { setup.LayoutMenuMove_Click(); });
    OnSetup(Command::LayoutMenuOptions, [](frmConfig& setup) { setup.EditOptions(); });
}

void MDIForm1::ConnectLineCommands()
{
    const auto showBusy = [this] {
        // A line must not wait for the disk later.
        recovery_.KeepNow();
        lines_.ShowBusy();
        Refresh();
    };
    connect(&operation_, &OperationView::changed, this, showBusy);
    connect(&lines_, &LineForms::busyChanged, this, showBusy);
    connect(&lines_, &LineForms::portSettingsChanged, this, [this] {
        memory_.SaveLine(program_.main);
        Refresh();
    });
    OnSetup(Command::CommunicationsMenuSettings,
            [this](frmConfig& setup) { lines_.ShowPortSettings(setup.Session().settings); });
    OnSetup(Command::EpromWizard, [this](frmConfig& setup) { lines_.ShowWizard(setup.Session().settings); });
    On(Command::ToolsMenuSeries, [this] { series_.Show(); });
    On(Command::ToolsMenuJournal, [this] { journal_.Show(); });
    commands_[Command::ToolsMenuJournal].setVisible(program_.notes.Journal() != nullptr);
    On(Command::CommunicationsMenuPorts, [this] { lines_.ShowPorts(); });
    On(Command::CommunicationsMenuPractice, [this](bool isWanted) {
        if (!series_.IsRunning()) {
            emit practiceChosen(isWanted);
            return;
        }
        Refresh();
        ShowHint(Message::SeriesKeepsLines);
    });
    On(Command::ViewMenuLineMonitor, [this] { lines_.ShowMonitor(); });
    commands_[Command::CommunicationsMenuPorts].setVisible(lines_.HasPorts());
    OnSetup(Command::ToolsMenuRescanLine, [](frmConfig& setup) { setup.ToolsMenuRescanLine_Click(); });
}

void MDIForm1::ConnectFlashCommands()
{
    const auto flash = [this](Command command, void (FlashForms::*click)()) {
        OnSetup(command, [click](frmConfig& setup) { (setup.Flash().*click)(); });
    };
    flash(Command::ToolsMenuFlashDownload, &FlashForms::ToolsMenuFlashDownload_Click);
    flash(Command::ToolsMenuFlashVerify, &FlashForms::ToolsMenuFlashVerify_Click);
    flash(Command::ToolsMenuFlashDumpSetup, &FlashForms::ToolsMenuFlashDumpSetup_Click);
    flash(Command::ToolsMenuFlashDumpUpload, &FlashForms::ToolsMenuFlashDumpUpload_Click);
    flash(Command::ToolsMenuFlashRestore, &FlashForms::RestoreDump);
    flash(Command::ToolsMenuFlashBackups, &FlashForms::ShowBackups);
}

void MDIForm1::ConnectGeneralCommands()
{
    for (std::size_t i = 0; i < CommandCount; ++i)
        addAction(&commands_[static_cast<Command>(i)]);
    connect(&commands_[Command::ViewMenuToolbar], &QAction::toggled, toolbar_, &QWidget::setVisible);
    connect(&commands_[Command::ViewMenuStatusBar], &QAction::toggled, status_, &StatusPanels::Want);
    On(Command::WindowMenuCascade, [this] { area_->cascadeSubWindows(); });
    On(Command::WindowMenuTile, [this] { area_->tileSubWindows(); });
    On(Command::WindowMenuNext, [this] { area_->activateNextSubWindow(); });
    On(Command::WindowMenuPrevious, [this] { area_->activatePreviousSubWindow(); });
    On(Command::WindowMenuCloseAll, [this] {
        if (setups_.MayCloseAll())
            setups_.CloseAllUnasked();
    });
    On(Command::HelpMenuGuide, [this] { help_.Show(); });
    On(Command::HelpMenuAbout, [this] { ShowAbout(); });
    commands_[Command::ViewMenuTouchSize].setChecked(memory_.IsTouchSize());
    connect(&commands_[Command::ViewMenuTouchSize], &QAction::toggled, this, [this](bool forTouch) {
        QApplication::setStyle(new ProgramStyle(forTouch));
        memory_.SaveTouchSize(forTouch);
    });
    commands_[Command::ViewMenuToolbar].setChecked(toolbar_->isVisibleTo(this));
    commands_[Command::ViewMenuStatusBar].setChecked(status_->isVisibleTo(this));
}

}  // namespace kelvora
