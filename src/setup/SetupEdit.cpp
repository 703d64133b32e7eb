#include "setup/SetupEdit.h"

#include <algorithm>
#include <cstdint>

#include "keymap/Keyboard.h"
#include "keymap/Models.h"
#include "setup/DeviceCode.h"
#include "setup/Options.h"

namespace kelvora {

namespace {

void SetOption(std::string& deviceMap, ModuleRecord& record, const ModuleOption& option)
{
    switch (option.what) {
        case SetupDifference::What::Fiscal:
            record.Options = option.value;
            break;
        case SetupDifference::What::Backlight:
            ChangeDeviceCode(
                deviceMap, record,
                option.value == Options::Yes ? DeviceCode::BacklightOn : DeviceCode::BacklightOff);
            break;
        case SetupDifference::What::Tracks:
            ChangeDeviceCode(deviceMap, record, CodeOfTracks(option.value));
            break;
        case SetupDifference::What::Separator:
            record.Options[Options::SeparatorAt + static_cast<std::size_t>(option.position) - 1] =
                option.value.front();
            break;
        case SetupDifference::What::Autoread:
            record.Options.replace(Options::AutoreadAt, std::string::npos, option.value);
            break;
        default:
            break;
    }
}

bool IsAllowed(std::uint8_t mask, char type)
{
    return (mask & KeyTypeBits[static_cast<std::size_t>(type - KeyType::Single)]) != 0;
}

// "single or double-vertical".
std::string AllowedText(std::uint8_t mask)
{
    std::vector<std::string_view> words;
    for (const char type :
         {KeyType::Single, KeyType::DoubleVertical, KeyType::DoubleHorizontal, KeyType::Quadruple})
        if (IsAllowed(mask, type))
            words.push_back(KeyTypeWord(type));
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i)
        text.append(i == 0 ? "" : i + 1 == words.size() ? " or " : ", ").append(words[i]);
    return text;
}

// Gives a key its type, as a key mapping form does. Empty, or why it may not have it.
std::string SetKey(std::string& map, int position, int columns, char type)
{
    char& present = map[static_cast<std::size_t>(position) - 1];
    if (type != KeyType::Unused) {
        // A form makes an unused key a used one before it offers types.
        if (present == KeyType::Unused)
            present = KeyType::Single;
        const std::uint8_t allowed = AllowedKeyTypes(position, columns, map);
        if (!IsAllowed(allowed, type))
            return "may only be " + AllowedText(allowed) + " here";
    }
    SetKeyType(position, type, columns, map);
    return {};
}

std::string SetKeys(ModuleRecord& record, int firstNumber, const SetupSetting& setting)
{
    const int lastNumber = firstNumber + record.Rows * record.Columns - 1;
    if (setting.firstKey < firstNumber || setting.lastKey > lastNumber)
        return "the " + std::string(KindName(record.Kind)) + " of this setup has the keys " +
               std::to_string(firstNumber) + " to " + std::to_string(lastNumber);
    for (int number = setting.firstKey; number <= setting.lastKey; ++number) {
        const int position = number - firstNumber + 1;
        const int cover = CoveringKey(position, record.Columns, record.KeyMap);
        const int owner = cover == 0 ? 0 : cover + firstNumber - 1;
        if (owner >= setting.firstKey)
            continue;
        std::string why;
        if (owner != 0)
            why = "is part of key " + std::to_string(owner);
        else if (!KeyType::HasKey(record.KeyMap[static_cast<std::size_t>(position) - 1]))
            why = "is none: the device has no key at this place";
        else
            why = SetKey(record.KeyMap, position, record.Columns, setting.option.value.front());
        if (!why.empty())
            return "key " + std::to_string(number) + " " + why;
    }
    return {};
}

std::string NoModule(ModuleKind kind)
{
    return "the setup has no " + std::string(KindName(kind));
}

std::string ApplySetting(SetupDocument& document, const SetupSetting& setting)
{
    const auto index = FindModule(document.Modules, setting.kind);
    if (!index)
        return NoModule(setting.kind);
    ModuleRecord& record = document.Modules[*index];
    if (setting.option.what == SetupDifference::What::Key)
        return SetKeys(record, FirstKeyNumber(record.Kind, document.Modules), setting);
    SetOption(document.DeviceMap, record, setting.option);
    return {};
}

bool Holds(const SetupDocument& document, const SetupCondition& condition)
{
    if (condition.module != ModuleKind::None)
        return FindModule(document.Modules, condition.module).has_value();
    SetupDocument set = document;
    return ApplySetting(set, condition.setting).empty() && set == document;
}

}  // namespace

std::string ApplyEdit(SetupDocument& document, const SetupEdit& edit)
{
    for (const ModuleRecord& source : edit.keys) {
        const auto index = FindModule(document.Modules, source.Kind);
        if (!index)
            return NoModule(source.Kind) + " for the keys";
        document.Modules[*index].KeyMap = source.KeyMap;
    }
    for (const SetupSetting& setting : edit.settings)
        if (const std::string why = ApplySetting(document, setting); !why.empty())
            return setting.name + ": " + why;
    return {};
}

bool HoldAll(const SetupDocument& document, std::span<const SetupCondition> conditions)
{
    return std::ranges::all_of(conditions, [&](const SetupCondition& condition) {
        return Holds(document, condition) != condition.isNegated;
    });
}

}  // namespace kelvora
