#include "windows/forms/Commands.h"

#include <QKeySequence>

#include "platform/qt/Text.h"
#include "windows/forms/Icons.h"

namespace kelvora {

namespace {

struct CommandRow {
    Command command;
    const char* name;
    MessageId caption;
    const char* shortcut;
    const char* icon;
};

constexpr std::array<CommandRow, CommandCount> Rows{{
    {Command::FileMenuNew, "FileMenuNew", Message::FileMenuNew, "Ctrl+N", "file-new"},
    {Command::FileMenuNewFromTemplate, "FileMenuNewFromTemplate", Message::NewFromTemplateMenu,
     "Ctrl+Shift+N", "template"},
    {Command::FileMenuOpen, "FileMenuOpen", Message::FileMenuOpen, "Ctrl+O", "file-open"},
    {Command::FileMenuSave, "FileMenuSave", Message::FileMenuSave, "Ctrl+S", "file-save"},
    {Command::FileMenuSaveAs, "FileMenuSaveAs", Message::FileMenuSaveAs, "Ctrl+Shift+S", "file-save-as"},
    {Command::FileMenuSaveAsTemplate, "FileMenuSaveAsTemplate", Message::SaveAsTemplateMenu, "", ""},
    {Command::FileMenuClose, "FileMenuClose", Message::FileMenuClose, "Ctrl+W", ""},
    {Command::FileMenuPrint, "FileMenuPrint", Message::PrintMenu, "Ctrl+P", ""},
    {Command::FileMenuPrintPreview, "FileMenuPrintPreview", Message::PrintPreviewMenu, "", ""},
    {Command::FileMenuExport, "FileMenuExport", Message::ExportMenu, "", ""},
    {Command::FileMenuScan, "FileMenuScan", Message::FileMenuScan, "Ctrl+L", "file-scan"},
    {Command::FileMenuExit, "FileMenuExit", Message::FileMenuExit, "Ctrl+Q", ""},
    {Command::EditMenuUndo, "EditMenuUndo", Message::EditMenuUndo, "Ctrl+Z", "undo"},
    {Command::EditMenuRedo, "EditMenuRedo", Message::EditMenuRedo, "Ctrl+Shift+Z", "redo"},
    {Command::EditMenuCopy, "EditMenuCopy", Message::CopyMenu, "Ctrl+C", ""},
    {Command::EditMenuPaste, "EditMenuPaste", Message::PasteMenu, "Ctrl+V", ""},
    {Command::LayoutMenuAddKBMASTER, "LayoutMenuAddKBMASTER", Message::LayoutMenuAddKBMASTER, "Ctrl+1",
     "kb-master"},
    {Command::LayoutMenuAddKB64, "LayoutMenuAddKB64", Message::LayoutMenuAddKB64, "Ctrl+2", "kb64"},
    {Command::LayoutMenuAddMCR, "LayoutMenuAddMCR", Message::LayoutMenuAddMCR, "Ctrl+3", "mcr"},
    {Command::LayoutMenuAddICCR, "LayoutMenuAddICCR", Message::LayoutMenuAddICCR, "Ctrl+4", "iccr"},
    {Command::LayoutMenuDel, "LayoutMenuDel", Message::LayoutMenuDel, "Del", ""},
    {Command::LayoutMenuMove, "LayoutMenuMove", Message::LayoutMenuMove, "Ctrl+M", ""},
    {Command::LayoutMenuOptions, "LayoutMenuOptions", Message::OptionsMenu, "Alt+Return", ""},
    {Command::CommunicationsMenuPosConnection, "CommunicationsMenuPosConnection",
     Message::CommunicationsMenuPosConnection, "", ""},
    {Command::CommunicationsMenuKeybConnection, "CommunicationsMenuKeybConnection",
     Message::CommunicationsMenuKeybConnection, "", ""},
    {Command::CommunicationsMenuSettings, "CommunicationsMenuSettings", Message::CommunicationsMenuSettings,
     "", ""},
    {Command::CommunicationsMenuPorts, "CommunicationsMenuPorts", Message::SerialPortsMenu, "", ""},
    {Command::CommunicationsMenuPractice, "CommunicationsMenuPractice", Message::PracticeMenu, "",
     "practice"},
    {Command::ToolsMenuRescanLine, "ToolsMenuRescanLine", Message::ToolsMenuRescanLine, "F5", "rescan"},
    {Command::ToolsMenuFlashDownload, "ToolsMenuFlashDownload", Message::ToolsMenuFlashDownload, "",
     "download"},
    {Command::ToolsMenuFlashVerify, "ToolsMenuFlashVerify", Message::ToolsMenuFlashVerify, "", "verify"},
    {Command::ToolsMenuFlashDumpSetup, "ToolsMenuFlashDumpSetup", Message::ToolsMenuFlashDumpSetup, "",
     "dump"},
    {Command::ToolsMenuFlashDumpUpload, "ToolsMenuFlashDumpUpload", Message::ToolsMenuFlashDumpUpload, "",
     "dump"},
    {Command::ToolsMenuFlashRestore, "ToolsMenuFlashRestore", Message::RestoreMenu, "", ""},
    {Command::ToolsMenuFlashBackups, "ToolsMenuFlashBackups", Message::BackupsMenu, "", ""},
    {Command::EpromWizard, "EpromWizard", Message::EepromWizard, "", ""},
    {Command::ToolsMenuSeries, "ToolsMenuSeries", Message::SeriesMenu, "Ctrl+Shift+T", "series"},
    {Command::ToolsMenuJournal, "ToolsMenuJournal", Message::JournalMenu, "Ctrl+J", ""},
    {Command::ViewMenuToolbar, "ViewMenuToolbar", Message::ViewMenuToolbar, "", ""},
    {Command::ViewMenuStatusBar, "ViewMenuStatusBar", Message::ViewMenuStatusBar, "", ""},
    {Command::ViewMenuTouchSize, "ViewMenuTouchSize", Message::TouchSizeMenu, "", ""},
    {Command::ViewMenuLineMonitor, "ViewMenuLineMonitor", Message::LineMonitorMenu, "Ctrl+Shift+L", ""},
    {Command::WindowMenuCascade, "WindowMenuCascade", Message::WindowMenuCascade, "", ""},
    {Command::WindowMenuTile, "WindowMenuTile", Message::WindowMenuTile, "", ""},
    {Command::WindowMenuNext, "WindowMenuNext", Message::WindowMenuNext, "Ctrl+Tab", ""},
    {Command::WindowMenuPrevious, "WindowMenuPrevious", Message::WindowMenuPrevious, "Ctrl+Shift+Tab", ""},
    {Command::WindowMenuCloseAll, "WindowMenuCloseAll", Message::WindowMenuCloseAll, "", ""},
    {Command::HelpMenuGuide, "HelpMenuGuide", Message::HelpMenuGuide, "F1", "help"},
    {Command::HelpMenuAbout, "HelpMenuAbout", Message::HelpMenuAbout, "", ""},
}};

}  // namespace

Commands::Commands(QObject* parent)
{
    for (const CommandRow& row : Rows) {
        auto* action = new QAction(parent);
        action->setObjectName(QString::fromLatin1(row.name));
        if (*row.shortcut)
            action->setShortcut(QKeySequence(QString::fromLatin1(row.shortcut)));
        if (*row.icon)
            action->setIcon(ThemedIcon(QString::fromLatin1(row.icon)));
        actions_.at(static_cast<std::size_t>(row.command)) = action;
    }
    (*this)[Command::FileMenuExit].setMenuRole(QAction::QuitRole);
    for (const Command command :
         {Command::CommunicationsMenuPosConnection, Command::CommunicationsMenuKeybConnection,
          Command::CommunicationsMenuPractice, Command::ViewMenuToolbar, Command::ViewMenuStatusBar,
          Command::ViewMenuTouchSize})
        (*this)[command].setCheckable(true);
}

void Commands::Retranslate(const MessageCatalogue& catalogue)
{
    for (const CommandRow& row : Rows)
        (*this)[row.command].setText(ToQString(catalogue.Caption(row.caption)));
}

void Commands::NameUndo(const MessageCatalogue& catalogue, const std::optional<MessageId>& undo,
                        const std::optional<MessageId>& redo)
{
    const auto name = [&](Command command, const MessageId& caption, const std::optional<MessageId>& what) {
        std::string text = catalogue.Caption(caption);
        if (what)
            text.append(1, ' ').append(catalogue.Caption(*what));
        (*this)[command].setText(ToQString(text));
    };
    name(Command::EditMenuUndo, Message::EditMenuUndo, undo);
    name(Command::EditMenuRedo, Message::EditMenuRedo, redo);
}

void Commands::Apply(const CommandState& state)
{
    const std::array enabled{
        std::pair{Command::FileMenuNew, state.program},
        std::pair{Command::FileMenuNewFromTemplate, state.program},
        std::pair{Command::FileMenuOpen, state.program},
        std::pair{Command::FileMenuScan, state.scan},
        std::pair{Command::FileMenuSave, state.setup},
        std::pair{Command::FileMenuSaveAs, state.setup},
        std::pair{Command::FileMenuSaveAsTemplate, state.setup},
        std::pair{Command::FileMenuClose, state.setup},
        std::pair{Command::FileMenuPrint, state.setup},
        std::pair{Command::FileMenuPrintPreview, state.setup},
        std::pair{Command::FileMenuExport, state.setup},
        std::pair{Command::EditMenuUndo, state.undo},
        std::pair{Command::EditMenuRedo, state.redo},
        std::pair{Command::EditMenuCopy, state.copy},
        std::pair{Command::EditMenuPaste, state.setup},
        std::pair{Command::LayoutMenuAddKBMASTER, state.layout.addMaster},
        std::pair{Command::LayoutMenuAddKB64, state.layout.addKB64},
        std::pair{Command::LayoutMenuAddMCR, state.layout.addMCR},
        std::pair{Command::LayoutMenuAddICCR, state.layout.addICCR},
        std::pair{Command::LayoutMenuDel, state.layout.del},
        std::pair{Command::LayoutMenuMove, state.layout.move},
        std::pair{Command::LayoutMenuOptions, state.options},
        std::pair{Command::CommunicationsMenuSettings, state.setup},
        std::pair{Command::CommunicationsMenuPorts, state.program},
        std::pair{Command::CommunicationsMenuPractice, state.program},
        std::pair{Command::ToolsMenuRescanLine, state.line},
        std::pair{Command::ToolsMenuFlashDownload, state.line},
        std::pair{Command::ToolsMenuFlashVerify, state.line},
        std::pair{Command::ToolsMenuFlashDumpSetup, state.line},
        std::pair{Command::ToolsMenuFlashDumpUpload, state.line},
        std::pair{Command::ToolsMenuFlashRestore, state.line},
        std::pair{Command::ToolsMenuFlashBackups, state.setup},
        std::pair{Command::EpromWizard, state.line},
        std::pair{Command::ToolsMenuSeries, state.program},
        std::pair{Command::HelpMenuAbout, state.program},
        std::pair{Command::WindowMenuCascade, state.setup},
        std::pair{Command::WindowMenuTile, state.setup},
        std::pair{Command::WindowMenuNext, state.setup},
        std::pair{Command::WindowMenuPrevious, state.setup},
        std::pair{Command::WindowMenuCloseAll, state.setup},
    };
    for (const auto& [command, on] : enabled)
        (*this)[command].setEnabled(on);
}

}  // namespace kelvora
