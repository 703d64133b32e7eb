// The command "series": the same setup, or each terminal's own, into one till after another on one line.
#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <string>

#include "catalogue/OneLineText.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/LineAccess.h"
#include "cli/LineReport.h"
#include "cli/LineRun.h"
#include "flash/Backups.h"
#include "flash/TransferTexts.h"
#include "journal/JournalText.h"
#include "platform/Encoding.h"
#include "platform/posix/PosixFiles.h"
#include "ports/PortNames.h"
#include "series/Series.h"

namespace kelvora {

namespace {

struct SeriesRequest {
    LineOptions line;
    std::string setup;   ///< a setup file; empty with `folder`
    std::string folder;  ///< of the terminals' own setups; empty with `setup`
    int count = 0;       ///< tills after which it ends; 0 for never
    bool yes = false;    ///< not asked
};

using Kind = SeriesEvent::Kind;
using Result = JournalEntry::Result;

std::string ResultWords(const JournalEntry& entry)
{
    switch (entry.result) {
        case Result::Done:
            return "done";
        case Result::Same:
            return "held the setup already";
        case Result::Stopped:
            return "stopped";
        default:
            return "failed";
    }
}

std::string CountsText(const SeriesCounts& counts)
{
    std::string text = std::to_string(counts.done) + " done, " + std::to_string(counts.same) +
                       " held the setup already, " + std::to_string(counts.failed) + " failed";
    if (counts.stopped > 0)
        text += ", " + std::to_string(counts.stopped) + " stopped";
    return text;
}

// For people; empty for what a progress bar shows.
std::string EventText(const SeriesEvent& event)
{
    const std::string port = PortName(event.line) + ": ";
    switch (event.kind) {
        case Kind::Waiting:
            return port + "waiting for a terminal" + (event.message.empty() ? "" : ": " + event.message) +
                   "\n";
        case Kind::NoPort:
            return port + "waiting for the port: " + event.message + "\n";
        case Kind::Found:
            return port + "found " + WithoutControls(event.terminal) + "\n";
        case Kind::Result: {
            std::string text = port + WithoutControls(event.terminal) + ": " + ResultWords(event.entry);
            if (!event.entry.message.empty())
                text += ": " + event.entry.message;
            text += "\n";
            for (const std::string& change : event.changes)
                text += "  " + change + "\n";
            return text;
        }
        case Kind::Gone:
            return port + "the till is gone\n";
        case Kind::End:
            return port + CountsText(event.counts) + "\n";
        case Kind::Progress:
        case Kind::Warning:
            break;
    }
    return {};
}

std::string Question(const SeriesRequest& request, const std::string& backups)
{
    const std::string what = request.folder.empty()
                                 ? Utf8FromPath(request.setup)
                                 : "the file of its own name in " + Utf8FromPath(request.folder);
    const std::string tills = request.count > 0
                                  ? std::to_string(request.count) + (request.count > 1 ? " tills" : " till")
                                  : "every till until you stop it";
    return "A series on " + PortName(request.line.port) + ": " + tills +
           ", one after another.\n"
           "Each till that is found gets " +
           what +
           ", without a further question;\n"
           "what it held is kept in " +
           Utf8FromPath(backups) + ".\nWrite into all of them?";
}

class SeriesRun {
public:
    SeriesRun(const SeriesRequest& request, std::optional<ChosenSetup> setup, Console& console,
              LineAccess& access)
        : request_(request),
          setup_(std::move(setup)),
          console_(console),
          access_(access),
          run_(request.line, console, access),
          backups_(files_, BackupFolder(access.DataFolder()))
    {
    }

    SeriesCounts Run()
    {
        SeriesWorld world;
        world.choose = [this](const std::string& name) {
            return setup_ ? *setup_ : ChooseByName(files_, request_.folder, name);
        };
        world.keepBackup = [this](const TransferPlan& plan) {
            return backups_.Keep({request_.line.port, plan.deviceMap, plan.terminal, plan.held});
        };
        // Without anybody to tell there is no series.
        world.stops = [this] { return outputLost_ ? 2 : access_.StopCount(); };
        world.beginNote = [this] { return BeginNote(JournalOperation::Download, request_.line, access_); };
        world.tell = [this](const SeriesEvent& event) { TellIfHeard(event); };
        const SeriesCounts counts =
            Series(run_.comms, request_.line.Target(), request_.count, std::move(world)).Run();
        if (outputLost_)
            throw OutputError(*outputLost_);
        return counts;
    }

private:
    // An error that left the work on a till would leave its line held.
    void TellIfHeard(const SeriesEvent& event)
    {
        try {
            if (!outputLost_)
                Tell(event);
        } catch (const OutputError& error) {
            outputLost_ = error;
        }
    }

    void Tell(const SeriesEvent& event)
    {
        if (event.kind == Kind::Progress)
            return TellProgress(event);
        run_.bar.Wipe();
        if (event.kind == Kind::Warning)
            console_.err << DiagnosticLine(event.message);
        if (request_.line.json)
            Emit(console_, SeriesLine(event));
        else
            Emit(console_, EventText(event));
        percent_ = -1;
    }

    // A line a percent is enough for whoever reads them.
    void TellProgress(const SeriesEvent& event)
    {
        constexpr std::size_t Whole = 100;
        run_.bar.Show({event.done, event.total, std::nullopt});
        const int percent = static_cast<int>(Whole * event.done / event.total);
        if (request_.line.json && percent != percent_)
            Emit(console_, SeriesLine(event));
        percent_ = percent;
    }

    const SeriesRequest& request_;
    std::optional<ChosenSetup> setup_;
    Console& console_;
    LineAccess& access_;
    LineRun run_;
    PosixFiles files_;
    Backups backups_;
    int percent_ = -1;
    std::optional<OutputError> outputLost_;
};

int ExitCodeOf(const SeriesCounts& counts)
{
    if (counts.stopped > 0)
        return ExitCode::Line;
    return counts.failed > 0 ? ExitCode::Rejected : ExitCode::Done;
}

// Asks once, then prints what happens as it does. Returns the exit code. Throws OutputError,
// LineAccessError.
int RunSeries(const SeriesRequest& request, Console& console, LineAccess& access)
{
    if (!request.yes && !access.CanAsk())
        return RefuseUnasked(console);
    std::optional<ChosenSetup> setup;
    if (request.folder.empty()) {
        setup = ReadChosenSetup(PosixFiles(), request.setup);
        if (!setup->document)
            return RefuseFile(request.line, request.setup, {DiagnosticLine(setup->why), setup->why}, console);
        if (const auto refusal = RefusalFor(*setup->document)) {
            const std::string why =
                Utf8FromPath(request.setup) + ": " + OneLineText(Describe(MessageCatalogue(), *refusal));
            return RefuseFile(request.line, request.setup, {DiagnosticLine(why), why}, console);
        }
    } else {
        // A folder that is not there would fail every till.
        try {
            if (!PosixFiles().Exists(request.folder))
                throw FileError(request.folder, "No such file or directory");
            PosixFiles().List(request.folder);
        } catch (const FileError& error) {
            return RefuseFile(request.line, request.folder, FailureOf(request.folder, error.what()), console);
        }
    }
    SeriesRun run(request, std::move(setup), console, access);
    if (!request.yes && !access.Ask(Question(request, BackupFolder(access.DataFolder())))) {
        console.err << DiagnosticLine(Message::TransferDeclined.fallback);
        return access.StopRequested() ? ExitCode::Line : ExitCode::Rejected;
    }
    return ExitCodeOf(run.Run());
}

}  // namespace

void AddSeriesCommand(CLI::App& app, Console& console, LineAccess& access, int& exitCode)
{
    const auto request = std::make_shared<SeriesRequest>();
    CLI::App* command =
        app.add_subcommand("series", "Write setups into one till after another, as they are connected");
    AddLineOptions(*command, request->line);
    auto* const setup =
        command->add_option("FILE", request->setup, "Setup file for all tills")->type_name("");
    command
        ->add_option("--by-name", request->folder,
                     "In place of FILE: each till gets the file of that folder that bears the name of its "
                     "terminal, NAME.dat")
        ->type_name("FOLDER")
        ->excludes(setup);
    command
        ->add_option("--count", request->count,
                     "End after that many tills, whatever came of them; else when it is stopped")
        ->type_name("N")
        ->check(CLI::PositiveNumber);
    command->add_flag("-y,--yes", request->yes, "Begin without asking");
    command->get_option("--json")->description("Print what happens as it does, an object a line");
    command->footer(
        "A till that answers gets the setup at once, unless it holds it already; what it held is kept as a\n"
        "backup. The next one is looked for when this one has been taken away. Ctrl+C ends the series after\n"
        "the present till, a second one stops the work on it; a till holds its old content or the new one.\n"
        "A third one ends the program at once, and the till stays held until it is started again.\n"
        "With a single --line its number is that of the line, and --port need not be given.\n\n"
        "Exit code: 0 all tills passed; 1 one failed, or the file was rejected; 2 wrong usage; 3 the work "
        "on\n"
        "a till was stopped, or the line could not be prepared.");
    command->callback([request, command, &console, &access, &exitCode] {
        if (request->setup.empty() && request->folder.empty())
            throw CLI::RequiredError("FILE or --by-name");
        if (command->get_option("--port")->empty() && request->line.lines.size() == 1)
            request->line.port = ParseLineArgument(request->line.lines.front()).port;
        exitCode = RunSeries(*request, console, access);
    });
}

}  // namespace kelvora
