#include "app/FlashTexts.h"

#include <array>
#include <cstddef>
#include <string_view>

#include "keymap/Models.h"
#include "platform/HexText.h"
#include "setup/DeviceCode.h"
#include "setup/Options.h"

namespace kelvora {

namespace {

// Each in the order of its enum.
constexpr std::array RefusalTexts{Message::RefusedRepeatedKind, Message::RefusedUnknownModule};
constexpr std::array NoticeTexts{Message::TakenEmptyImage,    Message::TakenModulesDisagree,
                                 Message::TakenTableNotFound, Message::TakenErasedKey,
                                 Message::TakenInvalidKeyMap, Message::TakenSeparatorNotCarried};
constexpr std::array UnheldTexts{Message::UnheldKey, Message::UnheldSeparator};
constexpr std::array DumpTexts{Message::DumpForm,         Message::DumpDigits,     Message::DumpAddress,
                               Message::DumpCharacters,   Message::DumpMissingEnd, Message::DumpAfterEnd,
                               Message::DumpDeviceMapSize};
constexpr std::array SetupChangeTexts{Message::ChangeAdded,     Message::ChangeRemoved,
                                      Message::ChangeOrder,     Message::ChangeUnknownModules,
                                      Message::ChangeTracks,    Message::ChangeSeparator,
                                      Message::ChangeAutoread,  Message::ChangeFiscal,
                                      Message::ChangeBacklight, Message::KeyWord};
constexpr std::array ImageChangeTexts{Message::ChangeBytes,  Message::ChangeFiscal,
                                      Message::ChangeModule, Message::ChangeAutoread,
                                      Message::KeyWord,      Message::ChangeSeparator};
static_assert(RefusalTexts.size() == static_cast<std::size_t>(BuildRefusal::Reason::Last) + 1);
static_assert(NoticeTexts.size() == static_cast<std::size_t>(TakeNotice::What::Last) + 1);
static_assert(UnheldTexts.size() == static_cast<std::size_t>(UnheldSetting::What::Last) + 1);
static_assert(DumpTexts.size() == static_cast<std::size_t>(DumpFault::Last) + 1);
static_assert(SetupChangeTexts.size() == static_cast<std::size_t>(SetupDifference::What::Last) + 1);
static_assert(ImageChangeTexts.size() == static_cast<std::size_t>(ImageDifference::What::Last) + 1);

// The captions of the modules, by kind.
constexpr std::array ModuleTexts{MessageId{},           Message::MasterCaption, Message::BacklightCaption,
                                 Message::Code4Caption, Message::SlaveCaption,  Message::McrCaption,
                                 Message::IccrCaption};

constexpr std::string_view BecomesMark = " -> ";

template <std::size_t Count, class Row>
const MessageId& RowOf(const std::array<MessageId, Count>& texts, Row row)
{
    return texts.at(static_cast<std::size_t>(row));
}

// "Slave Keyboard: ", or nothing.
std::string Heading(const MessageCatalogue& catalogue, ModuleKind kind, std::string_view mark)
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

// A character that cannot be shown stands as its hexadecimal code.
std::string VisibleSeparator(char separator)
{
    return Options::IsSeparatorCarried(separator) ? std::string(1, separator)
                                                  : HexText(static_cast<std::uint8_t>(separator), 2);
}

std::string SeparatorText(const MessageCatalogue& catalogue, char separator)
{
    const auto byte = static_cast<std::uint8_t>(separator);
    const bool isNone = separator == Options::NoSeparator || byte == 0 || byte == ErasedByte;
    return isNone ? catalogue.Caption(Message::OptionNone) : VisibleSeparator(separator);
}

std::string YesOrNo(const MessageCatalogue& catalogue, bool yes)
{
    return catalogue.Caption(yes ? Message::ChangeYes : Message::ChangeNo);
}

// The names of kinds, one character of its code each.
std::string KindNames(const MessageCatalogue& catalogue, std::string_view kinds)
{
    std::string names;
    for (const char kind : kinds) {
        if (!names.empty())
            names += ", ";
        names += ModuleCaption(catalogue, static_cast<ModuleKind>(kind));
    }
    return names;
}

std::string CodeTexts(const MessageCatalogue& catalogue, std::string_view codes)
{
    std::string text;
    for (const char code : codes) {
        if (!text.empty())
            text += ", ";
        text += std::to_string(static_cast<std::uint8_t>(code));
    }
    return text.empty() ? catalogue.Caption(Message::OptionNone) : text;
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

// What a code says beside the kind of module.
std::string CodeMeaning(const MessageCatalogue& catalogue, std::uint8_t code)
{
    switch (code) {
        case DeviceCode::MCR12:
            return "1,2";
        case DeviceCode::MCR23:
            return "2,3";
        case DeviceCode::MCR123:
            return "1,2,3";
        case DeviceCode::BacklightOn:
        case DeviceCode::BacklightOff:
            return YesOrNo(catalogue, code == DeviceCode::BacklightOn);
        default:
            return std::to_string(code);
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

std::string ModuleOfCode(const MessageCatalogue& catalogue, std::uint8_t code)
{
    return code == DeviceCode::NotInUse
               ? catalogue.Caption(Message::OptionNone)
               : Heading(catalogue, KindOf(code), " ") + CodeMeaning(catalogue, code);
}

std::string ValueText(const MessageCatalogue& catalogue, ImageDifference::What what, char value)
{
    switch (what) {
        case ImageDifference::What::Key:
            return value == KeyType::NoKey ? catalogue.Caption(Message::KeyStateErased)
                                           : KeyTypeText(catalogue, value);
        case ImageDifference::What::Module:
            return ModuleOfCode(catalogue, static_cast<std::uint8_t>(value));
        case ImageDifference::What::Separator:
            return SeparatorText(catalogue, value);
        default:
            return YesOrNo(catalogue, value == '1');
    }
}

std::string AddressRange(const ImageDifference& difference)
{
    const std::string first = HexText(difference.first, 4);
    return difference.first == difference.last ? first : first + "-" + HexText(difference.last, 4);
}

// "single key -> unused", or what else has changed.
std::string ChangeText(const MessageCatalogue& catalogue, const ImageDifference& difference)
{
    const std::string before = ValueText(catalogue, difference.what, difference.before);
    const std::string after = ValueText(catalogue, difference.what, difference.after);
    if (difference.before != difference.after)
        return before + std::string(BecomesMark) + after;
    const bool isKey = difference.what == ImageDifference::What::Key;
    return after + ", " + catalogue.Caption(isKey ? Message::ChangeKeyCode : Message::ChangeOtherBits);
}

}  // namespace

std::string ModuleCaption(const MessageCatalogue& catalogue, ModuleKind kind)
{
    return kind == ModuleKind::None ? std::string() : catalogue.Caption(RowOf(ModuleTexts, kind));
}

std::string Describe(const MessageCatalogue& catalogue, const BuildRefusal& refusal)
{
    const std::string text = catalogue.Word(RowOf(RefusalTexts, refusal.reason));
    return text + (refusal.reason == BuildRefusal::Reason::RepeatedKind
                       ? ModuleCaption(catalogue, refusal.kind)
                       : std::to_string(refusal.position + 1));
}

std::string Describe(const MessageCatalogue& catalogue, const TakeNotice& notice)
{
    const MessageId& text = RowOf(NoticeTexts, notice.what);
    const std::string heading = Heading(catalogue, notice.kind, ": ");
    if (notice.what == TakeNotice::What::SeparatorNotCarried)
        return heading + catalogue.Word(text) + std::to_string(notice.track);
    return heading + catalogue.Caption(text);
}

std::string Describe(const MessageCatalogue& catalogue, const UnheldSetting& unheld)
{
    const bool isKey = unheld.what == UnheldSetting::What::Key;
    const std::string heading = Heading(catalogue, unheld.kind, ", ") +
                                catalogue.Word(isKey ? Message::KeyWord : Message::ChangeSeparator) +
                                std::to_string(unheld.number) + ": ";
    if (isKey && !KeyType::HasKey(unheld.value))
        return heading + catalogue.Caption(Message::UnheldNoKey);
    return heading + catalogue.Word(RowOf(UnheldTexts, unheld.what)) +
           (isKey ? KeyTypeText(catalogue, unheld.value) : VisibleSeparator(unheld.value));
}

std::string Describe(const MessageCatalogue& catalogue, const DumpError& error)
{
    const bool namesAddress = error.Fault() == DumpFault::Address || error.Fault() == DumpFault::MissingEnd;
    return catalogue.Caption(Message::DumpRejected) + "\r\n" + catalogue.Word(Message::LineWord) +
           std::to_string(error.Line()) + ": " + catalogue.Word(RowOf(DumpTexts, error.Fault())) +
           (namesAddress ? DumpAddress(error.Address()) : std::string());
}

std::string Describe(const MessageCatalogue& catalogue, const SetupDifference& difference)
{
    using What = SetupDifference::What;
    const What what = difference.what;
    if (what == What::Added || what == What::Removed)
        return Heading(catalogue, difference.kind, ": ") + catalogue.Caption(RowOf(SetupChangeTexts, what));
    const std::string name = what == What::Key ? NumberedKey(catalogue, difference)
                                               : SettingName(catalogue, what, difference.position);
    return Heading(catalogue, difference.kind, ", ") + name + ": " +
           SideText(catalogue, what, difference.before, difference.ownerBefore) + std::string(BecomesMark) +
           SideText(catalogue, what, difference.after, difference.ownerAfter);
}

std::string Describe(const MessageCatalogue& catalogue, const ModuleOption& option)
{
    return SettingName(catalogue, option.what, option.position) + ": " +
           ValueText(catalogue, option.what, option.value);
}

std::string Describe(const MessageCatalogue& catalogue, const ImageDifference& difference)
{
    using What = ImageDifference::What;
    const std::string range = AddressRange(difference);
    const MessageId& text = RowOf(ImageChangeTexts, difference.what);
    if (difference.what == What::Bytes)
        return catalogue.Word(text) + range;
    const bool isNumbered = difference.what != What::Fiscal && difference.what != What::Autoread;
    return range + ": " + Heading(catalogue, difference.kind, ", ") +
           (isNumbered ? catalogue.Word(text) + std::to_string(difference.number) : catalogue.Caption(text)) +
           ": " + ChangeText(catalogue, difference);
}

}  // namespace kelvora
