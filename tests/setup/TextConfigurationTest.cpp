#include "setup/TextConfiguration.h"

#include <vector>

#include "setup/SampleTexts.h"

using namespace kelvora;

TEST(TextConfiguration, ReadsTheLanguage)
{
    EXPECT_EQ(ReadLanguageSelection(""), "ENG");
    EXPECT_EQ(ReadLanguageSelection("'\r\n[Choose]\r\next = ita\r\nOTHER=1\r\n"), "ITA");
    EXPECT_EQ(ReadLanguageSelection("EXT=ITA\n[PORT SETTING]\nEXT=ITA\n"), "ENG") << "keys of other sections";
    for (const Rejection& row : {Rejection{"no value", "[CHOOSE]\nEXT", 2, Expected::KeyAndValue},
                                 Rejection{"a path", "[CHOOSE]\n\nEXT=../X", 3, Expected::LanguageCode},
                                 Rejection{"four letters", "[CHOOSE]\nEXT=ENGL", 2, Expected::LanguageCode},
                                 Rejection{"lines of other sections", "[X]\nEXT", 2, Expected::KeyAndValue}})
        ExpectRejected(row, [](const std::string& text) { ReadLanguageSelection(text); });
}

TEST(TextConfiguration, ReadsThePortDefaults)
{
    struct Row {
        std::string reason, lines;
        PortDefaults defaults;
    };
    const std::vector<Row> rows{
        {"every key", "PORT=COM4\nBAUD=1200\nPARITY=2\nSIZE=7\nSTOP=2", {4, "1200,E,7,2"}},
        {"absent keys keep their values", "parity=1\nOTHER=1", {2, "4800,O,8,1"}},
        {"values outside the lists", "PORT=COM5\nBAUD=19200\nPARITY=9\nSIZE=6\nSTOP=", {1, "9600,N,1,1"}},
        {"another section", "[CHOOSE]\nPORT=COM1", {2, "4800,n,8,1"}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(ReadLanguageSettings("[Port Setting]\n" + row.lines, {2, "4800,n,8,1"}), row.defaults)
            << row.reason;
    EXPECT_EQ(ReadLanguageSettings("[PORT SETTING]\nBAUD=1200\nSTOP=2", {1, "19200,n,8"}).settings,
              "1200,n,8")
        << "nothing is written past the end of other settings";
}
