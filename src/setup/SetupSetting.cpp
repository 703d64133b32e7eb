#include "setup/SetupSetting.h"

#include <algorithm>
#include <array>
#include <optional>
#include <stdexcept>

#include "keymap/Models.h"
#include "platform/AsciiCase.h"
#include "platform/NumberText.h"
#include "setup/DeviceCode.h"
#include "setup/Options.h"

namespace kelvora {

namespace {

struct NamedOption {
    std::string_view name;
    SetupDifference::What what;
    ModuleKind kind;
    int track{};
};

constexpr std::array NamedOptions{
    NamedOption{"fiscal", SetupDifference::What::Fiscal, ModuleKind::KM096},
    NamedOption{"backlight", SetupDifference::What::Backlight, ModuleKind::Backlight},
    NamedOption{"mcr.tracks", SetupDifference::What::Tracks, ModuleKind::MCR},
    NamedOption{"mcr.separator1", SetupDifference::What::Separator, ModuleKind::MCR, 1},
    NamedOption{"mcr.separator2", SetupDifference::What::Separator, ModuleKind::MCR, 2},
    NamedOption{"mcr.separator3", SetupDifference::What::Separator, ModuleKind::MCR, 3},
    NamedOption{"mcr.autoread", SetupDifference::What::Autoread, ModuleKind::MCR},
};

struct NamedKeyType {
    std::string_view name;
    char type;
};

// The first name of a type is the one that is told.
constexpr std::array NamedKeyTypes{
    NamedKeyType{"single", KeyType::Single},
    NamedKeyType{"double-vertical", KeyType::DoubleVertical},
    NamedKeyType{"vertical", KeyType::DoubleVertical},
    NamedKeyType{"double-horizontal", KeyType::DoubleHorizontal},
    NamedKeyType{"horizontal", KeyType::DoubleHorizontal},
    NamedKeyType{"quadruple", KeyType::Quadruple},
    NamedKeyType{"unused", KeyType::Unused},
};

[[noreturn]] void Expect(std::string_view text, std::string_view expected)
{
    throw std::invalid_argument("\"" + std::string(text) + "\": expected " + std::string(expected));
}

std::optional<bool> YesOrNo(std::string_view word)
{
    if (word == "yes" || word == "on")
        return true;
    return word == "no" || word == "off" ? std::optional(false) : std::nullopt;
}

// The value as a record's options hold it. `word` is the value in small letters.
std::string OptionValue(SetupDifference::What what, std::string_view text, std::string_view value,
                        const std::string& word)
{
    if (what == SetupDifference::What::Tracks) {
        if (CodeOfTracks(value) == DeviceCode::NotInUse)
            Expect(text, "tracks 1,2 or 2,3 or 1,2,3");
        return std::string(value);
    }
    if (what == SetupDifference::What::Separator) {
        if (word == "none")
            return {Options::NoSeparator};
        if (value.size() != 1 || !Options::IsSeparatorCarried(value.front()))
            Expect(
                text,
                "one character that a setup file can carry (no blank, no small letter, no \"_\"), or none");
        return std::string(value);
    }
    const std::optional<bool> yes = YesOrNo(word);
    if (!yes)
        Expect(text, "yes or no");
    const bool isAutoread = what == SetupDifference::What::Autoread;
    return std::string(*yes ? (isAutoread ? Options::On : Options::Yes)
                            : (isAutoread ? Options::Off : Options::No));
}

// A number of "97..104", or of "43".
std::optional<int> KeyNumber(std::string_view text)
{
    const auto number = WholeNumber<int>(text);
    return number && *number > 0 ? number : std::nullopt;
}

// Nothing where the name is none of keys. `name` is in small letters; `text` is the whole.
std::optional<SetupSetting> NamedKeys(std::string_view name, std::string_view text)
{
    constexpr std::string_view Between = "..";
    const std::size_t dot = name.find('.');
    if (dot == std::string_view::npos)
        return std::nullopt;
    SetupSetting keys;
    keys.option.what = SetupDifference::What::Key;
    for (const Model& model : Models)
        if (LowerCase(KindName(model.kind)) == name.substr(0, dot))
            keys.kind = model.kind;
    const std::string_view numbers = name.substr(dot + 1);
    const std::size_t between = numbers.find(Between);
    const auto first = KeyNumber(numbers.substr(0, between));
    const auto last =
        between == std::string_view::npos ? first : KeyNumber(numbers.substr(between + Between.size()));
    if (keys.kind == ModuleKind::None)
        return std::nullopt;
    if (!first || !last || *last < *first)
        Expect(text, "numbers of keys from 1, such as 43, or 97..104 from the smaller one to the larger");
    keys.firstKey = *first;
    keys.lastKey = *last;
    return keys;
}

}  // namespace

SetupSetting ParseSetting(std::string_view text)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos)
        Expect(text, "NAME=VALUE, such as fiscal=no");
    const std::string name = LowerCase(text.substr(0, equals));
    const std::string_view value = text.substr(equals + 1);
    const std::string word = LowerCase(value);
    SetupSetting setting;
    const auto* const option = std::ranges::find(NamedOptions, name, &NamedOption::name);
    if (option != NamedOptions.end()) {
        setting.kind = option->kind;
        setting.option = {option->what, option->track, OptionValue(option->what, text, value, word)};
    } else if (const auto keys = NamedKeys(name, text)) {
        const auto* const type = std::ranges::find(NamedKeyTypes, word, &NamedKeyType::name);
        if (type == NamedKeyTypes.end())
            Expect(text, "single, double-vertical, double-horizontal, quadruple or unused");
        setting = *keys;
        setting.option.value = type->type;
    } else {
        Expect(text,
               "the name fiscal, backlight, mcr.tracks, mcr.separator1 to mcr.separator3, mcr.autoread, or "
               "keys such "
               "as KM096.43 or KM064.97..104");
    }
    setting.name = text.substr(0, equals);
    return setting;
}

SetupCondition ParseCondition(std::string_view text)
{
    SetupCondition condition;
    std::string_view rest = text;
    if (rest.starts_with('!')) {
        condition.isNegated = true;
        rest.remove_prefix(1);
    }
    if (rest.find('=') != std::string_view::npos) {
        condition.setting = ParseSetting(rest);
        return condition;
    }
    std::string name(rest);
    std::ranges::transform(name, name.begin(), AsciiUpper);
    condition.module = KindOfSection(name);
    if (condition.module == ModuleKind::None)
        Expect(text, "the module KM096, KM064, MCR or ICCR, or NAME=VALUE, such as fiscal=yes");
    return condition;
}

std::string_view KeyTypeWord(char type)
{
    const auto* const named = std::ranges::find(NamedKeyTypes, type, &NamedKeyType::type);
    return named == NamedKeyTypes.end() ? std::string_view() : named->name;
}

}  // namespace kelvora
