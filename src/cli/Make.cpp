// The command "make": a setup file from the JSON of a setup.
#include <CLI/CLI.hpp>
#include <array>
#include <cerrno>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <system_error>

#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/SetupFromJson.h"
#include "cli/SetupJson.h"
#include "cli/SetupOutput.h"
#include "platform/Encoding.h"
#include "platform/TextFiles.h"
#include "platform/posix/PosixFiles.h"
#include "platform/posix/Replacement.h"
#include "setup/SetupWriter.h"

namespace kelvora {

namespace {

struct MakeRequest {
    std::string name;    ///< a file, or "-" for standard input
    std::string output;  ///< where the setup is written; standard output when empty
    bool json = false;
};

using Json = nlohmann::ordered_json;

// Throws FileError.
std::string ReadInput(std::istream& in)
{
    constexpr std::size_t AtOnce = 65536;
    std::string text;
    std::array<char, AtOnce> part{};
    while (in.read(part.data(), part.size()) || in.gcount() > 0) {
        text.append(part.data(), static_cast<std::size_t>(in.gcount()));
        if (text.size() > MaximumFileSize)
            throw FileError(std::string(StandardInputName), std::generic_category().message(EFBIG));
    }
    return text;
}

// What comes of a text: the setup's, or why there is none and where.
struct Made {
    Verdict verdict{};
    std::optional<std::string> pointer{};
    std::string setup{};
};

Made MakeSetup(const MakeRequest& request, Console& console)
{
    try {
        const bool isInput = request.name == StandardInputName;
        const std::string text = isInput ? ReadInput(console.in) : PosixFiles().Read(request.name);
        Made made;
        made.setup = WriteSetup(SetupFromJson(text).Modules);
        if (!request.output.empty())
            WriteSetupFile(request.output, made.setup);
        return made;
    } catch (const FileError& error) {
        return {NotWritten(request.name, error)};
    } catch (const JsonError& error) {
        const std::string at = error.Pointer().empty() ? std::string() : error.Pointer() + ": ";
        return {Unusable(at + error.what()), error.Pointer()};
    }
}

// Writes the setup as the program saves it; a file that is replaced is kept as ".bak". Nothing is written of
// what is no setup. Returns the exit code. Throws OutputError.
int Make(const MakeRequest& request, Console& console)
{
    if (IsSameFile(request.name, request.output))
        return Misused(console, "the setup would be written over its JSON");
    const Made made = MakeSetup(request, console);
    const bool isMade = made.verdict.outcome == Verdict::Outcome::Accepted;
    const bool isWritten = isMade && !request.output.empty();
    const std::string text = isMade ? made.setup + std::string(SavedFileEnd) : std::string();
    console.err << VerdictLine(request.name == StandardInputName ? "standard input" : request.name,
                               made.verdict);
    if (request.json) {
        Json object = VerdictObject(request.name, made.verdict);
        object["pointer"] = made.pointer ? Json(*made.pointer) : Json();
        object["output"] = isWritten ? Json(Utf8FromPath(request.output)) : Json();
        object["text"] = isMade && !isWritten ? Json(Utf8FromText(text)) : Json();
        Emit(console, object.dump() + "\n");
    } else if (!isWritten) {
        Emit(console, text);
    }
    return isMade ? ExitCode::Done : ExitCode::Rejected;
}

}  // namespace

void AddMakeCommand(CLI::App& app, Console& console, int& exitCode)
{
    const auto request = std::make_shared<MakeRequest>();
    CLI::App* command = app.add_subcommand("make", "Write a setup file from JSON, as show --json prints it");
    command->add_option("JSON", request->name, "JSON of one setup; - for standard input")
        ->type_name("")
        ->required();
    AddPath(*command, "-o,--output", request->output, "OUT",
            "Write the setup to that file; its old content is kept as \".bak\"");
    command->add_flag("--json", request->json, "Print the result as an object on one line");
    command->footer(
        "What is no setup is told with the JSON pointer to the value, and nothing is written.\n"
        "The schema is /opt/kelvora/share/setup.schema.json.");
    command->callback([request, &console, &exitCode] { exitCode = Make(*request, console); });
}

}  // namespace kelvora
