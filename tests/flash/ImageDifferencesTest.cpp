#include "flash/ImageDifferences.h"

#include <gtest/gtest.h>

#include "flash/Images.h"

namespace kelvora {

using enum ModuleKind;
TEST(ImageDifferences, AreNamed)
{
    using What = ImageDifference::What;
    const SetupDocument setup = ReadDeviceMap("\xD6\x03\xBF");
    const FlashImage before = Built(setup, Filled(0xFF));
    FlashImage after = before;
    EXPECT_TRUE(DescribeDifferences(before, after, setup.Modules).empty());
    after[0] = after[5] = after[6] = 0xFE;
    after[130] = 0x01;
    after[131] = 0x0E;
    after[133] = after[135] = 0;
    after[134] = 0x01;                           // a reader that was not there
    after[141] = after[142] = 0;                 // the end of a region
    after[256 + 16] = 0x40;                      // a2, key 2
    after[256 + 190] = after[256 + 191] = 0x33;  // h12, without a key
    after[480 + 14 + 4 * 16 + 1] = 0x77;         // h5, key 97, another code
    after[480] = after[481] = 0xFF;              // a1, key 120
    after[1025] = '%';
    after[1027] = after[1028] = after[1030] = 0;
    const std::vector<ImageDifference> differences{
        {What::Bytes, 0, 0, {}},
        {What::Bytes, 5, 5, {}},
        {What::Fiscal, 6, 6, 0, KM096, 0, '1', '0'},
        {What::Module, 130, 130, 1, None, 2, 3, 1},
        {What::Autoread, 131, 131, 1, MCR, 2, '1', '0'},
        {What::Bytes, 133, 133, 1},
        {What::Module, 134, 134, 1, None, 4, 0, 1},
        {What::Bytes, 135, 135, 1},
        {What::Bytes, 141, 141, 1},
        {What::Bytes, 142, 142, {}},
        {What::Key, 272, 273, 2, KM096, 2, '1', '2'},
        {What::Bytes, 446, 447, 2},
        {What::Key, 480, 481, 2, KM064, 120, '1', ' '},
        {What::Key, 558, 559, 2, KM064, 97, '1', '1'},
        {What::Separator, 1025, 1025, 3, MCR, 2, '\xFF', '%'},
        {What::Bytes, 1027, 1028, 3},
        {What::Bytes, 1030, 1030, 3},
    };
    EXPECT_EQ(DescribeDifferences(before, after, setup.Modules), differences);
}

TEST(ImageDifferences, KeysAreNamedOnlyWhereTheTablesStandAlike)
{
    using What = ImageDifference::What;
    const FlashImage after = ImageOf("\xD6\x08\xBF");
    const auto check = [&](const std::string& reason, const FlashImage& before, const std::string& line,
                           What what) {
        FlashImage changed = after;
        changed[496] = 0;  // a1 of the KM064 behind an ICCR
        const auto differences = DescribeDifferences(before, changed, ReadDeviceMap(line).Modules);
        ASSERT_FALSE(differences.empty()) << reason;
        EXPECT_EQ(differences.back().what, what) << reason;
        EXPECT_EQ(differences.back().first, 496U) << reason;
    };
    check("the same modules", after, "\xD6\x08\xBF", What::Key);
    check("never written", Filled(0xFF), "\xD6\x08\xBF", What::Key);
    check("another order", ImageOf("\xD6\xBF\x08"), "\xD6\x08\xBF", What::Bytes);
    check("another line", after, "\xD6\xBF\x08", What::Bytes);
    check("behind an unknown module", after, "\xD6\xFF\xBF", What::Bytes);
    EXPECT_EQ(DescribeDifferences(ImageOf("\xBF"), after, {}).front().what, What::Module) << "the first";
    EXPECT_EQ(ModulesOf(after), ReadDeviceMap("\xD6\x08\xBF").Modules);
}

}  // namespace kelvora
