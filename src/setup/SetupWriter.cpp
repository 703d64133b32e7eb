#include "setup/SetupWriter.h"

#include <array>
#include <string_view>

#include "setup/DeviceCode.h"
#include "setup/KeyMapPicture.h"
#include "setup/Options.h"

namespace kelvora {

namespace {

constexpr std::string_view LineEnd = "\r\n";

void AppendLine(std::string& text, std::string_view key, std::string_view value)
{
    text.append(key).append(" = ").append(value).append(LineEnd);
}

void AppendKeyboard(std::string& text, std::string_view head, const ModuleRecord& record)
{
    text.append(head).append(LineEnd);
    AppendKeyMapPicture(text, record.KeyMap, record.Columns);
}

void AppendMcr(std::string& text, const ModuleRecord& record)
{
    const std::string_view options = record.Options;
    text.append("[MCR]").append(LineEnd);
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
    switch (record.Kind) {
        case ModuleKind::KM096:
            AppendKeyboard(text, "[KM096]", record);
            AppendLine(text, "Fiscal", record.Options);
            break;
        case ModuleKind::Backlight:
            // Without a head of its own the line belongs to the main keyboard's block before it.
            AppendLine(text, "Backlight",
                       record.DeviceCode == DeviceCode::BacklightOn ? Options::Yes : Options::No);
            break;
        case ModuleKind::KM064:
            AppendKeyboard(text, "[KM064]", record);
            break;
        case ModuleKind::MCR:
            AppendMcr(text, record);
            break;
        case ModuleKind::ICCR:
            AppendKeyboard(text, "[ICCR]", record);
            break;
        case ModuleKind::Code4:
        case ModuleKind::None:
            break;
    }
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
