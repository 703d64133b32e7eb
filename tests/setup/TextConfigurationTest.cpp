#include "setup/TextConfiguration.h"

#include "setup/PosCfg.h"
#include "setup/SampleTexts.h"

using namespace kelvora;

TEST(TextConfiguration, ReadsTheLanguage)
{
    EXPECT_EQ(ReadLanguageSelection(""), "ENG");
    EXPECT_EQ(ReadLanguageSelection("'\r\n[Choose]\r\next = aze\r\nOTHER=1\r\n"), "AZE");
    EXPECT_EQ(ReadLanguageSelection("EXT=ITA\n[PORT SETTING]\nEXT=ITA\n"), "ENG") << "keys of other sections";
    for (const Rejection& row : {Rejection{"no value", "[CHOOSE]\nEXT", 2, Expected::KeyAndValue},
                                 Rejection{"a path", "[CHOOSE]\n\nEXT=../", 3, Expected::LanguageCode},
                                 Rejection{"four letters", "[CHOOSE]\nEXT=ENGL", 2, Expected::LanguageCode},
                                 Rejection{"lines of other sections", "[X]\nEXT", 2, Expected::KeyAndValue}})
        ExpectRejected(row, [](const std::string& text) { ReadLanguageSelection(text); });
}

TEST(TextConfiguration, ReadsThePortSettings)
{
    const std::pair<const char*, PortDefaults> rows[]{
        {"OTHER=1", {2, "300,e,7,2"}},
        {"PORT=COM3\nBAUD=1200\nPARITY=1\nSIZE=8\nSTOP=1", {3, "1200,O,8,1"}},
        {"port=com4\nPARITY=2\nSIZE=7\nSTOP=2", {4, "300,E,7,2"}},
        {"PORT=COM5\nBAUD=300\nPARITY=3\nSIZE=6\nSTOP=12", {1, "9600,N,1,1"}},
    };
    for (const auto& [text, read] : rows)
        EXPECT_EQ(ReadLanguageSettings(std::string("[PORT SETTING]\n") + text, {2, "300,e,7,2"}), read)
            << text;
    EXPECT_EQ(ReadLanguageSettings("[PORT SETTING]\nPARITY=0\nSIZE=8", {2, "300,e,"}),
              (PortDefaults{2, "300,N,"}))
        << "what is too short stays so";
}

TEST(PosCfg, PutsTheSpeedOfAnIndexInFrontOfTheSettings)
{
    PosCfg settings(SetupMode::New, 0);
    for (const auto& [index, text] :
         {std::pair(3, "2400,n,8,1"), {7, "150,n,8,1"}, {8, ",n,8,1"}, {-1, ",n,8,1"}}) {
        settings.SetBaudRate(static_cast<std::int16_t>(index));
        EXPECT_EQ(settings.PortSettings, text) << index;
    }
}
