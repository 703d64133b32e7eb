#include "cli/Format.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "app/TextFiles.h"
#include "cli/Verdict.h"
#include "platform/posix/PosixFiles.h"
#include "setup/SetupWriter.h"

namespace kelvora {

namespace {

// Writes the text as a save does: both ways end it with a line of its own.
void Save(const std::string& text, const FormatRequest& request, Console& console)
{
    PosixFiles files;
    if (request.output.empty())
        Emit(console, text + "\r\n");
    else
        SaveTextFile(files, request.output, text);
}

}  // namespace

int Format(const FormatRequest& request, Console& console)
{
    const auto document = AcceptedSetup(request.file, console.err);
    if (!document)
        return ExitCode::Rejected;
    try {
        Save(WriteSetup(document->Modules), request, console);
        return ExitCode::Done;
    } catch (const FileError& error) {
        console.err << FailureLine(error.Path(), error.what());
    }
    return ExitCode::Rejected;
}

void AddFormatCommand(CLI::App& app, Console& console, int& exitCode)
{
    const auto request = std::make_shared<FormatRequest>();
    CLI::App* command = app.add_subcommand("format", "Write a setup file as the program saves it");
    command->add_option("FILE", request->file, "Setup file")->type_name("")->required();
    command
        ->add_option("-o,--output", request->output,
                     "Write to that file, which may be FILE itself; its old content is kept as \".bak\"")
        ->type_name("OUT");
    command->callback([request, &console, &exitCode] { exitCode = Format(*request, console); });
}

}  // namespace kelvora
