#include "windows/Language.h"

#include <gmock/gmock.h>

#include "fakes/FakeFiles.h"
#include "fakes/FakePrompt.h"

using namespace kelvora;

struct Start {
    FakeFiles files;
    FakePrompt prompt;
    LanguageFolders folders{"/opt/k/bin", "/home/p/Kelvora"};
    PosCfg main{SetupMode::New, 0};

    Start()
    {
        const std::string header(CatalogueHeader);
        files.content = {{"/opt/k/ZelLang.ini", "[CHOOSE]\r\nEXT=ITA\r\n"},
                         {"/opt/k/ZelENG.ini", "[PORT SETTING]\r\nPORT=COM2\r\n"},
                         {"/opt/k/ZelITA.ini", "[PORT SETTING]\r\nPORT=COM3\r\nBAUD=1200\r\n"},
                         {"/opt/k/bin/ZelENG.mes", header + "590, Ready \r\n"},
                         {"/opt/k/bin/ZelITA.mes", header + "590, Pronto \r\n"}};
    }

    // The language, port and idle text that the program starts with; empty when it cannot.
    std::string Load()
    {
        const auto catalogue = LoadLanguage(files, prompt, folders, main);
        if (!catalogue)
            return {};
        return catalogue->Language() + " " + std::to_string(main.CommsPort) + " " + main.PortSettings + " " +
               catalogue->Lookup(590);
    }
};

TEST(Language, LoadsChoiceDefaultsAndTexts)
{
    Start start;
    EXPECT_EQ(start.Load(), "ITA 3 1200,n,8,1 Pronto ");
    EXPECT_EQ(start.main.BaudRate(), 4);
    start.files.content[PersonalSelectionFile(start.folders)] = LanguageSelectionText("ENG") + "\r\n";
    start.files.content["/home/p/Kelvora/ZelENG.ini"] = "[PORT SETTING]\r\nPORT=COM4\r\nBAUD=4800\r\n";
    EXPECT_EQ(start.Load(), "ENG 4 4800,n,8,1 Ready ") << "a person's own files win";
    EXPECT_TRUE(start.prompt.shown.empty());
}

TEST(Language, FallsBackWithAWarning)
{
    const std::string english =
        "system file error - program defaults will be used\r\n"
        "(if problem persists, contact customer support)";
    const std::string italian =
        "errore file di sistema - default di programma verrano usati\r\n"
        "(se il problema si ripete, contattare assistenza tecnica)";
    const std::string stop = "errore file di localizzazione - contattare assistenza tecnica";
    const auto check = [&](const std::string& reason, const std::string& file, const std::string& content,
                           const std::string& outcome, const std::string& warning) {
        SCOPED_TRACE(reason);
        Start start;
        start.files.content[file] = content;
        if (content.empty())
            start.files.unreadable = {file};
        EXPECT_EQ(start.Load(), outcome);
        ASSERT_EQ(start.prompt.shown.size(), 1U);
        EXPECT_EQ(start.prompt.shown[0].title, "Kelvora setup file");
        EXPECT_THAT(start.prompt.shown[0].body, testing::EndsWith("\r\n" + warning));
        EXPECT_EQ(start.prompt.shown[0].style.icon,
                  warning == stop ? BoxIcon::Critical : BoxIcon::Exclamation);
    };
    check("no selection", "/opt/k/ZelLang.ini", "", "ENG 2 9600,n,8,1 Ready ", english);
    check("rejected selection", "/opt/k/ZelLang.ini", "[CHOOSE]\r\nEXT", "ENG 2 9600,n,8,1 Ready ", english);
    check("no language", "/opt/k/ZelLang.ini", "[CHOOSE]\r\nEXT=../", "ENG 2 9600,n,8,1 Ready ", english);
    check("no settings", "/opt/k/ZelITA.ini", "", "ENG 1 9600,n,8,1 Ready ", italian);
    check("settings rejected late", "/opt/k/ZelITA.ini", "[PORT SETTING]\r\nPORT=COM3\r\nBAUD",
          "ENG 1 9600,n,8,1 Ready ", italian);
    check("no message file", "/opt/k/bin/ZelITA.mes", "", "", stop);
    check("another header", "/opt/k/bin/ZelITA.mes", "000, Dravon Messages\r\n590, x \r\n", "", stop);
}

TEST(Language, OffersWhatHasTextsAndSettings)
{
    Start start;
    const std::string header(CatalogueHeader);
    const std::string program = start.folders.program;
    for (const char* const name :
         {"ZelFRA.mes", "ZelABCD.mes", "XelABC.mes", "ZelABC.txt", "Zelabc.mes", "FenhoDEZ"})
        start.files.content[program + "/" + name] = header + "489, Wrong \r\n";
    start.files.content[program + "/ZelDEZ.mes"] = header + "489, &Deutsch \r\n";
    for (const char* const name : {"ZelDEZ.ini", "ZelABC.ini", "Zelabc.ini"})
        start.files.content[start.folders.person + "/" + name] = "";
    start.files.unreadable = {program + "/ZelITA.mes"};
    Texts texts(start.prompt);
    Language language(start.files, start.prompt, texts, start.folders);
    std::string offered;
    for (const OfferedLanguage& each : language.Offered())
        offered += each.code + " " + each.name + ", ";
    EXPECT_EQ(offered, "DEZ &Deutsch, ENG ENG, ITA ITA, ") << "by its code where the texts do not name it";

    EXPECT_FALSE(language.Load(start.main) || language.Change("ITA")) << "unreadable";
    EXPECT_EQ(language.HelpFolder(), "/opt/k/bin/FenhoENG");
    EXPECT_TRUE(language.Change("DEZ") && language.Load(start.main));
    EXPECT_EQ(language.HelpFolder(), "/opt/k/bin/FenhoDEZ");
}
