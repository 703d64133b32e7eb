#include "windows/Language.h"

#include <algorithm>

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
    return language == "ITA" ? ItalianStart : EnglishStart;
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

std::string SettingsFile(const Files& files, const LanguageFolders& folders, const std::string& code)
{
    return PersonalOrShared(files, folders, "Zel" + code + ".ini");
}

// The code in the name of a message file; empty for another name.
std::string LanguageOf(std::string_view name)
{
    constexpr std::string_view Before = "Zel", After = ".mes";
    constexpr std::size_t CodeLength = 3;
    const auto isCapital = [](char c) { return c >= 'A' && c <= 'Z'; };
    if (name.size() != Before.size() + CodeLength + After.size() || !name.starts_with(Before) ||
        !name.ends_with(After))
        return {};
    const std::string_view code = name.substr(Before.size(), CodeLength);
    return std::ranges::all_of(code, isCapital) ? std::string(code) : std::string();
}

std::string NameOf(const Files& files, const LanguageFolders& folders, const std::string& code)
{
    try {
        const MessageCatalogue catalogue(files.Read(MessageFile(folders, code)), code);
        if (catalogue.Has(static_cast<std::int16_t>(Message::LanguageName.id)))
            return catalogue.Caption(Message::LanguageName);
    } catch (const FileError&) {
        // Told when it is chosen.
        return code;
    }
    return code;
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

    const std::string settings = SettingsFile(files, folders, language);
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
        texts_.TellOf(Message::LanguageNotKept, error);
    }
    return true;
}

std::vector<OfferedLanguage> Language::Offered() const
{
    std::vector<OfferedLanguage> offered;
    for (const std::string& file : files_.List(folders_.program)) {
        const std::string code = LanguageOf(file);
        if (!code.empty() && files_.Exists(SettingsFile(files_, folders_, code)))
            offered.push_back({code, NameOf(files_, folders_, code)});
    }
    return offered;
}

std::string Language::HelpFolder() const
{
    const std::string help = folders_.program + "/Fenho";
    return help + (files_.Exists(help + Code()) ? Code() : std::string(DefaultLanguage));
}

}  // namespace kelvora
