#include "cli/Image.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "app/FlashTexts.h"
#include "app/TextFiles.h"
#include "cli/FlashJson.h"
#include "cli/LineReport.h"
#include "cli/SetupJson.h"
#include "cli/Verdict.h"
#include "flash/DumpText.h"
#include "flash/SetupImage.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora {

namespace {

// The dump of a setup's image; nothing, after a diagnostic, when it cannot be built.
std::optional<std::string> DumpOf(const ImageRequest& request, const SetupDocument& document,
                                  std::vector<std::string>& unheld, Console& console)
{
    const MessageCatalogue english;
    const auto built = BuildSetupImage(document, nullptr);
    if (const auto* const refusal = std::get_if<BuildRefusal>(&built)) {
        Refuse(request.json, request.file, OneLineText(Describe(english, *refusal)), console);
        return std::nullopt;
    }
    for (const UnheldSetting& setting : WhatTheDeviceCannotHold(document)) {
        unheld.push_back(OneLineText(Describe(english, setting)));
        console.err << FailureLine(request.file, unheld.back());
    }
    return FormatDump(0, std::get<FlashImage>(built));
}

}  // namespace

int Image(const ImageRequest& request, Console& console)
{
    std::string text;
    SetupDocument document;
    const Verdict verdict = CheckSetupFile(request.file, text, &document);
    if (verdict.outcome != Verdict::Outcome::Accepted) {
        console.err << VerdictLine(request.file, verdict);
        if (request.json)
            Emit(console, VerdictJson(request.file, verdict));
        return ExitCode::Rejected;
    }
    std::vector<std::string> unheld;
    const auto dump = DumpOf(request, document, unheld, console);
    if (!dump)
        return ExitCode::Rejected;
    try {
        PosixFiles files;
        if (!request.output.empty())
            SaveTextFile(files, request.output, *dump);
    } catch (const FileError& error) {
        return Refuse(request.json, error.Path(), error.what(), console);
    }
    if (request.json)
        Emit(console, ImageJson(request.file, request.output, *dump, unheld));
    else if (request.output.empty())
        Emit(console, *dump);
    return ExitCode::Done;
}

void AddImageCommand(CLI::App& app, Console& console, int& exitCode)
{
    const auto request = std::make_shared<ImageRequest>();
    CLI::App* command = app.add_subcommand("image", "Write the flash image of a setup file as a dump");
    command->add_option("FILE", request->file, "Setup file")->type_name("")->required();
    command
        ->add_option("-o,--output", request->output,
                     "Write to that file; its old content is kept as \".bak\"")
        ->type_name("OUT");
    command->add_flag("--json", request->json, "Print the result as an object on one line");
    command->callback([request, &console, &exitCode] { exitCode = Image(*request, console); });
}

}  // namespace kelvora
