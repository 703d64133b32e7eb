// The command "image": the flash images of setup files, without a device.
#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/FlashJson.h"
#include "cli/LineReport.h"
#include "cli/SetupOutput.h"
#include "cli/Told.h"
#include "flash/DumpSource.h"
#include "flash/FlashTexts.h"
#include "flash/OwnBackup.h"
#include "flash/SetupImage.h"
#include "flash/TransferPlan.h"
#include "flash/TransferTexts.h"
#include "platform/LocalTime.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora {

namespace {

struct ImageRequest {
    std::vector<std::string> names;  ///< files and folders, as for the command "check"
    std::string output;              ///< where the one is written; standard output when empty
    std::string outputFolder;        ///< where each is written, named after its file; not with `output`
    bool json = false;
};

constexpr std::string_view DumpEnding = ".mem";

void Save(const std::string& path, const std::string& dump, bool inFolder)
{
    if (!inFolder) {
        PosixFiles files;
        SaveTextFileUnasked(files, path, dump);
        return;
    }
    MakeFolderOf(path);
    ReplaceFile(path, dump + "\r\n");
}

// What becomes of an accepted setup.
Told TellImage(const PlacedSetup& setup, const SetupDocument& document, const ImageRequest& request)
{
    const std::string& path = setup.name.path;
    const MessageCatalogue english;
    if (const auto refusal = RefusalFor(document))
        return ToldOf(path, Unusable(OneLineText(Describe(english, *refusal))), request.json);
    const FlashImage image = std::get<FlashImage>(BuildSetupImage(document, nullptr));
    const std::string dump =
        FormatFlashDump(DumpOfSetup(image, {{0, LocalTime()}, document.DeviceMap, {}}, path));
    Told told;
    std::vector<std::string> unheld;
    for (const UnheldSetting& setting : WhatTheDeviceCannotHold(document)) {
        unheld.push_back(OneLineText(Describe(english, setting)));
        told.err += FailureLine(path, unheld.back());
    }
    try {
        if (!setup.output.empty())
            Save(setup.output, dump, !request.outputFolder.empty());
    } catch (const FileError& error) {
        return ToldOf(path, NotWritten(path, error), request.json);
    }
    if (request.json)
        told.out = ImageJson(path, setup.output, dump, unheld);
    else if (setup.output.empty())
        told.out = dump;
    return told;
}

Told ImageOfFile(const PlacedSetup& setup, const ImageRequest& request)
{
    std::string text;
    SetupDocument document;
    const Verdict verdict = CheckSetup(setup.name, text, &document);
    return verdict.outcome == Verdict::Outcome::Accepted ? TellImage(setup, document, request)
                                                         : ToldOf(setup.name.path, verdict, request.json);
}

std::vector<PlacedSetup> Place(const ImageRequest& request, std::vector<FoundName> names)
{
    OutputPlaces places(OutputPlaces::Backup::Appended);
    std::vector<PlacedSetup> placed;
    for (FoundName& name : names)
        if (request.outputFolder.empty())
            placed.push_back({std::move(name), request.output});
        else
            placed.push_back(places.Take(name, PlaceInFolder(request.outputFolder, name, DumpEnding)));
    return placed;
}

// Writes the images as dumps; what a device would hold and the setup does not say is erased in them. What
// is replaced in `output` is kept as a save does, in `outputFolder` under its name and ".bak". Returns the
// exit code. Throws OutputError.
int Image(const ImageRequest& request, Console& console)
{
    const bool toFolder = !request.outputFolder.empty();
    if (toFolder && !request.output.empty())
        return Misused(console, "either --output or --output-folder");
    std::vector<FoundName> names = AllSetups(request.names, console.in);
    if (names.empty())
        return NothingFound(console);
    if (names.size() > 1 && (!request.output.empty() || !(toFolder || request.json)))
        return Misused(console, "several setups need --output-folder");
    return TellInOrder(
        Place(request, std::move(names)),
        [&](const PlacedSetup& setup) { return ImageOfFile(setup, request); }, console);
}

}  // namespace

void AddImageCommand(CLI::App& app, Console& console, int& exitCode)
{
    const auto request = std::make_shared<ImageRequest>();
    CLI::App* command = app.add_subcommand("image", "Write the flash images of setup files as dumps");
    command->add_option("FILE", request->names, SetupNamesText)->type_name("")->required();
    AddPath(*command, "-o,--output", request->output, "OUT",
            "Write the one image to that file; its old content is kept as \".bak\"");
    AddPath(*command, "--output-folder", request->outputFolder, "FOLDER",
            "Write an image of each setup into that folder, named after its file; one that is replaced is "
            "kept under its name and \".bak\"");
    command->add_flag("--json", request->json, "Print an object a line for every file");
    command->callback([request, &console, &exitCode] { exitCode = Image(*request, console); });
}

}  // namespace kelvora
