// Every command of the menus and the toolbar, as one table: its menu entry's name, caption, shortcut and
// icon.
#pragma once

#include <QAction>
#include <array>
#include <cstddef>
#include <optional>

#include "catalogue/MessageCatalogue.h"
#include "layout/CommandRules.h"

namespace kelvora {

enum class Command {
    FileMenuNew,
    FileMenuNewFromTemplate,
    FileMenuOpen,
    FileMenuSave,
    FileMenuSaveAs,
    FileMenuSaveAsTemplate,
    FileMenuClose,
    FileMenuPrint,
    FileMenuPrintPreview,
    FileMenuExport,
    FileMenuScan,
    FileMenuExit,
    EditMenuUndo,
    EditMenuRedo,
    EditMenuCopy,
    EditMenuPaste,
    LayoutMenuAddKBMASTER,
    LayoutMenuAddKB64,
    LayoutMenuAddMCR,
    LayoutMenuAddICCR,
    LayoutMenuDel,
    LayoutMenuMove,
    LayoutMenuOptions,
    CommunicationsMenuPosConnection,
    CommunicationsMenuKeybConnection,
    CommunicationsMenuSettings,
    CommunicationsMenuPorts,
    CommunicationsMenuPractice,
    ToolsMenuRescanLine,
    ToolsMenuFlashDownload,
    ToolsMenuFlashVerify,
    ToolsMenuFlashDumpSetup,
    ToolsMenuFlashDumpUpload,
    ToolsMenuFlashRestore,
    ToolsMenuFlashBackups,
    EpromWizard,
    ToolsMenuSeries,
    ToolsMenuJournal,
    ViewMenuToolbar,
    ViewMenuStatusBar,
    ViewMenuTouchSize,
    ViewMenuLineMonitor,
    WindowMenuCascade,
    WindowMenuTile,
    WindowMenuNext,
    WindowMenuPrevious,
    WindowMenuCloseAll,
    HelpMenuGuide,
    HelpMenuAbout,
};

inline constexpr std::size_t CommandCount = static_cast<std::size_t>(Command::HelpMenuAbout) + 1;

/// The actions of one main window.
class Commands {
public:
    /// The actions belong to `parent`, named after their menu entries.
    explicit Commands(QObject* parent);

    QAction& operator[](Command command) const { return *actions_[static_cast<std::size_t>(command)]; }

    /// Sets all captions from the catalogue.
    void Retranslate(const MessageCatalogue& catalogue);

    /// Says in the Edit menu what would be undone and redone; nothing for the bare captions.
    void NameUndo(const MessageCatalogue& catalogue, const std::optional<MessageId>& undo,
                  const std::optional<MessageId>& redo);

    /// Enables what the rules allow.
    void Apply(const CommandState& state);

private:
    std::array<QAction*, CommandCount> actions_{};
};

}  // namespace kelvora
