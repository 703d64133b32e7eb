#include "setup/SetupDifferences.h"

#include <gtest/gtest.h>

#include "setup/SetupReader.h"
#include "setup/SetupTexts.h"

namespace kelvora {

using enum ModuleKind;
using What = SetupDifference::What;

TEST(SetupDifferences, OptionsAndKeys)
{
    SetupDocument before = ReadDeviceMap("\xD6\x17\x04\xBF\x03");
    SetupDocument after = ReadDeviceMap("\xD6\x1F\x04\x01\xBF");
    EXPECT_TRUE(CompareSetups(before, before).empty());
    after.Modules[0].Options = "NO ";
    after.Modules[0].KeyMap[11] = '0';
    after.Modules[3].Options = "1,2  ^;%OFF";
    after.Modules[4].KeyMap[1] = '2';
    after.Modules[4].Left = 100;
    const std::vector<SetupDifference> differences{
        {What::Order, None, 0, 0, 0, "\x01\x02\x03\x04\x05", "\x01\x02\x03\x05\x04"},
        {What::Fiscal, KM096, 0, 0, 0, "YES", "NO "},
        {What::Key, KM096, 12, 12, 12, "1", "0"},
        {What::Backlight, Backlight, 0, 0, 0, "YES", "NO "},
        {What::Tracks, MCR, 0, 0, 0, "1,2,3", "1,2  "},
        {What::Separator, MCR, 2, 0, 0, "^", ";"},
        {What::Separator, MCR, 3, 0, 0, "^", "%"},
        {What::Autoread, MCR, 0, 0, 0, "ON ", "OFF"},
        {What::Key, KM064, 2, 98, 98, "1", "2"},
    };
    EXPECT_EQ(CompareSetups(before, after), differences);
}

TEST(SetupDifferences, CoveredKeysNameTheirLargerKey)
{
    SetupDocument before = ReadDeviceMap("\xD6\xBF");
    SetupDocument after = before;
    // Keys 97, 98 above 105, 106: one quadruple key, then a double one of each sort.
    before.Modules[1].KeyMap.replace(0, 10, "4011111100");
    after.Modules[1].KeyMap.replace(0, 10, "2311111111");
    after.Modules[1].KeyMap[2] = after.Modules[1].KeyMap[8] = '0';
    const std::vector<SetupDifference> differences{
        {What::Key, KM064, 1, 97, 97, "4", "2", 0, 0},
        {What::Key, KM064, 2, 98, 98, "0", "3", 97, 0},
        {What::Key, KM064, 3, 99, 99, "1", "0", 0, 98},
        {What::Key, KM064, 10, 106, 106, "0", "1", 97, 0},
    };
    EXPECT_EQ(CompareSetups(before, after), differences);
    // The key below a double one, and one that is unused in the first column below a wide one of the last.
    std::swap(before, after);
    before.Modules[1].KeyMap = after.Modules[1].KeyMap = std::string(64, '1');
    after.Modules[1].KeyMap.replace(0, 17, "21111111011111130");
    const std::vector<SetupDifference> others = CompareSetups(before, after);
    EXPECT_EQ(others.at(1), (SetupDifference{What::Key, KM064, 9, 105, 105, "1", "0", 0, 97}));
    EXPECT_EQ(others.at(3), (SetupDifference{What::Key, KM064, 17, 113, 113, "1", "0", 0, 0}));
}

TEST(SetupDifferences, Modules)
{
    SetupDocument before = ReadDeviceMap("\xD6\xBF\xFF\x08");
    SetupDocument after = ReadDeviceMap("\x08\x03\x55\xBF");
    after.Modules[0].KeyMap[0] = '0';
    const std::vector<SetupDifference> differences{
        {What::Removed, KM096, 0, 0, 0, "", ""},
        {What::Added, MCR, 0, 0, 0, "", ""},
        {What::Order, None, 0, 0, 0, "\x04\x06", "\x06\x04"},
        {What::UnknownModules, None, 0, 0, 0, "\xFF", "\x55"},
        {What::Key, ICCR, 1, 161, 1, "1", "0"},
    };
    EXPECT_EQ(CompareSetups(before, after), differences);
    EXPECT_EQ(Describe(MessageCatalogue(), differences.back()), "ICCR, Key 161 -> 1: single key -> unused");
}

}  // namespace kelvora
