// The wizard that gives the modules of a line their identities, page by page: who may do this, how the cables
// go, the search, the table. It works over a serial port of its own; the rules are those of eeprom/.
#pragma once

#include <QDialog>
#include <QPointer>
#include <functional>
#include <span>
#include <string>

#include "catalogue/UserFiles.h"
#include "comms/RunningOperation.h"
#include "eeprom/IdentityCopy.h"
#include "eeprom/IdentityWrite.h"
#include "eeprom/ModuleMemory.h"
#include "eeprom/ModuleProtocol.h"
#include "journal/OperationNotes.h"
#include "platform/EventLoop.h"
#include "platform/SerialPort.h"
#include "setup/PosCfg.h"

class QLabel;
class QPushButton;
class QStackedWidget;

namespace kelvora {

class IdentityRows;
class SavedCopy;
class SearchPage;
class WizardStatus;
class frmAbort;

/// What the wizard works with; all of it outlives the wizard.
struct WizardDesk {
    const UserFiles& files;
    RunningOperation& operation;
    OperationNotes& notes;
    EventLoop& eventLoop;
};

class frmEeprom final : public QDialog {
    Q_OBJECT

public:
    /// `settings` names the line, `port` is its serial port, closed and nobody else's while the wizard is
    /// there. Copies of what is overwritten go to `dataFolder`, which is made when there is none.
    frmEeprom(const WizardDesk& desk, PosCfg settings, SerialPort& port, std::string dataFolder,
              QWidget* parent = nullptr);
    ~frmEeprom() override;

    /// Says in the user's language why the port does not open, or why it was lost; the system's own words
    /// while it is empty.
    std::function<std::string(const SerialPort&, PortFailure)> describeFailure;

    /// Told of all that passes over the line.
    void Watch(TrafficWatcher watcher) { protocol_.watcher = std::move(watcher); }

    /// Shows a page, 0 to 3, and does what belongs to it; nothing while a page's work is under way.
    void EepromWizard(int step);

    /// Whether a page's work is under way: the wizard does not close then.
    bool IsWorking() const { return working_; }

signals:
    /// The program has become busy, the wizard's port being open, or is no longer.
    void busyChanged();

protected:
    void done(int result) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    // While it lives nothing else of the wizard can be started.
    class Work {
    public:
        explicit Work(frmEeprom& form);
        ~Work();
        Work(const Work&) = delete;
        Work& operator=(const Work&) = delete;

    private:
        frmEeprom& form_;
    };

    /// The ways out of a page besides Cancel, and where the focus goes.
    struct Ways {
        bool back = true;
        bool next = true;
        bool onward = true;   ///< Next is what the user will want, not Back
        bool isLost = false;  ///< the line is gone: the page of the cables comes next
    };

    void MakePages();
    QPushButton* MakeButton(const char* name, const MessageId& caption, void (frmEeprom::*click)());
    void MakeButtons();
    void WatchMemory();

    void BackCommand_Click() { EepromWizard(step_ - 1); }
    void NextCommand_Click() { EepromWizard(step_ + 1); }
    void CancelCommand_Click() { reject(); }
    void Stop();
    void UpdateCommand_Click();
    void WriteBackSavedCopy();

    void SetWizardButtons();
    void Open(Ways ways);
    void OpenTable();
    void CloseLine();
    Ways SearchModules();
    SearchOutcome Search();
    void NoteRead(SearchOutcome outcome, OperationNote& note) const;
    Ways ShowSearch(SearchOutcome outcome);
    Ways RefuseLine();
    Ways LoseLine(const std::string& more = {});
    void ReadModules(std::span<const AddressedBlock> written = {});

    // What the table's page does; in frmEepromTable.cpp.
    void WriteBack(const IdentityCopy& copy);
    void Write(std::span<const AddressedBlock> blocks, const IdentityCopy* copy = nullptr,
               std::span<const std::size_t> leftOut = {});
    bool Ask(const WriteQuestion& question);
    void NoteWritten(const WriteResult& result, std::span<const AddressedBlock> blocks,
                     OperationNote& note) const;
    void TellWritten(const WriteResult& result, std::span<const std::size_t> leftOut);
    std::string FailedText(const WriteResult& result) const;
    std::string UnknownText(std::span<const AddressedBlock> blocks) const;
    void ReadAgain(std::span<const AddressedBlock> blocks, std::span<const AddressedBlock> acknowledged);

    void ShowInterruption();
    void ShowCaption(const MessageId& message);
    void ShowPort();
    void UpdateBusy();
    std::string FailureText() const;
    Answer Tell(std::string_view text, BoxIcon icon);
    std::string Text(const MessageId& message) const { return desk_.files.Words().Caption(message); }

    const MessageCatalogue& Catalogue() const { return desk_.files.Words().Catalogue(); }

    WizardDesk desk_;
    PosCfg settings_;
    SerialPort& port_;
    std::string dataFolder_;
    std::string formerSettings_;
    ModuleProtocol protocol_;
    ModuleMemory memory_{protocol_};
    int step_ = 0;
    bool working_ = false;
    bool searching_ = false;
    bool busy_ = false;  ///< the program is, for this wizard

    QStackedWidget* pages_ = nullptr;
    SearchPage* search_ = nullptr;
    IdentityRows* rows_ = nullptr;
    SavedCopy* saved_ = nullptr;
    QLabel* nothingRead_ = nullptr;
    WizardStatus* status_ = nullptr;
    QPushButton* back_ = nullptr;
    QPushButton* next_ = nullptr;
    QPushButton* cancel_ = nullptr;
    QPushButton* update_ = nullptr;
    QPushButton* writeBack_ = nullptr;
    QPointer<frmAbort> abort_;
};

}  // namespace kelvora
