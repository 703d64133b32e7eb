#include "setup/SetupWriter.h"

#include <array>
#include <string_view>

#include "keymap/Models.h"
#include "platform/TextLines.h"
#include "setup/DeviceCode.h"
#include "setup/KeyMapPicture.h"
#include "setup/Options.h"

namespace kelvora {

namespace {

void AppendLine(std::string& text, std::string_view key, std::string_view value)
{
    text.append(key).append(" = ").append(value).append(LineEnd);
}

void AppendMcrLines(std::string& text, const ModuleRecord& record)
{
    const std::string_view options = record.Options;
    AppendLine(text, "Tracks", options.substr(0, Options::TracksLength));
    constexpr std::array<std::string_view, 3> SeparatorKeys{"Track1Sep", "Track2Sep", "Track3Sep"};
    for (std::size_t track = 0; track < SeparatorKeys.size(); ++track) {
        const std::string_view separator = options.substr(Options::SeparatorAt + track, 1);
        if (separator.front() != Options::NoSeparator)
            AppendLine(text, SeparatorKeys.at(track), separator);
    }
    AppendLine(text, "Autoread", options.substr(Options::AutoreadAt));
}

void AppendModule(std::string& text, const ModuleRecord& record)
{
    // Without a head of its own a part's line belongs to the main keyboard's block before it.
    if (record.Kind != ModuleKind::None && !IsPart(record.Kind))
        text.append("[").append(KindName(record.Kind)).append("]").append(LineEnd);
    if (FindModel(record.Kind))
        AppendKeyMapPicture(text, record.KeyMap, record.Columns);
    if (record.Kind == ModuleKind::KM096)
        AppendLine(text, "Fiscal", record.Options);
    else if (record.Kind == ModuleKind::Backlight)
        AppendLine(text, "Backlight",
                   record.DeviceCode == DeviceCode::BacklightOn ? Options::Yes : Options::No);
    else if (record.Kind == ModuleKind::MCR)
        AppendMcrLines(text, record);
}

}  // namespace

std::string WriteSetup(std::span<const ModuleRecord> modules)
{
    std::string text = "[Kelvora]\r\nVersion = 2.0\r\n";
    for (const ModuleRecord& record : modules) {
        if (record.DeviceCode == DeviceCode::NotInUse)
            break;
        AppendModule(text, record);
    }
    return text;
}

}  // namespace kelvora
