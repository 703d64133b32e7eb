#include "setup/TextConfiguration.h"

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
