// The choice of language at the start: which files say it, what they set, and the texts that follow from it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/MessageCatalogue.h"
#include "platform/Files.h"
#include "platform/Prompt.h"
#include "setup/PosCfg.h"

namespace kelvora {

/// Where the language files are looked for. Folders without a closing "/".
struct LanguageFolders {
    std::string program;  ///< holds the message files and the help; the ini files stand one folder up
    std::string person;   ///< a person's own ini files, read in their place where present; empty for none
};

/// Languages that the program has a message file for, by their codes.
inline constexpr std::string_view DefaultLanguage = "ENG";
inline constexpr std::string_view Italian = "ITA";

/// The path of the selection file to read: the person's own where there is one.
std::string LanguageSelectionFile(const Files& files, const LanguageFolders& folders);

/// Where a person's own choice of language is written, and its text.
std::string PersonalSelectionFile(const LanguageFolders& folders);
std::string LanguageSelectionText(std::string_view language);

/// Reads the choice, then the language's port defaults into `main`, then its message file.
/// Choice or defaults that cannot be read give a warning and leave the built-in ones, English among them.
/// Without a valid message file the user is told and nothing comes back: the program cannot go on.
std::optional<MessageCatalogue> LoadLanguage(const Files& files, Prompt& prompt,
                                             const LanguageFolders& folders, PosCfg& main);

/// The message file of a language, and its catalogue; nothing, after a message, when it is not a valid one.
std::string MessageFile(const LanguageFolders& folders, std::string_view language);
std::optional<MessageCatalogue> LoadCatalogue(const Files& files, Prompt& prompt,
                                              const LanguageFolders& folders, const std::string& language);

/// The folder of a language's help pages, the counterpart of a help file beside the program.
std::string HelpFolder(const LanguageFolders& folders, std::string_view language);

}  // namespace kelvora
