#include "cli/Format.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "app/TextFiles.h"
#include "cli/SetupJson.h"
#include "cli/Verdict.h"
#include "platform/Encoding.h"
#include "platform/posix/PosixFiles.h"
#include "setup/SetupWriter.h"

namespace kelvora {

namespace {

// What the command did, as an object: the text itself where it was not written to a file.
std::string FormatJson(const FormatRequest& request, const Verdict& verdict, const std::string& text)
{
    const bool accepted = verdict.outcome == Verdict::Outcome::Accepted;
    const bool written = accepted && !request.output.empty();
    nlohmann::ordered_json object = VerdictObject(request.file, verdict);
    object["output"] = written ? nlohmann::ordered_json(Utf8FromPath(request.output)) : nullptr;
    object["text"] = accepted && !written ? nlohmann::ordered_json(Utf8FromText(text)) : nullptr;
    return object.dump() + "\n";
}

}  // namespace

int Format(const FormatRequest& request, Console& console)
{
    std::string text;
    SetupDocument document;
    const Verdict verdict = CheckSetupFile(request.file, text, &document);
    console.err << VerdictLine(request.file, verdict);
    const bool accepted = verdict.outcome == Verdict::Outcome::Accepted;
    if (accepted) {
        text = WriteSetup(document.Modules);
        try {
            PosixFiles files;
            if (!request.output.empty())
                SaveTextFile(files, request.output, text);
        } catch (const FileError& error) {
            return Refuse(request.json, error.Path(), error.what(), console);
        }
        // As a save does: the text ends with a line of its own.
        text += "\r\n";
    }
    if (request.json)
        Emit(console, FormatJson(request, verdict, text));
    else if (accepted && request.output.empty())
        Emit(console, text);
    return accepted ? ExitCode::Done : ExitCode::Rejected;
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
    command->add_flag("--json", request->json, "Print the result as an object on one line");
    command->callback([request, &console, &exitCode] { exitCode = Format(*request, console); });
}

}  // namespace kelvora
