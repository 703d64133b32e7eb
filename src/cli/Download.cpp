// The commands "download" and "restore": a setup file, or a dump as it is, brought into the device on a line.
#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/FlashJson.h"
#include "cli/LineAccess.h"
#include "cli/LineReport.h"
#include "cli/LineRun.h"
#include "cli/Verdict.h"
#include "flash/Backups.h"
#include "flash/FlashTexts.h"
#include "flash/TransferTexts.h"
#include "platform/Encoding.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora {

namespace {

struct DownloadRequest {
    LineOptions line;
    std::string file;
    bool isDump = false;        ///< `file` is a dump
    bool yes = false;           ///< not asked
    bool eraseContent = false;  ///< the device may lose key contents
    bool thisLine = false;      ///< a dump that names no modules is for this line
};

using Reason = TransferResult::Reason;

// Nothing, and why, when the file is not one of its kind.
std::optional<WantedContent> ReadWanted(const DownloadRequest& request, Refusal& why)
{
    if (!request.isDump) {
        auto document = AcceptedSetup(request.file, why);
        return document ? std::optional<WantedContent>(*std::move(document)) : std::nullopt;
    }
    try {
        return ReadDump(PosixFiles().Read(request.file));
    } catch (const FileError& error) {
        why = FailureOf(request.file, error.what());
    } catch (const DumpError& error) {
        why = FailureOf(request.file, OneLineText(Describe(MessageCatalogue(), error)));
    }
    return std::nullopt;
}

// A dump that does not say for which line it is needs the user's word, which it then has.
bool IsForTheLine(const DownloadRequest& request, WantedContent& wanted, LineAccess& access)
{
    auto* const dump = std::get_if<FlashDump>(&wanted);
    if (!dump || !NeedsUsersWord(*dump))
        return true;
    dump->isForTheLine =
        request.thisLine ||
        (!request.yes && access.Ask(PortName(request.line.port) + ": " + Utf8FromPath(request.file) + ": " +
                                    std::string(Message::AskRightLine.fallback)));
    return dump->isForTheLine;
}

void AppendList(std::string& text, const MessageId& heading, const std::vector<std::string>& lines)
{
    if (lines.empty())
        return;
    text += OneLineText(heading.fallback) + "\n";
    for (const std::string& line : lines)
        text += "  " + OneLineText(line) + "\n";
}

std::string Changes(const TransferPlan& plan)
{
    const MessageCatalogue english;
    std::string text = OneLineText(ContentsText(english, plan));
    if (!text.empty())
        text += "\n";
    AppendList(text, Message::AskChanges, ChangeLines(english, plan));
    AppendList(text, Message::AskUnheld, UnheldLines(english, plan));
    return text;
}

std::string Question(const DownloadRequest& request, const WantedContent& wanted, const TransferPlan& plan,
                     const std::string& backup)
{
    const MessageCatalogue english;
    std::string text = Changes(plan);
    if (const auto* const dump = std::get_if<FlashDump>(&wanted))
        if (const std::string told = DumpText(english, *dump, plan.terminal); !told.empty())
            text += OneLineText(told) + "\n";
    text += english.Word(Message::AskBackup) + Utf8FromPath(backup) + "\n";
    return text + PortName(request.line.port) + ": " + Utf8FromPath(request.file) + ": " +
           english.Caption(request.isDump ? Message::AskRestore : Message::AskDownload);
}

TransferAnswer Ask(const DownloadRequest& request, const WantedContent& wanted, Console& console,
                   LineAccess& access, const TransferPlan& plan, const std::string& backup)
{
    if (request.yes && !request.line.json)
        Emit(console, Changes(plan));
    if (!request.yes && !access.Ask(Question(request, wanted, plan, backup)))
        return TransferAnswer::No;
    if (!plan.TakesContents() || request.eraseContent)
        return TransferAnswer::Yes;
    if (request.yes)
        return TransferAnswer::KeepContents;
    return access.Ask(TakingQuestion(MessageCatalogue(), plan)) ? TransferAnswer::Yes : TransferAnswer::No;
}

TransferResult RunTransfer(const DownloadRequest& request, const WantedContent& wanted,
                           const std::string& content, Console& console, LineAccess& access)
{
    LineRun run(request.line, console, access);
    OperationNote note = BeginNote(request.isDump ? JournalOperation::Restore : JournalOperation::Download,
                                   request.line, access);
    note.OfFile(request.file, content);
    PosixFiles files;
    Backups backups(files, BackupFolder(access.DataFolder()));
    const TransferSteps steps{
        [&](const TransferPlan& plan) {
            run.bar.Wipe();
            return backups.Keep({request.line.port, plan.deviceMap, plan.terminal, plan.held});
        },
        [&](const TransferPlan& plan, const std::string& backup) {
            return Ask(request, wanted, console, access, plan, backup);
        }};
    TransferResult result = Download(run.comms, request.line.Target(), run.hooks, wanted, steps);
    if (result.reason == Reason::Declined && access.StopRequested()) {
        result.reason = Reason::Line;
        result.line.outcome = LineOutcome::Stopped;
    }
    note.Tell(request.line.Target(), result);
    EndNote(note, console);
    return result;
}

int ExitCodeOf(const TransferResult& result)
{
    switch (result.reason) {
        case Reason::Done:
            return ExitCode::Done;
        case Reason::Refused:
        case Reason::NotKept:
        case Reason::Declined:
        case Reason::ContentsKept:
            return ExitCode::Rejected;
        case Reason::Line:
        case Reason::DeviceChanged:
            break;
    }
    return ExitCode::Line;
}

// Shows what will change and asks, keeps a backup, and prints what the device holds in the end. Returns the
// exit code: Usage when nobody can be asked. Throws OutputError, LineAccessError.
int RunDownload(const DownloadRequest& request, Console& console, LineAccess& access)
{
    if (!request.yes && !access.CanAsk())
        return RefuseUnasked(console);
    Refusal why;
    auto wanted = ReadWanted(request, why);
    // A stop at the question is the work's own first answer.
    if (wanted && !IsForTheLine(request, *wanted, access) && !access.StopRequested())
        why = FailureOf(request.file,
                        request.yes
                            ? "this dump names no modules; --this-line says that it was read from this line"
                            : Message::TransferDeclined.fallback);
    if (!why.line.empty())
        return RefuseFile(request.line, request.file, why, console);
    const TransferResult result = RunTransfer(request, *wanted, ContentOf(request.file), console, access);
    const OutcomeText outcome = DescribeTransfer(MessageCatalogue(), request.line.Target(), result);
    const std::string text = OneLineText(outcome.text + "\n" + outcome.extra);
    const int exitCode = ExitCodeOf(result);
    if (exitCode != ExitCode::Done)
        console.err << DiagnosticLine(text);
    else if (request.line.json)
        TellWarnings(request.line.Target(), result.line, console);
    if (request.line.json)
        Emit(console, TransferJson(request.line.Target(), request.file, result));
    else if (exitCode == ExitCode::Done)
        Emit(console, PortName(request.line.port) + ": " + text + "\n");
    return exitCode;
}

void AddCommand(CLI::App* command, const std::string& fileHelp, bool isDump, Console& console,
                LineAccess& access, int& exitCode)
{
    const auto request = std::make_shared<DownloadRequest>();
    request->isDump = isDump;
    AddLineOptions(*command, request->line);
    command->add_option("FILE", request->file, fileHelp)->type_name("")->required();
    command->add_flag("-y,--yes", request->yes, "Write without asking");
    if (isDump) {
        command->add_flag(
            "--erase-content", request->eraseContent,
            "Also write a dump that takes key contents from the device, or that was made from a setup");
        command->add_flag("--this-line", request->thisLine,
                          "A dump that names no modules was read from this line");
    }
    command->footer(
        "What will change is shown first, and what the device holds is kept as a backup. The device changes\n"
        "in one step at the end: whatever happens, it holds its old content or the new one.\n\n" +
        std::string(LineExitCodes));
    command->callback(
        [request, &console, &access, &exitCode] { exitCode = RunDownload(*request, console, access); });
}

}  // namespace

void AddDownloadCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode)
{
    AddCommand(app.add_subcommand("download", "Write a setup file into a line's device"), "Setup file", false,
               console, access, exitCode);
}

void AddRestoreCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode)
{
    AddCommand(app.add_subcommand("restore", "Write a dump, such as a backup, into a line's device as it is"),
               "Dump (.mem)", true, console, access, exitCode);
}

}  // namespace kelvora
