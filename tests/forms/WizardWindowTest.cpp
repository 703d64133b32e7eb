// The wizard in the program: one line, one user.
#include "comms/forms/LineMonitorWindow.h"
#include "eeprom/forms/frmEeprom.h"
#include "forms/MainWindowFixture.h"

namespace kelvora {

class WizardWindow : public MainWindowFixture {
protected:
    WizardWindow() : MainWindowFixture(true) {}
};

TEST_F(WizardWindow, HoldsTheLineAndIsNamedInTheStatusBar)
{
    Start();
    Trigger(Command::FileMenuNew);
    Trigger(Command::ViewMenuLineMonitor);
    InDialog<frmEeprom>(Command::EpromWizard, [&](frmEeprom& wizard) {
        EXPECT_FALSE(program.operation.IsBusy());
        Press(wizard, "NextCommand");
        Press(wizard, "NextCommand");
        EXPECT_TRUE(program.operation.IsBusy());
        for (const Command command :
             {Command::FileMenuScan, Command::ToolsMenuRescanLine, Command::ToolsMenuFlashDownload})
            EXPECT_FALSE(IsEnabled(command));
        EXPECT_EQ(Says(window->Status(), "StatusPanel"), "EEPROM wizard on COM1");
        EXPECT_FALSE(program.lines.Links()[0]->Open("9600,n,8,1"));
        EXPECT_EQ(program.lines.Links()[0]->Failure(), PortFailure::InUse);
        Press(wizard, "CancelCommand");
    });
    EXPECT_FALSE(program.operation.IsBusy() || port.IsOpen());
    EXPECT_TRUE(IsEnabled(Command::ToolsMenuRescanLine));
    loop.Pass(std::chrono::seconds(1));
    const auto& entries = *Find<QTableView>(*Opened<LineMonitorWindow>(), "Entries").model();
    const QModelIndex first = entries.index(0, LineMonitorModel::Meaning);
    for (const char* const meaning : {"identify address 0", "acknowledged"})
        EXPECT_FALSE(entries.match(first, Qt::DisplayRole, meaning).isEmpty()) << meaning;
}

}  // namespace kelvora
