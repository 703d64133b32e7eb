#include "setup/SetupTexts.h"

#include <array>
#include <cstddef>
#include <vector>

#include "keymap/Models.h"
#include "platform/Joined.h"
#include "platform/NumberText.h"
#include "setup/Options.h"

namespace kelvora {

namespace {

// In the order of the enum.
constexpr std::array SetupChangeTexts{Message::ChangeAdded,     Message::ChangeRemoved,
                                      Message::ChangeOrder,     Message::ChangeUnknownModules,
                                      Message::ChangeTracks,    Message::ChangeSeparator,
                                      Message::ChangeAutoread,  Message::ChangeFiscal,
                                      Message::ChangeBacklight, Message::KeyWord};
static_assert(SetupChangeTexts.size() == static_cast<std::size_t>(SetupDifference::What::Last) + 1);

// The captions of the modules, by kind.
constexpr std::array ModuleTexts{MessageId{},           Message::MasterCaption, Message::BacklightCaption,
                                 Message::Code4Caption, Message::SlaveCaption,  Message::McrCaption,
                                 Message::IccrCaption};

// The names of kinds, one character of its code each.
std::string KindNames(const MessageCatalogue& catalogue, std::string_view kinds)
{
    std::vector<std::string> names;
    for (const char kind : kinds)
        names.push_back(ModuleCaption(catalogue, static_cast<ModuleKind>(kind)));
    return Joined(names, ", ");
}

std::string CodeTexts(const MessageCatalogue& catalogue, std::string_view codes)
{
    std::vector<std::string> texts;
    for (const char code : codes)
        texts.push_back(std::to_string(static_cast<std::uint8_t>(code)));
    return texts.empty() ? catalogue.Caption(Message::OptionNone) : Joined(texts, ", ");
}

std::string ValueText(const MessageCatalogue& catalogue, SetupDifference::What what, const std::string& value)
{
    switch (what) {
        case SetupDifference::What::Order:
            return KindNames(catalogue, value);
        case SetupDifference::What::UnknownModules:
            return CodeTexts(catalogue, value);
        case SetupDifference::What::Separator:
            return SeparatorText(catalogue, value.empty() ? Options::NoSeparator : value.front());
        case SetupDifference::What::Key:
            return KeyTypeText(catalogue, value.empty() ? KeyType::NoKey : value.front());
        case SetupDifference::What::Tracks:
            return std::string(Options::Tracks(value));
        default:
            return YesOrNo(catalogue, value == Options::Yes || value == Options::On);
    }
}

// "fiscal keyboard", "separator after track 2".
std::string SettingName(const MessageCatalogue& catalogue, SetupDifference::What what, int position)
{
    const MessageId& text = RowOf(SetupChangeTexts, what);
    return what == SetupDifference::What::Separator ? catalogue.Word(text) + std::to_string(position)
                                                    : catalogue.Caption(text);
}

// "Key 12", or "Key 12 -> 76" where its keyboard has moved.
std::string NumberedKey(const MessageCatalogue& catalogue, const SetupDifference& key)
{
    const std::string moved = key.numberBefore == key.numberAfter
                                  ? std::string()
                                  : std::to_string(key.numberBefore) + std::string(BecomesMark);
    return catalogue.Word(Message::KeyWord) + moved + std::to_string(key.numberAfter);
}

// One side of a difference; a covered key is part of its larger key, not unused.
std::string SideText(const MessageCatalogue& catalogue, SetupDifference::What what, const std::string& value,
                     int owner)
{
    return owner == 0 ? ValueText(catalogue, what, value)
                      : catalogue.Word(Message::ChangePartOfKey) + std::to_string(owner);
}

}  // namespace

std::string ModuleCaption(const MessageCatalogue& catalogue, ModuleKind kind)
{
    return kind == ModuleKind::None ? std::string() : catalogue.Caption(RowOf(ModuleTexts, kind));
}

std::string ModuleName(const MessageCatalogue& catalogue, ModuleKind kind)
{
    switch (kind) {
        case ModuleKind::KM096:
            return catalogue.Caption(Message::Keyb96Title);
        case ModuleKind::KM064:
            return catalogue.Caption(Message::Keyb64Title);
        case ModuleKind::MCR:
            return catalogue.Caption(Message::McrName);
        case ModuleKind::ICCR:
            return catalogue.Caption(Message::IccrName);
        default:
            return {};
    }
}

// "Slave Keyboard: ", or nothing.
std::string ModuleHeading(const MessageCatalogue& catalogue, ModuleKind kind, std::string_view mark)
{
    const std::string name = ModuleCaption(catalogue, kind);
    return name.empty() ? name : name + std::string(mark);
}

std::string KeyTypeText(const MessageCatalogue& catalogue, char type)
{
    switch (type) {
        case KeyType::Single:
            return catalogue.Caption(Message::KeyStateSingle);
        case KeyType::DoubleVertical:
            return catalogue.Caption(Message::KeyStateVertical);
        case KeyType::DoubleHorizontal:
            return catalogue.Caption(Message::KeyStateHorizontal);
        case KeyType::Quadruple:
            return catalogue.Caption(Message::KeyStateQuadruple);
        case KeyType::Unused:
            return catalogue.Caption(Message::KeyStateUnused);
        default:
            return catalogue.Caption(Message::KeyStateNoKey);
    }
}

std::string VisibleSeparator(char separator)
{
    const std::string code = HexText(static_cast<std::uint8_t>(separator), 2);
    return Options::IsSeparatorCarried(separator) ? std::string(1, separator) + " (" + code + ")" : code;
}

std::string SeparatorText(const MessageCatalogue& catalogue, char separator)
{
    return separator == Options::NoSeparator ? catalogue.Caption(Message::OptionNone)
                                             : VisibleSeparator(separator);
}

std::string YesOrNo(const MessageCatalogue& catalogue, bool yes)
{
    return catalogue.Caption(yes ? Message::ChangeYes : Message::ChangeNo);
}

std::string Describe(const MessageCatalogue& catalogue, const SetupDifference& difference)
{
    using What = SetupDifference::What;
    const What what = difference.what;
    if (what == What::Added || what == What::Removed)
        return ModuleHeading(catalogue, difference.kind, ": ") +
               catalogue.Caption(RowOf(SetupChangeTexts, what));
    const std::string name = what == What::Key ? NumberedKey(catalogue, difference)
                                               : SettingName(catalogue, what, difference.position);
    return ModuleHeading(catalogue, difference.kind, ", ") + name + ": " +
           SideText(catalogue, what, difference.before, difference.ownerBefore) + std::string(BecomesMark) +
           SideText(catalogue, what, difference.after, difference.ownerAfter);
}

std::string Describe(const MessageCatalogue& catalogue, const ModuleOption& option)
{
    return SettingName(catalogue, option.what, option.position) + ": " +
           ValueText(catalogue, option.what, option.value);
}

}  // namespace kelvora
