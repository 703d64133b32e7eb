#include "layout/forms/FlashForms.h"

#include <QScreen>
#include <QWidget>
#include <algorithm>
#include <iterator>
#include <utility>

#include "flash/Backups.h"
#include "flash/TransferTexts.h"
#include "flash/forms/BackupsDialog.h"
#include "flash/forms/ChangesDialog.h"
#include "flash/forms/ComparisonDialog.h"
#include "layout/LineScan.h"
#include "platform/Encoding.h"
#include "platform/PortName.h"
#include "platform/TextLines.h"
#include "platform/qt/HelpTopic.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

// Differences that a message box has room for on its screen, when each takes two lines of it.
std::size_t MostLines(const QWidget& window)
{
    const int lines = window.screen()->availableSize().height() / window.fontMetrics().lineSpacing();
    return static_cast<std::size_t>(std::clamp(lines / 5, 3, 12));
}

MessageId TitleOf(const std::string& dumpName)
{
    return dumpName.empty() ? Message::DownloadTitle : Message::RestoreTitle;
}

std::string Body(const OutcomeText& outcome)
{
    return outcome.extra.empty() ? outcome.text : outcome.text + std::string(LineEnd) + outcome.extra;
}

// What the question before a download is about: the changes, then what is left out.
std::vector<std::string> QuestionLines(const MessageCatalogue& catalogue, const TransferPlan& plan)
{
    std::vector<std::string> lines{catalogue.Caption(Message::AskChanges)};
    std::ranges::copy(ChangeLines(catalogue, plan), std::back_inserter(lines));
    if (const auto unheld = UnheldLines(catalogue, plan); !unheld.empty()) {
        lines.insert(lines.end(), {std::string(), catalogue.Caption(Message::AskUnheld)});
        lines.insert(lines.end(), unheld.begin(), unheld.end());
    }
    return lines;
}

}  // namespace

FlashForms::FlashForms(SetupSession& session, QWidget& window) : session_(session), window_(window) {}

FlashForms::~FlashForms()
{
    delete comparison_;
}

std::string FlashForms::LineName() const
{
    return PortName(session_.settings.CommsPort);
}

std::string FlashForms::Status(const MessageId& text) const
{
    return session_.Desk().Words().Caption(text) + std::to_string(session_.settings.CommsPort) + " ...";
}

// The command that was given ends first: what follows takes its time.
void FlashForms::Later(std::function<void()> work)
{
    if (session_.Desk().operation.IsBusy())
        return;
    session_.Desk().eventLoop.After(std::chrono::milliseconds(0),
                                    [this, window = QPointer<QWidget>(&window_), work = std::move(work)] {
                                        if (window && !session_.Desk().operation.IsBusy())
                                            work();
                                    });
}

void FlashForms::ToolsMenuFlashDownload_Click()
{
    Later([this] { Transfer(session_.document, {}, {}); });
}

void FlashForms::RestoreDump()
{
    const auto opened = OpenDump(session_);
    emit fileChanged();
    if (opened)
        RestoreLater(opened->dump, TextFromPath(opened->path), opened->path);
}

void FlashForms::RestoreLater(const FlashDump& dump, const std::string& name, const std::string& path)
{
    Later([this, dump, name, path] { Restore(dump, name, path); });
}

void FlashForms::ShowBackups()
{
    SetupDesk& desk = session_.Desk();
    const Backups backups(desk.files.OnDisk(), BackupFolder(desk.dataFolder));
    BackupsDialog dialog(desk.files, backups, {LineName(), session_.DeviceImage(), desk.lines.HasLink()},
                         window_.window());
    if (dialog.exec() == QDialog::Accepted)
        RestoreLater(*dialog.Chosen(), dialog.ChosenName(), dialog.ChosenPath());
}

void FlashForms::Restore(FlashDump dump, const std::string& name, const std::string& path)
{
    if (NeedsUsersWord(dump)) {
        const std::string where = name + std::string(LineEnd) + LineName();
        dump.isForTheLine =
            session_.Desk().Words().Show(Message::AskRightLine, YesNoStyle, where) == Answer::Yes;
        if (!dump.isForTheLine)
            return;
    }
    Transfer(dump, name, path);
}

void FlashForms::Transfer(const WantedContent& wanted, const std::string& dumpName, const std::string& path)
{
    SetupDesk& desk = session_.Desk();
    const HelpTopic topic(window_, dumpName.empty() ? "flash.html#download" : "flash.html#dumps");
    Backups backups(desk.files.OnDisk(), BackupFolder(desk.dataFolder));
    const TransferSteps steps{
        [&](const TransferPlan& plan) {
            return backups.Keep({session_.settings.CommsPort, plan.deviceMap, plan.terminal, plan.held});
        },
        [&](const TransferPlan& plan, const std::string& backup) {
            return Ask(wanted, plan, dumpName, backup);
        }};
    TransferResult result;
    OperationNote note =
        desk.notes.Begin(dumpName.empty() ? JournalOperation::Download : JournalOperation::Restore,
                         session_.settings.CommsPort);
    if (dumpName.empty())
        NoteFile(note, session_);
    else
        NoteFile(note, desk.files.OnDisk(), path);
    {
        const LineOperation running(
            desk.operation, Status(dumpName.empty() ? Message::DownloadStatus : Message::RestoreStatus),
            " " + desk.Words().Caption(TitleOf(dumpName)));
        result = DownloadFrom(session_, wanted, running.Hooks(), steps);
    }
    note.Tell(TargetOf(session_.settings), result);
    desk.notes.Keep(note);
    // Who has just said No knows it, but not what the terminal did not confirm before.
    if (result.reason == TransferResult::Reason::Declined && result.line.warnings.empty())
        return;
    const OutcomeText outcome = DescribeTransfer(desk.Catalogue(), TargetOf(session_.settings), result);
    desk.Words().Tell(Body(outcome), {outcome.icon}, desk.Words().Caption(TitleOf(dumpName)));
}

// The line rests while the question stands; the program stays busy, so that nothing else can take it.
TransferAnswer FlashForms::Ask(const WantedContent& wanted, const TransferPlan& plan,
                               const std::string& dumpName, const std::string& backup)
{
    SetupDesk& desk = session_.Desk();
    const MessageCatalogue& catalogue = desk.Catalogue();
    const OperationQuestion asking(desk.operation);
    const std::string contents = ContentsText(catalogue, plan);
    std::string question = contents.empty() ? std::string() : contents + "\n";
    if (const auto* const dump = std::get_if<FlashDump>(&wanted))
        question += catalogue.Caption(Message::AskRestore) + "\n" + dumpName + "\n" +
                    DumpText(catalogue, *dump, plan.terminal);
    else
        question += catalogue.Caption(Message::AskDownload);
    const std::string title = catalogue.Caption(TitleOf(dumpName));
    ChangesDialog dialog(
        catalogue, ToQString(title + ": " + LineName()), ToQString(question), QuestionLines(catalogue, plan),
        ToQString(catalogue.Word(Message::AskBackup) + TextFromPath(backup)), window_.window());
    connect(&dialog, &ChangesDialog::comparisonRequested, &dialog, [&] {
        ComparisonDialog(desk.files,
                         {LineName(), dumpName.empty() ? session_.settings.Name : dumpName, plan.held,
                          plan.wanted, plan.imageChanges},
                         &dialog)
            .exec();
    });
    if (dialog.exec() != QDialog::Accepted)
        return TransferAnswer::No;
    if (!plan.TakesContents())
        return TransferAnswer::Yes;
    return desk.Words().Tell(contents + std::string(LineEnd) + TakingQuestion(catalogue, plan),
                             {BoxIcon::Exclamation, BoxButtons::YesNo, Answer::No}, title) == Answer::Yes
               ? TransferAnswer::Yes
               : TransferAnswer::No;
}

void FlashForms::ToolsMenuFlashVerify_Click()
{
    Later([this] { Verify(); });
}

void FlashForms::Verify()
{
    SetupDesk& desk = session_.Desk();
    const HelpTopic topic(window_, "flash.html#verify");
    VerifyResult result;
    OperationNote note = desk.notes.Begin(JournalOperation::Verify, session_.settings.CommsPort);
    NoteFile(note, session_);
    {
        const LineOperation running(desk.operation, Status(Message::VerifyStatus),
                                    " " + desk.Words().Caption(Message::UploadTitle));
        result = VerifyAgainst(session_, running.Hooks());
    }
    note.Tell(TargetOf(session_.settings), result);
    desk.notes.Keep(note);
    ShowVerified(result);
}

void FlashForms::ShowVerified(const VerifyResult& result)
{
    const SetupDesk& desk = session_.Desk();
    const OutcomeText outcome =
        DescribeVerify(desk.Catalogue(), TargetOf(session_.settings), result, MostLines(window_));
    const std::string title = desk.Words().Caption(Message::VerifyTitle);
    if (result.outcome != VerifyResult::Outcome::Different) {
        desk.Words().Tell(Body(outcome), {outcome.icon}, title);
        return;
    }
    const std::string offer =
        std::string(LineEnd).append(LineEnd) + desk.Words().Caption(Message::ComparisonOffer);
    if (desk.Words().Tell(Body(outcome) + offer, {outcome.icon, BoxButtons::YesNo, Answer::No}, title) ==
        Answer::Yes)
        ShowComparison(
            {session_.settings.Name, LineName(), *result.setupImage, *result.deviceImage,
             DescribeDifferences(*result.setupImage, *result.deviceImage, session_.document.Modules)});
}

void FlashForms::ToolsMenuFlashDumpSetup_Click()
{
    const HelpTopic topic(window_, "flash.html#dumps");
    DumpSetupImage(session_);
    emit fileChanged();
}

void FlashForms::ToolsMenuFlashDumpUpload_Click()
{
    const HelpTopic topic(window_, "flash.html#dumps");
    DumpDeviceImage(session_);
    emit fileChanged();
}

void FlashForms::ShowComparison(ImageComparison images)
{
    delete comparison_;
    comparison_ = new ComparisonDialog(session_.Desk().files, std::move(images));
    comparison_->setAttribute(Qt::WA_DeleteOnClose);
    comparison_->show();
}

void FlashForms::Retranslate()
{
    if (comparison_)
        comparison_->Retranslate();
}

}  // namespace kelvora
