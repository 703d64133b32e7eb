// The wizard in the program: one line, one user.
#include <QLabel>
#include <QTableView>

#include "comms/forms/LineMonitorWindow.h"
#include "eeprom/forms/frmEeprom.h"
#include "forms/MainWindowFixture.h"

namespace kelvora {
namespace {

class WizardWindow : public MainWindowFixture {
protected:
    WizardWindow() : MainWindowFixture(true)
    {
        Start();
        Trigger(Command::FileMenuNew);
    }
};

TEST_F(WizardWindow, HoldsTheLineAndIsNamedInTheStatusBar)
{
    Trigger(Command::ViewMenuLineMonitor);
    InDialog<frmEeprom>(
        [&] { Trigger(Command::EpromWizard); },
        [&](frmEeprom& wizard) {
            EXPECT_FALSE(program.operation.IsBusy());
            Press(wizard, "NextCommand");
            Press(wizard, "NextCommand");
            EXPECT_TRUE(program.operation.IsBusy());
            for (const Command command :
                 {Command::FileMenuScan, Command::ToolsMenuRescanLine, Command::ToolsMenuFlashDownload})
                EXPECT_FALSE(IsEnabled(command));
            EXPECT_EQ(window->Status().findChild<QLabel*>("StatusPanel")->text(), "EEPROM wizard on COM1");
            EXPECT_FALSE(program.lines.Links()[0]->Open("9600,n,8,1"));
            EXPECT_EQ(program.lines.Links()[0]->Failure(), PortFailure::InUse);
            Press(wizard, "CancelCommand");
        });
    EXPECT_FALSE(program.operation.IsBusy() || port.IsOpen());
    EXPECT_TRUE(IsEnabled(Command::ToolsMenuRescanLine));
    QStringList meanings;
    loop.Pass(std::chrono::seconds(1));
    const auto* const model = Opened<LineMonitorWindow>()->findChild<QTableView*>("Entries")->model();
    for (int row = 0; row < model->rowCount(); ++row)
        meanings << model->index(row, LineMonitorModel::Meaning).data().toString();
    EXPECT_TRUE(meanings.contains("identify address 0") && meanings.contains("acknowledged"))
        << meanings.join('\n').toStdString();
}

}  // namespace
}  // namespace kelvora
