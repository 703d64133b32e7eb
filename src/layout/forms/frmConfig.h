// The child window of one setup: the module strip and the commands on it. The rules are the session's.
#pragma once

#include <QUndoStack>
#include <QWidget>
#include <optional>

#include "layout/CommandRules.h"
#include "layout/SetupSession.h"
#include "layout/forms/FlashForms.h"
#include "layout/forms/SheetForms.h"
#include "picture/ModuleStrip.h"

namespace kelvora {

class StripView;

class frmConfig final : public QWidget {
    Q_OBJECT

public:
    /// `desk` outlives the window.
    frmConfig(SetupDesk& desk, SetupMode mode, QWidget* parent = nullptr);
    ~frmConfig() override;

    /// Fills the window as its setup mode says: with `opened` in mode Open, else anew.
    void Form_Load(std::optional<OpenedSetup> opened = std::nullopt);

    void FileMenuSave_Click();
    void FileMenuSaveAs_Click();

    /// Adds a module, at once while the chain is short, else by placing it.
    void LayoutMenuAdd_Click(ModuleKind kind);
    /// Deletes, or picks up to place it again, the focused module.
    void LayoutMenuDel_Click();
    void LayoutMenuMove_Click();

    /// Opens the options of the focused module.
    void EditOptions();

    /// Puts the focused module on the clipboard; takes the keys and options of the one there into the
    /// setup's module of its kind.
    void CopyFocusedModule();
    void PasteIntoModule();

    void SelectPort(std::int16_t port);

    /// The window has come to the front: one that waits for its scan is then scanned, as soon as it is shown.
    void Form_Activate();

    /// Fills the window from its line anew.
    void ToolsMenuRescanLine_Click();

    /// Begins the fresh window with this setup, which counts as unchanged.
    void BeginWith(SetupDocument document);

    /// Fills the fresh window with what a backup holds, under that name.
    void TakeBackup(const std::string& name, SetupDocument document);

    /// Changes the fresh window's setup to one that was left unsaved.
    void TakeUnsaved(SetupDocument document);

    /// The flash commands.
    FlashForms& Flash() { return flash_; }

    /// Print, preview and export.
    SheetForms& Sheet() { return sheet_; }

    bool IsPlacing() const { return placing_; }

    /// Whether the window may close; asks about unsaved changes.
    bool MayClose();

    /// The next close event passes without a question: the main window has asked already.
    void CloseUnasked() { mayCloseUnasked_ = true; }

    bool IsChanged() const { return !undoStack_->isClean(); }

    /// What would be lost with the window: the changed setup, with what an open key form makes of it.
    std::optional<SetupDocument> Unsaved() const;

    SetupSession& Session() { return session_; }
    const SetupSession& Session() const { return session_; }
    QUndoStack& UndoStack() { return *undoStack_; }
    StripView& Strip() { return *strip_; }
    /// What the commands may do with this window in front; `canScan` when the devices can be talked to.
    CommandState State(bool canScan) const;

    /// What the next undo and redo are about; nothing where there is none.
    std::optional<MessageId> UndoName() const { return NameOf(undoStack_->index() - 1); }
    std::optional<MessageId> RedoName() const { return NameOf(undoStack_->index()); }

    /// Gives the strip the keyboard focus, on the button that had it last.
    void FocusStrip();

    /// Sets all texts anew from the catalogue.
    void Retranslate();

signals:
    /// What the menus, the toolbar or the title depend on has changed.
    void changed();

    /// What Unsaved gives may have changed.
    void edited();

    /// The window's file or folders may have changed.
    void fileChanged();

    /// The Esc key.
    void interruptRequested();

    /// Why a command, or the wish to close the window, does nothing; `what` it is about.
    void hinted(const MessageId& hint, const QString& what = {});

    /// The menu of the module that has the focus is wanted at a place.
    void moduleMenuRequested(const QPoint& globalPosition);

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    class DocumentChange;

    void ConnectStrip();
    void cbModule_Click(StripButton button);
    void EditOptionsOf(ModuleKind kind);
    void StartPlacing(ModuleKind kind, const MessageId& undoName);
    void AfterSaving(bool saved);
    void EditKeyMap(ModuleKind kind);
    void Push(const MessageId& name, SetupDocument after,
              std::optional<WindowFile> fileBefore = std::nullopt);
    std::optional<MessageId> NameOf(int step) const;
    void ShowSession();
    void ShowTitle();

    // In frmConfigScan.cpp.
    void Scan();
    void TellOfScan(const ScanOutcome& outcome, bool canUndo);
    void TakeScan(const std::optional<WindowFile>& before, SetupDocument scanned);

    StripView* strip_;
    SetupSession session_;
    FlashForms flash_;
    SheetForms sheet_;
    QUndoStack* undoStack_;
    bool mayCloseUnasked_ = false;
    bool placing_ = false;
    std::optional<SetupDocument> keysDraft_;  ///< the setup as an open key form would leave it
    std::optional<WindowFile> beforeRescan_;
};

}  // namespace kelvora
