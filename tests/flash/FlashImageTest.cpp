#include "flash/FlashImage.h"

#include <gtest/gtest.h>

#include "flash/Images.h"
#include "flash/KeyTables.h"
#include "flash/MatrixCodes.h"

namespace kelvora {

using namespace std::string_literals;

TEST(FlashImage, RegionsAreComparedAndCopied)
{
    struct Case {
        std::size_t address;
        std::uint16_t inRegions, inAll;
    };
    for (const Case& c :
         {Case{0, 0, 0}, Case{5, 0, 5}, Case{6, 6, 6}, Case{7, 0, 7}, Case{127, 0, 127}, Case{128, 128, 128},
          Case{141, 141, 141}, Case{142, 0, 142}, Case{255, 0, 255}, Case{256, 256, 256}, Case{767, 767, 767},
          Case{768, 0, 768}, Case{1023, 0, 1023}, Case{1024, 1024, 1024}, Case{8191, 8191, 8191}}) {
        FlashImage source = Filled(0xFF);
        FlashImage destination = source;
        source[c.address] = 0xAA;
        destination[c.address] = 0x55;
        const FlashImage before = destination;
        EXPECT_EQ(CopyOrCompareRegions(destination, source, false, true), c.inRegions) << c.address;
        EXPECT_EQ(CopyOrCompareRegions(destination, source, true, true), c.inAll) << c.address;
        EXPECT_EQ(destination, before) << "comparing writes nothing";
        EXPECT_EQ(CopyOrCompareRegions(destination, source, false, false), 0);
        EXPECT_EQ(destination[c.address], c.inRegions ? 0xAA : 0x55) << c.address;
        CopyOrCompareRegions(destination, source, true, false);
        EXPECT_EQ(destination, source);
    }
}

TEST(FlashImage, DeviceCodesEndAtTheFirstZeroOrTheSeventh)
{
    EXPECT_EQ(DeviceCodesOf(ImageOf("\xD6\x17")), "\xD6\x17");
    EXPECT_EQ(DeviceCodesOf(Filled(0xFF)), std::string(7, '\xFF'));
}

TEST(MatrixCodes, GiveOffsets)
{
    const auto padded = [](std::string text, auto size) { return text.append(size - text.size(), '\xFF'); };
    const auto check = [&](const std::string& reason, const std::string& list, const std::string& positions) {
        EXPECT_EQ(ParseMatrixCodes(list), positions) << reason;
    };
    check("one entry", "a1 ,", padded("\x00"s, 16U));
    check("the last offset of all", "h16", padded("\xFE", 16U));
    check("blanks are no contact", "b1 ,   ,A2 ", padded("\x02\xFF\x10", 16U));
    check("nothing", "", "");
    check("seventeen entries", ",,,,,,,,,,,,,,,,b1", padded(std::string(16, '\xFF') + '\x02', 32U));
    check("a column without a line", "b1,1", "\x02");
    check("a line without a column", "b1,c", "\x02");
    check("a letter after a digit", "b1,c1d", "\x02");
    check("column 0 is no column", "b1,a0,b1", "\x02");
    check("255 would be no contact", "b1,a17,a16", "\x02");
    check("numbers of any length", "b1,a99999999999999999999", "\x02");
    check("a letter after the digit 0", "b1,a0b1", "\x02");
}

TEST(KeyTables, StandInLineOrder)
{
    using enum ModuleKind;
    using Tables = std::vector<KeyTable>;
    const Tables all{{KM096, 0, 256, 192}, {Backlight, 1, 448, 0}, {Code4, 2, 448, 32},
                     {KM064, 3, 480, 128}, {MCR, 4, 608, 32},      {ICCR, 5, 640, 48}};
    const Tables noParts{{MCR, 0, 256, 32}, {ICCR, 1, 288, 48}, {KM096, 2, 336, 192}};
    const Tables full{{KM096, 0, 256, 192}, {KM096, 1, 448, 192}, {KM064, 2, 640, 128}};
    const auto check = [&](const std::string& reason, const std::string& codes, const Tables& tables) {
        EXPECT_EQ(KeyTablesOf(codes), tables) << reason;
    };
    check("all modules", std::string(WholeChain), all);
    check("other order, no parts", "\x01\x08\xD6", noParts);
    check("an unknown code hides what follows", "\xD6\x55\xBF", {{KM096, 0, 256, 192}});
    check("no table passes the region's end", "\xD6\xD6\xBF\x08", full);
}

}  // namespace kelvora
