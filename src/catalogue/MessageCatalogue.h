// The texts of the program in one language, looked up by number in the text of a message file:
//   first line   000, Dravon Messages_           (_ a blank; every line ends with CR LF)
//   others       ddd, text_                      ddd: the number in three digits; the blank ends the text
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "catalogue/Messages.h"

namespace kelvora {

/// The first 23 characters of every message file.
inline constexpr std::string_view CatalogueHeader = "000, Dravon Messages \r\n";

/// A message is looked for in that many characters after its number.
inline constexpr std::size_t MaximumMessageLength = 128;

class MessageCatalogue {
public:
    /// A catalogue without texts: captions show their fallbacks.
    MessageCatalogue();

    /// `text` is a whole message file, `language` its three-letter code.
    MessageCatalogue(std::string text, std::string language);

    /// The text of a message with its closing blank, or a text that says that it was not found.
    std::string Lookup(std::int16_t id) const;

    /// Whether the catalogue has that message.
    bool Has(std::int16_t id) const { return StartOf(id) != 0; }

    /// A caption: the text without its closing blank, the fallback where the catalogue has none.
    std::string Caption(const MessageId& message) const;

    /// Like Caption, with the closing blank kept ("Key " before a number).
    std::string Word(const MessageId& message) const;

    const std::string& Language() const { return language_; }

private:
    std::uint32_t StartOf(std::int16_t id) const;
    std::string_view Find(std::int16_t id) const;

    std::string text_;
    std::string language_;
    std::array<std::uint32_t, 1000> starts_{};  ///< where the text of each number starts; 0 for none
};

}  // namespace kelvora
