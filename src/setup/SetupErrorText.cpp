#include "setup/SetupErrorText.h"

#include <array>
#include <cstddef>

namespace kelvora {

namespace {

// In the order of Expected.
constexpr std::array ExpectedTexts{
    Message::ExpectedLineFeed,     Message::ExpectedSectionName,  Message::ExpectedMasterFirst,
    Message::ExpectedRoom,         Message::ExpectedOneOfAKind,   Message::ExpectedKeyAndValue,
    Message::ExpectedKnownKey,     Message::ExpectedKeyOfSection, Message::ExpectedYesOrNo,
    Message::ExpectedOnOrOff,      Message::ExpectedTracks,       Message::ExpectedSeparator,
    Message::ExpectedKeyMapSize,   Message::ExpectedWholeKeys,    Message::ExpectedKeyMapLetter,
    Message::ExpectedContinuation, Message::ExpectedLanguageCode,
};
static_assert(ExpectedTexts.size() == static_cast<std::size_t>(Expected::Last) + 1);

// "a second badge reader", in the order of ModuleKind.
constexpr std::array SecondTexts{
    Message::MapSecondKM096, Message::MapSecondBacklight, Message::MapSecondCode4,
    Message::MapSecondKM064, Message::MapSecondMCR,       Message::MapSecondICCR,
};

std::string MapReason(const MessageCatalogue& catalogue, const DeviceMapError& error)
{
    const ModuleKind kind = KindOf(error.Code());
    if (error.ExpectedHere() == Expected::OneOfAKind)
        return catalogue.Caption(SecondTexts.at(static_cast<std::size_t>(kind) - 1));
    if (error.ExpectedHere() == Expected::MasterFirst)
        return catalogue.Caption(Message::MapMasterLate);
    return kind == ModuleKind::Backlight
               ? catalogue.Caption(Message::MapPartAlone)
               : catalogue.Word(Message::ExpectedWord) + ExpectedText(catalogue, error);
}

}  // namespace

std::string DescribeMapError(const MessageCatalogue& catalogue, const DeviceMapError& error)
{
    return catalogue.Word(Message::MapPosition) + std::to_string(error.Position()) +
           catalogue.Word(Message::MapCode) + std::to_string(error.Code()) + ", " +
           MapReason(catalogue, error);
}

std::string ExpectedText(const MessageCatalogue& catalogue, const SetupError& error)
{
    return catalogue.Caption(ExpectedTexts.at(static_cast<std::size_t>(error.ExpectedHere())));
}

std::string DescribeSetupError(const MessageCatalogue& catalogue, const SetupError& error)
{
    const bool refused = error.Number() == SetupErrorNumber::ModuleRefused;
    std::string text = catalogue.Caption(refused ? Message::RejectedSection : Message::RejectedLine);
    text += "\r\n";
    if (error.Line() > 0)
        text += catalogue.Word(Message::LineWord) + std::to_string(error.Line()) + ": ";
    return text + catalogue.Word(Message::ExpectedWord) + ExpectedText(catalogue, error);
}

}  // namespace kelvora
