#include "flash/FlashTexts.h"

#include <array>
#include <cstddef>

#include "keymap/Models.h"
#include "platform/NumberText.h"
#include "setup/DeviceCode.h"
#include "setup/Options.h"
#include "setup/SetupTexts.h"

namespace kelvora {

namespace {

// Each in the order of its enum.
constexpr std::array RefusalTexts{Message::RefusedRepeatedKind, Message::RefusedUnknownModule};
constexpr std::array NoticeTexts{Message::TakenEmptyImage,    Message::TakenModulesDisagree,
                                 Message::TakenTableNotFound, Message::TakenErasedKey,
                                 Message::TakenInvalidKeyMap, Message::TakenSeparatorNotCarried};
constexpr std::array UnheldTexts{Message::UnheldKey, Message::UnheldSeparator};
constexpr std::array DumpTexts{Message::DumpForm,          Message::DumpDigits,        Message::DumpAddress,
                               Message::DumpCharacters,    Message::DumpMissingEnd,    Message::DumpAfterEnd,
                               Message::DumpDeviceMapSize, Message::DumpDeviceMapCode, Message::DumpKindForm,
                               Message::DumpCrcForm,       Message::DumpCrc,           Message::DumpMapCrc};
constexpr std::array ImageChangeTexts{Message::ChangeBytes,  Message::ChangeFiscal,
                                      Message::ChangeModule, Message::ChangeAutoread,
                                      Message::KeyWord,      Message::ChangeSeparator};
static_assert(RefusalTexts.size() == static_cast<std::size_t>(BuildRefusal::Reason::Last) + 1);
static_assert(NoticeTexts.size() == static_cast<std::size_t>(TakeNotice::What::Last) + 1);
static_assert(UnheldTexts.size() == static_cast<std::size_t>(UnheldSetting::What::Last) + 1);
static_assert(DumpTexts.size() == static_cast<std::size_t>(DumpFault::Last) + 1);
static_assert(ImageChangeTexts.size() == static_cast<std::size_t>(ImageDifference::What::Last) + 1);

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

std::string ModuleOfCode(const MessageCatalogue& catalogue, std::uint8_t code)
{
    return code == DeviceCode::NotInUse
               ? catalogue.Caption(Message::OptionNone)
               : ModuleHeading(catalogue, KindOf(code), " ") + CodeMeaning(catalogue, code);
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
            return SeparatorText(catalogue, value == 0 || static_cast<std::uint8_t>(value) == ErasedByte
                                                ? Options::NoSeparator
                                                : value);
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
    const std::string heading = ModuleHeading(catalogue, notice.kind, ": ");
    if (notice.what == TakeNotice::What::SeparatorNotCarried)
        return heading + catalogue.Word(text) + std::to_string(notice.track);
    return heading + catalogue.Caption(text);
}

std::string Describe(const MessageCatalogue& catalogue, const UnheldSetting& unheld)
{
    const bool isKey = unheld.what == UnheldSetting::What::Key;
    const std::string heading = ModuleHeading(catalogue, unheld.kind, ", ") +
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

std::string Describe(const MessageCatalogue& catalogue, const ImageDifference& difference)
{
    using What = ImageDifference::What;
    const std::string range = AddressRange(difference);
    const MessageId& text = RowOf(ImageChangeTexts, difference.what);
    if (difference.what == What::Bytes)
        return catalogue.Word(text) + range;
    const bool isNumbered = difference.what != What::Fiscal && difference.what != What::Autoread;
    return range + ": " + ModuleHeading(catalogue, difference.kind, ", ") +
           (isNumbered ? catalogue.Word(text) + std::to_string(difference.number) : catalogue.Caption(text)) +
           ": " + ChangeText(catalogue, difference);
}

}  // namespace kelvora
