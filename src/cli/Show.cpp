// The command "show": the modules of setup files, with their options and key grids.
#include "cli/Show.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/KeyGridText.h"
#include "cli/SetupJson.h"
#include "cli/SetupNames.h"
#include "cli/Told.h"
#include "cli/Verdict.h"
#include "keymap/Models.h"
#include "platform/Encoding.h"
#include "setup/DeviceCode.h"
#include "setup/Options.h"

namespace kelvora {

namespace {

struct ShowRequest {
    std::vector<std::string> names;  ///< files and folders, as for the command "check"
    bool json = false;
};

constexpr std::string_view GridIndent = "  ";
constexpr std::size_t NameWidth = 31;

std::string_view ModuleName(ModuleKind kind)
{
    switch (kind) {
        case ModuleKind::KM096:
            return "KM096 main keyboard";
        case ModuleKind::Backlight:
            return "Backlight";
        case ModuleKind::Code4:
            return "Display and key lock";
        case ModuleKind::KM064:
            return "KM064 extension keyboard";
        case ModuleKind::MCR:
            return "MCR badge reader";
        case ModuleKind::ICCR:
            return "ICCR chip card unit";
        case ModuleKind::None:
            break;
    }
    return "";
}

std::string_view OnOff(bool on)
{
    return on ? "on" : "off";
}

std::string SeparatorText(char separator)
{
    if (separator == Options::NoSeparator)
        return "none";
    const auto code = static_cast<unsigned char>(separator);
    if (code > 0x20 && code != 0x7F)
        return Utf8FromText({&separator, 1});
    std::array<char, sizeof "0x00"> text{};
    std::snprintf(text.data(), text.size(), "0x%02X", static_cast<unsigned>(code));
    return text.data();
}

std::string McrText(std::string_view options)
{
    std::string text("tracks ");
    text += Options::Tracks(options);
    text += ", separators";
    for (std::size_t track = 0; track < 3; ++track)
        text += " " + SeparatorText(options[Options::SeparatorAt + track]);
    text += ", auto-read ";
    return text.append(OnOff(options.substr(Options::AutoreadAt) == Options::On));
}

std::string KeysText(const ModuleRecord& record, int firstKeyNumber)
{
    return "keys " + std::to_string(firstKeyNumber) + " to " +
           std::to_string(firstKeyNumber + record.Rows * record.Columns - 1);
}

std::string DetailText(const ModuleRecord& record, int firstKeyNumber)
{
    switch (record.Kind) {
        case ModuleKind::KM096:
            return KeysText(record, firstKeyNumber) + ", fiscal keyboard " +
                   (record.Options == Options::Yes ? "yes" : "no");
        case ModuleKind::Backlight:
            return std::string(OnOff(record.DeviceCode == DeviceCode::BacklightOn));
        case ModuleKind::MCR:
            return McrText(record.Options);
        case ModuleKind::KM064:
        case ModuleKind::ICCR:
            return KeysText(record, firstKeyNumber);
        case ModuleKind::Code4:
        case ModuleKind::None:
            break;
    }
    return {};
}

std::string ModuleText(const ModuleRecord& record, int firstKeyNumber)
{
    std::string name(ModuleName(record.Kind));
    name += " (" + std::to_string(record.DeviceCode) + ")";
    std::string text = name + "\n";
    if (const std::string detail = DetailText(record, firstKeyNumber); !detail.empty()) {
        name.resize(std::max(name.size(), NameWidth), ' ');
        text = name + "  " + detail + "\n";
    }
    if (FindModel(record.Kind))
        text += KeyGridText(record, firstKeyNumber, GridIndent);
    return text;
}

Told ShowFile(const FoundName& name, bool json)
{
    std::string text;
    SetupDocument document;
    const Verdict verdict = CheckSetup(name, text, &document);
    if (verdict.outcome != Verdict::Outcome::Accepted)
        return ToldOf(name.path, verdict, json);
    return {json ? SetupJson(name.path, document) : name.path + "\n" + SetupText(document), {}};
}

// Prints the setups in the order of the names; a file that is rejected or cannot be read gives a
// diagnostic. Returns the exit code. Throws OutputError.
int Show(const ShowRequest& request, Console& console)
{
    const std::vector<FoundName> names = AllSetups(request.names, console.in);
    if (names.empty())
        return NothingFound(console);
    return TellInOrder(
        names, [&](const FoundName& name) { return ShowFile(name, request.json); }, console,
        request.json ? "" : "\n");
}

}  // namespace

std::string SetupText(const SetupDocument& document)
{
    std::string text;
    for (const ModuleRecord& record : document.Modules)
        text += ModuleText(record, FirstKeyNumber(record.Kind, document.Modules));
    return text.empty() ? "no modules\n" : text;
}

void AddShowCommand(CLI::App& app, Console& console, int& exitCode)
{
    const auto request = std::make_shared<ShowRequest>();
    CLI::App* command =
        app.add_subcommand("show", "Show the modules of setup files, with their options and keys");
    command->add_option("FILE", request->names, SetupNamesText)->type_name("")->required();
    command->add_flag("--json", request->json, "Print an object a line for every file");
    command->footer("The number of an unused key stands in brackets, a module's device code after its name.");
    command->callback([request, &console, &exitCode] { exitCode = Show(*request, console); });
}

}  // namespace kelvora
