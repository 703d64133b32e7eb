#include "setup/SetupEdit.h"

#include <sstream>

#include "setup/RandomSetups.h"
#include "setup/SampleTexts.h"
#include "setup/SetupReader.h"
#include "setup/SetupWriter.h"

namespace kelvora {
namespace {

// The chip card unit's keys begin at 97; 97 is quadruple, 99 vertical, 104 unused.
const SetupDocument Standard = ReadSetup(
    "[KM096]\n[ICCR]\nKeyMap = QQVS _\nQQV= _\nHHSS _\nSSSS\n[MCR]\nTracks=1,2\nTrack1Sep=;\nAutoread=OFF\n");

// Of settings parted by blanks.
std::string Edit(SetupDocument& document, const std::string& settings)
{
    SetupEdit edit;
    std::istringstream words(settings);
    for (std::string word; words >> word;)
        edit.settings.push_back(ParseSetting(word));
    return ApplyEdit(document, edit);
}

struct Row {
    const char *reason, *settings, *expected;
};

TEST(SetupEdit, SetsOptionsByName)
{
    for (const Row& row :
         {Row{"fiscal", "fiscal=no", "0:214(NO )1:23(YES)2:4()3:8()4:1(1,2  ;^^OFF)"},
          {"backlight", "Backlight=OFF", "0:214(YES)1:31(NO )2:4()3:8()4:1(1,2  ;^^OFF)"},
          {"more", "mcr.tracks=1,2,3 MCR.AutoRead=on", "0:214(YES)1:23(YES)2:4()3:8()4:3(1,2,3;^^ON )"},
          {"separators", "mcr.tracks=2,3 mcr.separator1=None mcr.separator3== mcr.separator2=\xA7",
           "0:214(YES)1:23(YES)2:4()3:8()4:2(2,3  ^\xA7=OFF)"},
          {"the last counts", "fiscal=no fiscal=yes", "0:214(YES)1:23(YES)2:4()3:8()4:1(1,2  ;^^OFF)"}}) {
        SetupDocument document = Standard;
        EXPECT_EQ(Edit(document, row.settings), "");
        EXPECT_EQ(Summary(document), row.expected) << row.reason;
        EXPECT_EQ(document.DeviceMap[4], static_cast<char>(document.Modules[4].DeviceCode));
    }
}

TEST(SetupEdit, SetsKeysUnderTheRulesOfTheGrid)
{
    // The chip card unit's key map, or the refusal.
    for (const Row& row :
         {Row{"one", "ICCR.107=unused", "4021000030011111XX"},
          {"a larger key frees what it covered", "iccr.97=unused", "0121110030111111XX"},
          {"a range makes all of its keys unused", "ICCR.97..98=unused", "0021110030111111XX"},
          {"a range of wide keys", "ICCR.109..112=double-horizontal", "4021000030113030XX"},
          {"unused, then larger", "ICCR.104=vertical", "4021000230101111XX"},
          {"over a used and an unused key", "ICCR.99=single ICCR.99=quadruple", "4040000030111111XX"},
          {"a type that it has", "ICCR.97..98=quadruple", "4021000030111111XX"},
          {"covered", "ICCR.98=unused", "ICCR.98: key 98 is part of key 97"},
          {"covered from above the range", "ICCR.101..102=single",
           "ICCR.101..102: key 101 is part of key 97"},
          {"the right edge", "ICCR.108=horizontal",
           "ICCR.108: key 108 may only be single or double-vertical here"},
          {"the corner", "fiscal=no ICCR.112=quadruple", "ICCR.112: key 112 may only be single here"},
          {"a larger key", "ICCR.106=single", "ICCR.106: key 106 is part of key 105"},
          {"another module's key", "ICCR.96=unused",
           "ICCR.96: the ICCR of this setup has the keys 97 to 112"},
          {"past its keys", "ICCR.112..113=unused",
           "ICCR.112..113: the ICCR of this setup has the keys 97 to 112"},
          {"no contact", "KM096.2..3=unused",
           "KM096.2..3: key 3 is none: the device has no key at this place"},
          {"no module", "KM064.113=unused", "KM064.113: the setup has no KM064"}}) {
        SetupDocument document = Standard;
        const std::string why = Edit(document, row.settings);
        EXPECT_EQ(why.empty() ? document.Modules[3].KeyMap : why, row.expected) << row.reason;
    }
    SetupDocument other = ReadSetup("[ICCR]\n");
    EXPECT_EQ(ApplyEdit(other, {{Standard.Modules[3]}, {ParseSetting("ICCR.1=single")}}), "");
    EXPECT_EQ(other.Modules[0].KeyMap, "1121110030111111XX") << "taken, then set";
    EXPECT_EQ(ApplyEdit(other, {{Standard.Modules[0]}, {}}), "the setup has no KM096 for the keys");
}

TEST(SetupEdit, FindsWhatASetupHas)
{
    for (const char* const text :
         {"mcr", "!KM064", "fiscal=yes", "mcr.tracks=1,2", "mcr.separator1=;", "mcr.separator2=none",
          "mcr.autoread=no", "ICCR.97=quadruple", "ICCR.104=unused", "ICCR.109..112=single",
          "ICCR.105..106=horizontal", "!KM064.97=single"})
        EXPECT_TRUE(HoldAll(Standard, std::vector{ParseCondition(text)})) << text;
    for (const char* const text : {"KM064", "!Iccr", "!fiscal=yes", "mcr.separator2=;", "ICCR.98=unused",
                                   "ICCR.105..107=horizontal", "ICCR.1=single", "KM064.97=single"})
        EXPECT_FALSE(HoldAll(Standard, std::vector{ParseCondition(text)})) << text;
    EXPECT_FALSE(HoldAll(Standard, std::vector{ParseCondition("mcr"), ParseCondition("fiscal=no")}));
}

TEST(SetupEdit, RefusesWhatIsNoSetting)
{
    const auto check = [&](const char* expected, const std::vector<std::string>& texts) {
        for (const std::string& text : texts)
            EXPECT_THAT([&] { ParseSetting(text); },
                        testing::ThrowsMessage<std::invalid_argument>(
                            testing::StartsWith("\"" + text + "\": expected " + expected)));
    };
    check("NAME=VALUE", {"", "fiscal"});
    check("yes or no", {"fiscal=", "fiscal=maybe"});
    check("tracks 1,2 or 2,3 or 1,2,3", {"mcr.tracks=1,3", "mcr.tracks=1,2  "});
    check("one character", {"mcr.separator1=a", "mcr.separator1=_", "mcr.separator1= ", "mcr.separator2=;;"});
    check("single, double-vertical", {"KM096.43=triple", "ICCR.1="});
    check("the name fiscal", {"mcr.separator4=;", "mcr.43=single", "code4.1=single", ".1=single"});
    check("numbers of keys from 1", {"KM096.0=single", "KM096.0..4=single", "KM096.9..4=single",
                                     "KM096.4..=single", "KM096.4x=single", "KM096.99999999999=single"});
    for (const char* const text : {"backlight", "code4", "", "!", "!!mcr", "fiscal=1"})
        EXPECT_THROW(ParseCondition(text), std::invalid_argument) << text;
}

TEST(SetupEdit, MakesOnlySetupsThatAFileHoldsAndSettingsThatHold)
{
    RandomSetups setups;
    std::mt19937 random(31);
    for (int round = 0; round < 600; ++round) {
        SetupDocument document = setups.Next();
        const int first = 1 + static_cast<int>(random() % 180);
        const std::string text =
            std::vector{"KM096.", "KM064.", "ICCR."}[random() % 3] + std::to_string(first) + ".." +
            std::to_string(first + static_cast<int>(random() % 5)) + "=" +
            std::vector{"single", "vertical", "horizontal", "quadruple", "unused"}[random() % 5];
        if (!Edit(document, text).empty())
            continue;
        ASSERT_EQ(ReadSetup(WriteSetup(document.Modules)), document) << text;
        ASSERT_TRUE(HoldAll(document, std::vector{ParseCondition(text)})) << text;
    }
}

}  // namespace
}  // namespace kelvora
