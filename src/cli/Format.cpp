// The command "format": setup files written anew, as a setup window saves them.
#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/SetupJson.h"
#include "cli/SetupOutput.h"
#include "cli/Told.h"
#include "flash/OwnBackup.h"
#include "platform/Encoding.h"
#include "platform/TextFiles.h"
#include "setup/SetupWriter.h"

namespace kelvora {

namespace {

struct FormatRequest {
    std::vector<std::string> names;  ///< files and folders, as for the command "check"
    std::string output;              ///< where the one is written; standard output when empty
    std::string outputFolder;        ///< where each is written, under its name; not together with `output`
    bool inPlace = false;            ///< each is written over itself; not together with either
    bool json = false;
};

// What became of a file, as an object: the text itself where it was not written to a file.
std::string FormatJson(const PlacedSetup& setup, const Verdict& verdict, const std::string& text)
{
    const bool accepted = verdict.outcome == Verdict::Outcome::Accepted;
    const bool written = accepted && !setup.output.empty();
    nlohmann::ordered_json object = VerdictObject(setup.name.path, verdict);
    object["output"] = written ? nlohmann::ordered_json(Utf8FromPath(setup.output)) : nullptr;
    object["text"] = accepted && !written ? nlohmann::ordered_json(Utf8FromText(text)) : nullptr;
    return object.dump() + "\n";
}

Told FormatFile(const PlacedSetup& setup, bool json)
{
    std::string text;
    SetupDocument document;
    Verdict verdict = CheckSetup(setup.name, text, &document);
    if (verdict.outcome == Verdict::Outcome::Accepted) {
        text = WriteSetup(document.Modules);
        try {
            if (!setup.output.empty())
                WriteSetupFile(setup.output, text);
        } catch (const FileError& error) {
            verdict = NotWritten(setup.name.path, error);
        }
        text += SavedFileEnd;
    }
    Told told = ToldOf(setup.name.path, verdict, false);
    if (json)
        told.out = FormatJson(setup, verdict, text);
    else if (told.exitCode == ExitCode::Done && setup.output.empty())
        told.out = text;
    return told;
}

std::vector<PlacedSetup> Place(const FormatRequest& request, std::vector<FoundName> names)
{
    OutputPlaces places(OutputPlaces::Backup::AsSaved);
    std::vector<PlacedSetup> placed;
    for (FoundName& name : names)
        if (request.inPlace)
            placed.push_back(places.Take(name, name.path));
        else if (!request.outputFolder.empty())
            placed.push_back(places.Take(name, PlaceInFolder(request.outputFolder, name, {})));
        else
            placed.push_back({std::move(name), request.output});
    return placed;
}

// A file that is replaced is kept as ".bak"; one that already has the content is left alone, with its
// ".bak". Nothing is written of a file that is not accepted. Returns the exit code. Throws OutputError.
int Format(const FormatRequest& request, Console& console)
{
    const bool toFolder = !request.outputFolder.empty();
    if (int{request.inPlace} + int{toFolder} + int{!request.output.empty()} > 1)
        return Misused(console, "either --output, --output-folder or --in-place");
    if (toFolder && LiesBelowOneOf(request.names, request.outputFolder))
        return Misused(console,
                       "the output folder lies in the folder of the setups: " + request.outputFolder);
    std::vector<FoundName> names = AllSetups(request.names, console.in);
    if (names.empty())
        return NothingFound(console);
    const bool holdsOne = !request.output.empty() || !(request.inPlace || toFolder || request.json);
    if (names.size() > 1 && holdsOne)
        return Misused(console, "several setups need --in-place or --output-folder");
    return TellInOrder(
        Place(request, std::move(names)),
        [&](const PlacedSetup& setup) { return FormatFile(setup, request.json); }, console);
}

}  // namespace

void AddFormatCommand(CLI::App& app, Console& console, int& exitCode)
{
    const auto request = std::make_shared<FormatRequest>();
    CLI::App* command = app.add_subcommand("format", "Write setup files as the program saves them");
    command->add_option("FILE", request->names, SetupNamesText)->type_name("")->required();
    AddPath(*command, "-o,--output", request->output, "OUT",
            "Write the one setup to that file, which may be FILE itself");
    AddPath(*command, "--output-folder", request->outputFolder, "FOLDER",
            "Write each setup into that folder, under its file's name");
    command->add_flag("-i,--in-place", request->inPlace, "Write each setup over its own file");
    command->add_flag("--json", request->json, "Print an object a line for every file");
    command->footer(
        "The old content of a file is kept as \".bak\". A file that is as the program saves it is left "
        "alone.");
    command->callback([request, &console, &exitCode] { exitCode = Format(*request, console); });
}

}  // namespace kelvora
