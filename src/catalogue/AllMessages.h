// All texts of Messages.h in one list: for what makes the English catalogue and what judges the languages.
#pragma once

#include <array>

#include "catalogue/Messages.h"

namespace kelvora {

/// By topic, as the rows stand.
inline constexpr auto AllMessages = std::to_array<MessageId>({
#define KELVORA_MESSAGE(name, ...) Message::name,
#include "messages/all.inc"
#undef KELVORA_MESSAGE
});

}  // namespace kelvora
