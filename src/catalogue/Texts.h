// What the windows say: the texts of the language that is spoken now, and message boxes made of them.
#pragma once

#include <string_view>

#include "catalogue/MessageCatalogue.h"
#include "platform/Files.h"
#include "platform/Prompt.h"

namespace kelvora {

inline constexpr std::string_view ProductName = "Kelvora";

/// A question whose default is No.
inline constexpr BoxStyle YesNoStyle{BoxIcon::Question, BoxButtons::YesNo, Answer::No};

/// Whether to save first: Cancel leaves all as it is.
inline constexpr BoxStyle YesNoCancelStyle{BoxIcon::Question, BoxButtons::YesNoCancel, Answer::Yes};

class Texts {
public:
    /// `prompt` outlives the object. It speaks English until it is told to speak something else.
    explicit Texts(Prompt& prompt) : prompt_(prompt) {}

    const MessageCatalogue& Catalogue() const { return catalogue_; }
    void Speak(MessageCatalogue catalogue);

    std::string Caption(const MessageId& message) const { return catalogue_.Caption(message); }
    std::string Word(const MessageId& message) const { return catalogue_.Word(message); }

    /// For those who bring texts of their own.
    Prompt& Boxes() const { return prompt_; }

    /// Shows a message of the catalogue under the text of `title`, the product's name where that is empty;
    /// `extra` stands on lines of its own below it.
    Answer Show(const MessageId& message, BoxStyle style, std::string_view extra = {},
                const MessageId& title = {}) const;

    /// Shows a message about a file, with its path and why on lines below it.
    void TellOf(const MessageId& message, const FileError& error) const;

    /// Shows a text that was made of others, under the product's name or under a title of its own.
    Answer Tell(std::string_view text, BoxStyle style, std::string_view title = ProductName) const;

private:
    Prompt& prompt_;
    MessageCatalogue catalogue_;
};

}  // namespace kelvora
