// Message boxes made of catalogue texts.
#pragma once

#include <cstdint>
#include <string_view>

#include "app/MessageCatalogue.h"
#include "platform/Prompt.h"

namespace kelvora {

inline constexpr std::string_view ProductName = "Kelvora";

/// Shows a box titled with the text of `titleId` (the product name when that is 0 or empty), whose body is
/// the text of `messageId` (none when 0) and, on a line of its own, `extra` where given.
Answer ShowMessage(const MessageCatalogue& catalogue, Prompt& prompt, std::int16_t titleId,
                   std::int16_t messageId, std::string_view extra, BoxStyle style);

/// How the catalogue's questions 201 and 203 are shown: Yes and No, No being the default.
inline constexpr BoxStyle YesNoStyle{BoxIcon::Question, BoxButtons::YesNo, Answer::No};

/// How question 202 is shown.
inline constexpr BoxStyle YesNoCancelStyle{BoxIcon::Question, BoxButtons::YesNoCancel, Answer::Yes};

}  // namespace kelvora
