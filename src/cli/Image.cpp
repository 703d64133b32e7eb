#include "cli/Image.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <variant>

#include "app/FlashTexts.h"
#include "app/TextFiles.h"
#include "cli/LineReport.h"
#include "cli/Verdict.h"
#include "flash/DumpText.h"
#include "flash/SetupImage.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora {

int Image(const ImageRequest& request, Console& console)
{
    const auto document = AcceptedSetup(request.file, console.err);
    if (!document)
        return ExitCode::Rejected;
    const MessageCatalogue english;
    const auto built = BuildSetupImage(*document, nullptr);
    if (const auto* const refusal = std::get_if<BuildRefusal>(&built)) {
        console.err << FailureLine(request.file, OneLineText(Describe(english, *refusal)));
        return ExitCode::Rejected;
    }
    for (const UnheldSetting& unheld : WhatTheDeviceCannotHold(*document))
        console.err << FailureLine(request.file, OneLineText(Describe(english, unheld)));
    const std::string dump = FormatDump(0, std::get<FlashImage>(built));
    if (request.output.empty()) {
        Emit(console, dump);
        return ExitCode::Done;
    }
    try {
        PosixFiles files;
        SaveTextFile(files, request.output, dump);
        return ExitCode::Done;
    } catch (const FileError& error) {
        console.err << FailureLine(error.Path(), error.what());
    }
    return ExitCode::Rejected;
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
    command->callback([request, &console, &exitCode] { exitCode = Image(*request, console); });
}

}  // namespace kelvora
