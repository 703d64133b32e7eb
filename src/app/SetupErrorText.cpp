#include "app/SetupErrorText.h"

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

}  // namespace

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
