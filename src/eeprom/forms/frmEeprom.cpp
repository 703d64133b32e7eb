#include "eeprom/forms/frmEeprom.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "comms/forms/frmAbort.h"
#include "eeprom/IdentityChoices.h"
#include "eeprom/IdentityTexts.h"
#include "eeprom/forms/IdentityRows.h"
#include "eeprom/forms/SavedCopy.h"
#include "eeprom/forms/WizardPages.h"
#include "eeprom/forms/WizardStatus.h"
#include "platform/Encoding.h"
#include "platform/TextLines.h"
#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"
#include "ports/Connection.h"

namespace kelvora {

namespace {

constexpr int InstructionStep = 1;
constexpr int SearchStep = 2;
constexpr int ResultStep = 3;

constexpr QSize InitialSize(680, 400);

}  // namespace

frmEeprom::Work::Work(frmEeprom& form) : form_(form)
{
    form_.working_ = true;
    form_.rows_->setEnabled(false);
    for (QPushButton* button : {form_.back_, form_.next_, form_.cancel_, form_.update_, form_.writeBack_})
        button->setEnabled(false);
}

frmEeprom::Work::~Work()
{
    form_.working_ = false;
    form_.status_->EndProgress();
    form_.rows_->setEnabled(true);
    form_.UpdateBusy();
    form_.SetWizardButtons();
}

frmEeprom::frmEeprom(const WizardDesk& desk, PosCfg settings, SerialPort& port, std::string dataFolder,
                     QWidget* parent)
    : QDialog(parent),
      desk_(desk),
      settings_(std::move(settings)),
      port_(port),
      dataFolder_(std::move(dataFolder)),
      formerSettings_(port.Settings()),
      protocol_(port, desk.eventLoop, desk.files.Words().Boxes())
{
    setObjectName(QStringLiteral("frmEeprom"));
    setWindowTitle(ToQString(Text(Message::EepromTitle)));
    MakePages();
    MakeButtons();
    WatchMemory();
    SetWizardButtons();
    ShowPort();
    resize(InitialSize.expandedTo(minimumSizeHint()).boundedTo(screen()->availableSize() * 9 / 10));
}

frmEeprom::~frmEeprom()
{
    protocol_.Close();
    UpdateBusy();
}

void frmEeprom::MakePages()
{
    pages_ = new QStackedWidget(this);
    search_ = new SearchPage(Catalogue(), settings_.CommsPort);
    auto* result = new QFrame;
    auto* resultLayout = new QVBoxLayout(result);
    rows_ = new IdentityRows(Catalogue());
    nothingRead_ = TextLabel(QStringLiteral("NothingRead"), ToQString(Text(Message::EepromNothingRead)));
    saved_ = new SavedCopy(Catalogue());
    resultLayout->addWidget(rows_);
    resultLayout->addWidget(nothingRead_);
    resultLayout->addWidget(saved_);
    int index = 0;
    for (QFrame* page : {MakeIntroductionPage(Catalogue()), MakeInstructionPage(Catalogue()),
                         static_cast<QFrame*>(search_), result}) {
        page->setObjectName(QStringLiteral("WizFrame%1").arg(index++));
        pages_->addWidget(page);
    }
    connect(rows_, &IdentityRows::identityChosen, this, [this] { update_->setEnabled(rows_->IsChanged()); });
    connect(&search_->StopCommand(), &QPushButton::clicked, this, &frmEeprom::Stop);
}

QPushButton* frmEeprom::MakeButton(const char* name, const MessageId& caption, void (frmEeprom::*click)())
{
    auto* button = new QPushButton(ToQString(Text(caption)), this);
    button->setObjectName(QLatin1String(name));
    connect(button, &QPushButton::clicked, this, click);
    return button;
}

void frmEeprom::MakeButtons()
{
    // The Tab key follows the order in which they are made.
    update_ = MakeButton("UpdateCommand", Message::EepromWrite, &frmEeprom::UpdateCommand_Click);
    writeBack_ = MakeButton("WriteBackCommand", Message::EepromWriteBack, &frmEeprom::WriteBackSavedCopy);
    back_ = MakeButton("BackCommand", Message::EepromBack, &frmEeprom::BackCommand_Click);
    next_ = MakeButton("NextCommand", Message::EepromNext, &frmEeprom::NextCommand_Click);
    cancel_ = MakeButton("CancelCommand", Message::EepromCancel, &frmEeprom::CancelCommand_Click);
    status_ = new WizardStatus(this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(update_);
    buttons->addWidget(writeBack_);
    buttons->addStretch();
    for (QPushButton* button : {back_, next_, cancel_})
        buttons->addWidget(button);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(pages_, 1);
    layout->addWidget(status_);
    layout->addLayout(buttons);
}

void frmEeprom::WatchMemory()
{
    memory_.onProgress = [this](int value) { status_->ShowProgress(value); };
    memory_.onSpeed = [this] { ShowPort(); };
    memory_.onRepeat = [this] {
        search_->ShowRepeating();
        status_->ShowEndless();
    };
    memory_.isInterrupted = [this] { return desk_.operation.IsStopAsked(); };
}

void frmEeprom::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (!event->spontaneous())
        EepromWizard(0);
}

void frmEeprom::EepromWizard(int step)
{
    if (working_)
        return;
    step_ = step;
    SetWizardButtons();
    pages_->setCurrentIndex(step_);
    AnnouncePage(*pages_->currentWidget());
    Ways ways{step_ > 0, step_ < ResultStep};
    if (step_ == InstructionStep)
        CloseLine();
    else if (step_ == SearchStep)
        ways = SearchModules();
    Open(ways);
}

// " COM2: 4800,n,8,1" once the line is open; before that the search has yet to choose a speed.
void frmEeprom::ShowPort()
{
    PosCfg shown = settings_;
    shown.PortSettings = protocol_.Settings();
    status_->ShowPort(
        protocol_.IsOpen() ? ToQString(PortText(shown)) : QStringLiteral(" COM%1").arg(settings_.CommsPort),
        protocol_.IsOpen());
}

void frmEeprom::SetWizardButtons()
{
    back_->setEnabled(step_ > 0);
    next_->setEnabled(step_ < ResultStep);
    cancel_->setEnabled(true);
    update_->setVisible(step_ == ResultStep);
    update_->setEnabled(false);
    writeBack_->setVisible(step_ == ResultStep);
    writeBack_->setEnabled(!BlocksRead(memory_).empty());
}

// Opens the ways out of the page, and puts the focus where the work goes on.
void frmEeprom::Open(Ways ways)
{
    if (ways.isLost) {
        EepromWizard(InstructionStep);
        return;
    }
    back_->setEnabled(ways.back);
    next_->setEnabled(ways.next);
    if (step_ == ResultStep)
        OpenTable();
    else
        (ways.next && ways.onward ? next_ : ways.back ? back_ : cancel_)->setFocus();
}

void frmEeprom::OpenTable()
{
    nothingRead_->setVisible(BlocksRead(memory_).empty());
    update_->setEnabled(rows_->IsChanged());
    if (!rows_->FocusFirstList())
        back_->setFocus();
}

void frmEeprom::CloseLine()
{
    if (!protocol_.IsOpen())
        return;
    const Work work(*this);
    protocol_.CloseCommsLine();
}

frmEeprom::Ways frmEeprom::SearchModules()
{
    const Work work(*this);
    ShowCaption(Message::EepromSearching);
    search_->Clear();
    desk_.operation.GoOn();
    OperationNote note = desk_.notes.Begin(JournalOperation::ReadIdentities, settings_.CommsPort);
    if (!protocol_.OpenCommsLine()) {
        note.Entry().message = Utf8FromText(port_.LastError());
        desk_.notes.Keep(note);
        return RefuseLine();
    }
    UpdateBusy();
    const SearchOutcome outcome = Search();
    const Ways ways = ShowSearch(outcome);
    NoteRead(outcome, note);
    desk_.notes.Keep(note);
    saved_->Show({});
    rows_->Show(memory_);
    return ways;
}

SearchOutcome frmEeprom::Search()
{
    search_->ShowOpened();
    search_->ShowSearching(true);
    searching_ = true;
    const SearchOutcome outcome = memory_.FindModules(SearchRepeats::UntilInterrupted);
    searching_ = false;
    if (abort_)
        abort_->close();
    search_->ShowSearching(false);
    return outcome;
}

void frmEeprom::NoteRead(SearchOutcome outcome, OperationNote& note) const
{
    JournalEntry& entry = note.Entry();
    entry.modules = IdentityList(memory_);
    // Modules that answer slowly are searched again and again until the user stops.
    const bool isRead = memory_.HasLine() && memory_.Count() > 0 &&
                        BlocksRead(memory_).size() == std::min(memory_.Count(), WritableAddresses);
    if (isRead)
        entry.result = JournalEntry::Result::Done;
    else if (outcome == SearchOutcome::Interrupted)
        entry.result = JournalEntry::Result::Stopped;
}

frmEeprom::Ways frmEeprom::RefuseLine()
{
    status_->EndProgress();
    cancel_->setEnabled(true);
    const std::string text = Text(Message::EepromNotOpened) + std::string(LineEnd) + FailureText();
    search_->ShowOutcome(ToQString(text));
    Tell(text, BoxIcon::Exclamation);
    return {false, false};
}

// Tells that the line is gone, and `more`.
frmEeprom::Ways frmEeprom::LoseLine(const std::string& more)
{
    status_->EndProgress();
    std::string text = Text(Message::EepromLineLost) + std::string(LineEnd) + FailureText();
    if (!more.empty())
        text.append(Paragraph).append(more);
    Tell(text, BoxIcon::Exclamation);
    return {.isLost = true};
}

frmEeprom::Ways frmEeprom::ShowSearch(SearchOutcome outcome)
{
    const bool stopped = outcome == SearchOutcome::Interrupted;
    if (outcome == SearchOutcome::LineLost)
        return LoseLine();
    if (memory_.Count() > 0) {
        if (stopped)
            search_->ShowOutcome(ToQString(Text(Message::EepromStopped)));
        ReadModules();
        if (!memory_.HasLine())
            return LoseLine();
        search_->ShowReady();
        return {};
    }
    status_->EndProgress();
    search_->Clear();
    const MessageId& found = stopped ? Message::EepromNoneSoFar : Message::EepromNoModules;
    search_->ShowOutcome(ToQString(Text(found) + std::string(Paragraph) + Text(Message::EepromSearchAgain)));
    if (!stopped)
        Tell(Text(Message::EepromNoModules), BoxIcon::Information);
    return {.next = !stopped, .onward = false};
}

void frmEeprom::ReadModules(std::span<const AddressedBlock> written)
{
    ShowCaption(Message::EepromReading);
    if (memory_.ReadEeprom() || !memory_.HasLine())
        return;
    std::string text = Text(Message::EepromReadFailed);
    if (const std::string unknown = UnknownText(written); !unknown.empty())
        text.append(Paragraph).append(unknown);
    Tell(text, BoxIcon::Exclamation);
}

void frmEeprom::Stop()
{
    desk_.operation.AskToStop();
}

// Asks whether the search is to stop, which goes on meanwhile.
void frmEeprom::ShowInterruption()
{
    if (!abort_) {
        abort_ = new frmAbort(Catalogue(), this);
        abort_->setAttribute(Qt::WA_DeleteOnClose);
        connect(abort_, &frmAbort::terminated, this, &frmEeprom::Stop);
    }
    abort_->ShowInfo(ToQString(Text(Message::EepromSearching) + "\n" + Text(Message::AbortInfo)));
    abort_->show();
    abort_->activateWindow();
}

void frmEeprom::ShowCaption(const MessageId& message)
{
    status_->ShowCaption(ToQString(Text(message)));
}

// The program is busy while the line is open, and its main window says with what.
void frmEeprom::UpdateBusy()
{
    const bool busy = protocol_.IsOpen();
    if (!busy)
        ShowPort();
    if (std::exchange(busy_, busy) == busy)
        return;
    if (busy)
        desk_.operation.Take(Text(Message::EepromStatus) + std::to_string(settings_.CommsPort));
    else
        desk_.operation.GiveBack();
    emit busyChanged();
}

std::string frmEeprom::FailureText() const
{
    return describeFailure ? describeFailure(port_, protocol_.Failure()) : port_.LastError();
}

Answer frmEeprom::Tell(std::string_view text, BoxIcon icon)
{
    return desk_.files.Words().Tell(text, {icon});
}

void frmEeprom::done(int result)
{
    if (working_)
        return;
    protocol_.Close();
    if (!port_.IsOpen())
        port_.SetSettings(formerSettings_);
    UpdateBusy();
    QDialog::done(result);
}

void frmEeprom::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape) {
        // No box in the middle of a read or a write, which are short; the search is asked about.
        if (searching_)
            ShowInterruption();
        else if (!working_)
            desk_.files.Words().Show(Message::Interruption, {BoxIcon::Information});
    } else if (!enter || qobject_cast<QPushButton*>(focusWidget()) != nullptr) {
        // Enter in a list must not press a button.
        QDialog::keyPressEvent(event);
    }
}

}  // namespace kelvora
