// Every text that the program shows, by its number in the message catalogue. messages/ has them by topic, a
// row each:
//
//     KELVORA_MESSAGE(FileMenuNew, 301, "&New")
//     KELVORA_MESSAGE(FileMenuOpen, 302, "&Open...", "&Open")
//
// Name, number of three digits, English: ASCII, at most 125 characters without the closing blank; longer
// texts take several numbers, joined. "&" marks a caption's mnemonic. A second text stands where the system
// gives one of its own, which serves without a catalogue. The English catalogue is made of these rows.
#pragma once

#include <string_view>

namespace kelvora {

struct MessageId {
    int id;
    std::string_view text;             ///< the English of the catalogue
    std::string_view fallback = text;  ///< serves where the catalogue has none
};

/// Whether a number is one of the program's additions; all others are the system's own.
constexpr bool IsOwnMessage(int id)
{
    return id >= 600 || (id >= 430 && id < 520) || (id >= 120 && id < 200);
}

namespace Message {

#define KELVORA_MESSAGE(name, ...) inline constexpr MessageId name{__VA_ARGS__};
#include "messages/all.inc"
#undef KELVORA_MESSAGE

}  // namespace Message

}  // namespace kelvora
