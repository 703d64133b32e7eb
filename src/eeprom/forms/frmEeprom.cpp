#include "eeprom/forms/frmEeprom.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "app/ShowMessage.h"
#include "app/TextFiles.h"
#include "eeprom/forms/IdentityRows.h"
#include "eeprom/forms/WizardPages.h"
#include "eeprom/forms/WizardStatus.h"
#include "layout/Connection.h"
#include "platform/Encoding.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

constexpr int InstructionStep = 1;
constexpr int SearchStep = 2;
constexpr int ResultStep = 3;

constexpr QSize InitialSize(680, 400);

constexpr std::string_view LineEnd = "\r\n";
constexpr std::string_view Paragraph = "\r\n\r\n";

}  // namespace

// While it lives nothing else of the wizard can be started.
class frmEeprom::Work {
public:
    explicit Work(frmEeprom& form) : form_(form)
    {
        form_.working_ = true;
        form_.rows_->setEnabled(false);
        for (QPushButton* button : {form_.back_, form_.next_, form_.cancel_, form_.update_, form_.writeBack_})
            button->setEnabled(false);
    }
    ~Work()
    {
        form_.working_ = false;
        form_.status_->EndProgress();
        form_.rows_->setEnabled(true);
        form_.UpdateBusy();
        form_.SetWizardButtons();
    }
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;

private:
    frmEeprom& form_;
};

frmEeprom::frmEeprom(Program& program, PosCfg settings, SerialPort& port, std::string dataFolder,
                     QWidget* parent)
    : QDialog(parent),
      program_(program),
      settings_(std::move(settings)),
      port_(port),
      dataFolder_(std::move(dataFolder)),
      formerSettings_(port.Settings()),
      protocol_(port, program.world.eventLoop, program.world.prompt)
{
    setObjectName(QStringLiteral("frmEeprom"));
    setWindowTitle(ToQString(Text(Message::EepromTitle)));
    MakePages();
    MakeButtons();
    WatchMemory();
    SetWizardButtons();
    resize(InitialSize);
}

frmEeprom::~frmEeprom()
{
    onBusy = nullptr;
    port_.Close();
    UpdateBusy();
}

void frmEeprom::MakePages()
{
    pages_ = new QStackedWidget(this);
    search_ = new SearchPage(program_.catalogue, settings_.CommsPort);
    auto* result = new QFrame;
    auto* resultLayout = new QVBoxLayout(result);
    rows_ = new IdentityRows(program_.catalogue);
    saved_ = new QLabel;
    saved_->setObjectName(QStringLiteral("SavedInfo"));
    saved_->setTextFormat(Qt::PlainText);
    saved_->setWordWrap(true);
    saved_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    resultLayout->addWidget(rows_);
    resultLayout->addWidget(saved_);
    int index = 0;
    for (QFrame* page : {MakeIntroductionPage(program_.catalogue), MakeInstructionPage(program_.catalogue),
                         static_cast<QFrame*>(search_), result}) {
        page->setObjectName(QStringLiteral("WizFrame%1").arg(index++));
        pages_->addWidget(page);
    }
    rows_->onChoice = [this] { update_->setEnabled(rows_->IsChanged()); };
    connect(&search_->StopCommand(), &QPushButton::clicked, this, &frmEeprom::StopCommand_Click);
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
    back_ = MakeButton("BackCommand", Message::EepromBack, &frmEeprom::BackCommand_Click);
    next_ = MakeButton("NextCommand", Message::EepromNext, &frmEeprom::NextCommand_Click);
    cancel_ = MakeButton("CancelCommand", Message::EepromCancel, &frmEeprom::CancelCommand_Click);
    update_ = MakeButton("UpdateCommand", Message::EepromWrite, &frmEeprom::UpdateCommand_Click);
    writeBack_ = MakeButton("WriteBackCommand", Message::EepromWriteBack, &frmEeprom::WriteBackCommand_Click);
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
    memory_.onSpeed = [this] {
        PosCfg shown = settings_;
        shown.PortSettings = protocol_.Settings();
        status_->ShowPort(ToQString(PortText(shown)));
    };
    memory_.onRepeat = [this] { search_->ShowRepeating(); };
    memory_.isInterrupted = [this] { return program_.interruptionRequested; };
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
    Ways ways{step_ > 0, step_ < ResultStep};
    if (step_ == InstructionStep)
        CloseLine();
    else if (step_ == SearchStep)
        ways = SearchModules();
    Open(ways);
}

void frmEeprom::SetWizardButtons()
{
    back_->setEnabled(step_ > 0);
    next_->setEnabled(step_ < ResultStep);
    cancel_->setEnabled(true);
    update_->setVisible(step_ == ResultStep);
    update_->setEnabled(false);
    writeBack_->setVisible(step_ == ResultStep);
    writeBack_->setEnabled(true);
}

// Opens the ways out of the page, and puts the focus where the work goes on.
void frmEeprom::Open(Ways ways)
{
    back_->setEnabled(ways.back);
    next_->setEnabled(ways.next);
    if (step_ == ResultStep)
        rows_->FocusFirstList();
    else
        (ways.next ? next_ : ways.back ? back_ : cancel_)->setFocus();
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
    program_.interruptionRequested = false;
    if (!protocol_.OpenCommsLine())
        return RefuseLine();
    UpdateBusy();
    search_->ShowOpened();
    search_->ShowSearching(true);
    const SearchOutcome outcome = memory_.FindModules(SearchRepeats::UntilInterrupted);
    search_->ShowSearching(false);
    const Ways ways = ShowSearch(outcome);
    saved_->clear();
    rows_->Show(memory_);
    return ways;
}

frmEeprom::Ways frmEeprom::RefuseLine()
{
    status_->EndProgress();
    cancel_->setEnabled(true);
    std::string text = Text(Message::EepromNotOpened);
    if (const std::string reason = describeFailure ? describeFailure(port_) : port_.LastError();
        !reason.empty())
        text.append(LineEnd).append(reason);
    Tell(text, BoxIcon::Exclamation);
    return {false, false};
}

frmEeprom::Ways frmEeprom::ShowSearch(SearchOutcome outcome)
{
    const bool found = memory_.Count() > 0;
    if (outcome == SearchOutcome::LineLost) {
        Tell(Text(Message::EepromLineLost), BoxIcon::Exclamation);
        return {true, false};
    }
    if (outcome == SearchOutcome::Interrupted)
        search_->ShowStopped();
    if (outcome == SearchOutcome::Interrupted && !found)
        return {true, false};
    if (found)
        ReadModules();
    else
        Tell(Text(Message::EepromNoModules), BoxIcon::Information);
    search_->ShowReady();
    return {};
}

void frmEeprom::ReadModules()
{
    ShowCaption(Message::EepromReading);
    if (!memory_.ReadEeprom())
        Tell(Text(Message::EepromReadFailed), BoxIcon::Exclamation);
}

void frmEeprom::StopCommand_Click()
{
    program_.interruptionRequested = true;
}

void frmEeprom::UpdateCommand_Click()
{
    Write(PlanChoices(memory_, rows_->Choices()));
}

void frmEeprom::WriteBackCommand_Click()
{
    if (working_)
        return;
    const auto choice = program_.world.fileDialogs.Open({Text(Message::EepromWriteBack),
                                                         dataFolder_,
                                                         {},
                                                         Text(Message::EepromFilter) + " (*.txt)|*.txt",
                                                         1,
                                                         "cdgOpenIdentities"});
    if (!choice)
        return;
    const auto text = ReadTextFile(program_.world.files, program_.world.prompt, choice->path);
    if (!text)
        return;
    try {
        const IdentityCopy copy = ReadIdentityCopy(*text);
        if (const auto missing = AddressesNotRead(memory_, copy.blocks); !missing.empty())
            Tell(program_.catalogue.Word(Message::EepromNotOnLine) + AddressList(missing),
                 BoxIcon::Exclamation);
        else
            Write(copy.blocks);
    } catch (const IdentityCopyError& error) {
        Tell(DescribeCopyError(program_.catalogue, error), BoxIcon::Exclamation);
    }
}

void frmEeprom::Write(std::span<const AddressedBlock> blocks)
{
    if (working_ || blocks.empty())
        return;
    {
        const Work work(*this);
        const WriteResult result =
            WriteIdentities(memory_, blocks,
                            {program_.world.prompt, program_.catalogue, program_.world.files, dataFolder_,
                             settings_.CommsPort, protocol_.Settings(), LocalTime(),
                             [this] { ShowCaption(Message::EepromWriting); }});
        if (result.outcome == WriteOutcome::Written || result.outcome == WriteOutcome::Failed) {
            TellWritten(result);
            ReadAgain(Acknowledged(blocks, result));
        }
    }
    update_->setEnabled(rows_->IsChanged());
    rows_->FocusFirstList();
}

void frmEeprom::TellWritten(const WriteResult& result)
{
    saved_->setText(ToQString(Text(Message::EepromSaved) + " ") + PathToQString(result.copyPath));
    status_->EndProgress();
    std::string text;
    if (result.outcome == WriteOutcome::Written) {
        text.append(Text(Message::EepromWritten)).append(Paragraph).append(Text(Message::EepromShowNew));
        Tell(text, BoxIcon::Information);
        return;
    }
    text.append(Text(Message::EepromWriteFailed)).append(Paragraph).append(Text(Message::EepromCheck));
    text.append(LineEnd).append(program_.catalogue.Word(Message::EepromFailedAddresses));
    Tell(text + AddressList(result.failed), BoxIcon::Exclamation);
}

// Shows what the modules hold now, whatever they have acknowledged.
void frmEeprom::ReadAgain(std::span<const AddressedBlock> blocks)
{
    ReadModules();
    rows_->Show(memory_);
    if (const auto differ = AddressesThatDiffer(memory_, blocks); !differ.empty())
        Tell(program_.catalogue.Word(Message::EepromDiffers) + AddressList(differ), BoxIcon::Exclamation);
}

void frmEeprom::ShowCaption(const MessageId& message)
{
    status_->ShowCaption(ToQString(Text(message)));
}

void frmEeprom::UpdateBusy()
{
    const bool busy = port_.IsOpen();
    if (std::exchange(program_.busy, busy) != busy && onBusy)
        onBusy();
}

Answer frmEeprom::Tell(std::string_view text, BoxIcon icon)
{
    return program_.world.prompt.Show(ProductName, text, {icon});
}

void frmEeprom::done(int result)
{
    if (working_)
        return;
    port_.Close();
    port_.SetSettings(formerSettings_);
    UpdateBusy();
    QDialog::done(result);
}

void frmEeprom::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape) {
        // No box in the middle of a wait: there Esc asks the search to stop.
        if (working_)
            StopCommand_Click();
        else
            program_.Show(Message::Interruption, {BoxIcon::Information});
    } else if (!enter || qobject_cast<QPushButton*>(focusWidget()) != nullptr) {
        // Enter in a list must not press a button.
        QDialog::keyPressEvent(event);
    }
}

}  // namespace kelvora
