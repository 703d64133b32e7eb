#include "windows/Language.h"

#include "platform/Encoding.h"
#include "setup/SetupError.h"
#include "setup/SetupErrorText.h"
#include "setup/TextConfiguration.h"

namespace kelvora {

namespace {

// The texts that are needed before, or instead of, a message file.
struct StartTexts {
    std::string_view settingsFailed, contactIfPersistent, catalogueFailed;
};

constexpr StartTexts EnglishStart{"system file error - program defaults will be used",
                                  "(if problem persists, contact customer support)",
                                  "localization file error - contact customer support"};
constexpr StartTexts ItalianStart{"errore file di sistema - default di programma verrano usati",
                                  "(se il problema si ripete, contattare assistenza tecnica)",
                                  "errore file di localizzazione - contattare assistenza tecnica"};

const StartTexts& TextsOf(std::string_view language)
{
    return language == Italian ? ItalianStart : EnglishStart;
}

std::string StartTitle()
{
    return std::string(ProductName) + " setup file";
}

std::string_view ProgramParent(const LanguageFolders& folders)
{
    const std::string_view program = folders.program;
    const std::size_t slash = program.rfind('/');
    return slash == std::string_view::npos ? std::string_view(".") : program.substr(0, slash);
}

std::string PersonalOrShared(const Files& files, const LanguageFolders& folders, const std::string& name)
{
    if (!folders.person.empty()) {
        std::string personal = folders.person + "/" + name;
        if (files.Exists(personal))
            return personal;
    }
    return std::string(ProgramParent(folders)) + "/" + name;
}

void WarnOfDefaults(Prompt& prompt, std::string_view language, const std::string& description)
{
    const StartTexts& texts = TextsOf(language);
    prompt.Show(StartTitle(),
                description + "\r\n" + std::string(texts.settingsFailed) + "\r\n" +
                    std::string(texts.contactIfPersistent),
                {BoxIcon::Exclamation});
}

std::string DescribeUntranslated(const SetupError& error)
{
    return DescribeSetupError(MessageCatalogue(), error);
}

// Runs `load`; a file that cannot be read or parsed gives the warning. Returns whether it went well.
template <class Load>
bool LoadOrWarn(Prompt& prompt, const std::string& language, const std::string& path, Load load)
{
    try {
        load();
        return true;
    } catch (const FileError& error) {
        WarnOfDefaults(prompt, language, TextFromPath(path) + ": " + error.what());
    } catch (const SetupError& error) {
        WarnOfDefaults(prompt, language, TextFromPath(path) + "\r\n" + DescribeUntranslated(error));
    }
    return false;
}

}  // namespace

std::string LanguageSelectionFile(const Files& files, const LanguageFolders& folders)
{
    return PersonalOrShared(files, folders, "ZelLang.ini");
}

std::string PersonalSelectionFile(const LanguageFolders& folders)
{
    return folders.person + "/ZelLang.ini";
}

std::string LanguageSelectionText(std::string_view language)
{
    return "[CHOOSE]\r\nEXT = " + std::string(language) + "\r\n";
}

std::optional<MessageCatalogue> LoadLanguage(const Files& files, Prompt& prompt,
                                             const LanguageFolders& folders, PosCfg& main)
{
    std::string language(DefaultLanguage);
    const std::string selection = LanguageSelectionFile(files, folders);
    LoadOrWarn(prompt, language, selection, [&] { language = ReadLanguageSelection(files.Read(selection)); });

    const std::string settings = PersonalOrShared(files, folders, "Zel" + language + ".ini");
    const bool loaded = LoadOrWarn(prompt, language, settings, [&] {
        const PortDefaults defaults =
            ReadLanguageSettings(files.Read(settings), {main.CommsPort, main.PortSettings});
        main.SetBaudRate(BaudIndexOf(defaults.settings));
        main.CommsPort = defaults.port;
        main.PortSettings = defaults.settings;
    });
    // A language without its settings counts as not installed: all of the program's defaults hold then.
    if (!loaded)
        language = DefaultLanguage;
    return LoadCatalogue(files, prompt, folders, language);
}

std::string MessageFile(const LanguageFolders& folders, std::string_view language)
{
    return folders.program + "/Zel" + std::string(language) + ".mes";
}

std::optional<MessageCatalogue> LoadCatalogue(const Files& files, Prompt& prompt,
                                              const LanguageFolders& folders, const std::string& language)
{
    const std::string path = MessageFile(folders, language);
    std::string description;
    try {
        std::string text = files.Read(path);
        if (text.starts_with(CatalogueHeader))
            return MessageCatalogue(std::move(text), language);
        description = "Not a message file";
    } catch (const FileError& error) {
        description = error.what();
    }
    prompt.Show(StartTitle(),
                path + ": " + description + "\r\n" + std::string(TextsOf(language).catalogueFailed),
                {BoxIcon::Critical});
    return std::nullopt;
}

bool Language::Load(PosCfg& main)
{
    auto loaded = LoadLanguage(files_, prompt_, folders_, main);
    if (!loaded)
        return false;
    texts_.Speak(*std::move(loaded));
    return true;
}

bool Language::Change(const std::string& code)
{
    auto loaded = LoadCatalogue(files_, prompt_, folders_, code);
    if (!loaded)
        return false;
    texts_.Speak(*std::move(loaded));
    try {
        files_.Write(PersonalSelectionFile(folders_), LanguageSelectionText(code));
    } catch (const FileError& error) {
        texts_.Show(Message::LanguageNotKept, {BoxIcon::Exclamation},
                    TextFromPath(error.Path()) + "\r\n" + error.what());
    }
    return true;
}

std::vector<std::string> Language::Available() const
{
    std::vector<std::string> found;
    for (const std::string_view code : {DefaultLanguage, Italian})
        if (files_.Exists(MessageFile(folders_, code)))
            found.emplace_back(code);
    return found;
}

std::string Language::HelpFolder() const
{
    return folders_.program + "/Fenho" + Code();
}

}  // namespace kelvora
