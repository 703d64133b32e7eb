// The choice of language at the start: which files say it, what they set, and the texts that follow from it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "catalogue/Texts.h"
#include "platform/Files.h"
#include "platform/Prompt.h"
#include "setup/PosCfg.h"

namespace kelvora {

/// Where the language files are looked for. Folders without a closing "/".
struct LanguageFolders {
    std::string program;  ///< holds the message files and the help; the ini files stand one folder up
    std::string person;   ///< a person's own ini files, read in their place where present; empty for none
};

/// The code of the language that serves where another one cannot. All others are known by their files alone.
inline constexpr std::string_view DefaultLanguage = "ENG";

/// A language that can be chosen.
struct OfferedLanguage {
    std::string code;
    std::string name;  ///< in the language itself, with its mnemonic; the code where its texts do not say
};

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

/// The language that the program speaks, and the others that it could.
class Language {
public:
    /// All outlive the object. `texts` speaks what is chosen.
    Language(Files& files, Prompt& prompt, Texts& texts, LanguageFolders folders)
        : files_(files), prompt_(prompt), texts_(texts), folders_(std::move(folders))
    {
    }

    /// Takes the language that was chosen, and its port defaults into `main`; see LoadLanguage. False when
    /// the program cannot go on.
    bool Load(PosCfg& main);

    /// Speaks another language from now on and makes it the person's own choice. False, after a message, when
    /// that language's texts cannot be read; nothing has changed then. A choice that cannot be kept gives a
    /// message and holds for this run.
    bool Change(const std::string& code);

    /// The code of the language spoken.
    const std::string& Code() const { return texts_.Catalogue().Language(); }

    /// The languages that have both a message file and a settings file, by their codes. A damaged message
    /// file is among them: choosing it tells why it cannot be had.
    std::vector<OfferedLanguage> Offered() const;

    /// The folder of its help pages, the counterpart of a help file beside the program; the English ones
    /// where it has none.
    std::string HelpFolder() const;

private:
    Files& files_;
    Prompt& prompt_;
    Texts& texts_;
    LanguageFolders folders_;
};

}  // namespace kelvora
