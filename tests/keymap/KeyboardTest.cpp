#include "keymap/Keyboard.h"

#include <gtest/gtest.h>

namespace kelvora {

using namespace std::string_literals;
using namespace std::string_view_literals;

TEST(Keyboard, AllowedKeyTypes)
{
    // Four columns; what stands before them is no key.
    constexpr auto plain = "11111111111111111"sv.substr(1);
    const auto check = [&](const char* reason, int position, std::string_view map, int mask) {
        EXPECT_EQ(AllowedKeyTypes(position, 4, map), mask) << reason;
    };
    check("room all around", 1, plain, 15);
    check("last column", 4, plain, 3);
    check("bottom row", 13, plain, 5);
    check("bottom right", 16, plain, 1);
    check("outside, before", 0, plain, 0);
    check("outside, behind", 17, plain, 0);
    check("unused key", 1, "0111111111111111", 0);
    check("no contact", 1, " 111111111111111", 0);
    check("right is the lower half of a key above", 5, "1211101111111111", 3);
    check("right is a quadruple's lower part", 5, "1401100111111111", 3);
    check("right is an unused key", 1, "1011111111111111", 15);
    check("right is an unused key, third column's is tall", 1, "1021110111111111", 15);
    check("below is the right half of a key to its left", 2, "1111301111111111", 5);
    check("below is an unused key in the first column", 1, "1113011111111111", 15);
    check("diagonal is taken", 1, "1111121110111111", 7);
    check("tall, nothing to the right", 1, "2 11011111111111", 3);
    check("wide, in the bottom row", 13, "1111111111113011", 5);
    check("quadruple", 1, "4011001111111111", 15);
    check("short last row, diagonal past the end", 14, "111111111111111111", 7);
    check("short last row, below past the end", 15, "111111111111111111", 5);
}

TEST(Keyboard, CheckKeyMap)
{
    // Four rows of four.
    const auto check = [&](const char* reason, const std::string& before, bool valid, bool repairable,
                           const std::string& repaired) {
        std::string map = before;
        EXPECT_EQ(IsKeyMapValid(map, 4, 4), valid) << reason;
        EXPECT_EQ(CheckKeyMap(map, 4, 4, false), valid) << reason;
        EXPECT_EQ(map, before) << reason;
        EXPECT_EQ(CheckKeyMap(map, 4, 4, true), repairable) << reason;
        EXPECT_EQ(map, repaired) << reason;
    };
    check("whole keys", "4012001011111111", true, true, "4012001011111111");
    check("one character short", "000000000000000", false, false, "000000000000000");
    check("wide key over a key", "3111111111111111", false, true, "3011111111111111");
    check("quadruple lacks its diagonal", "4011011111111111", false, true, "4011001111111111");
    check("tall key at the bottom", "1111111111111112", false, false, "1111111111111112");
    check("tall key reaches the short last row", "1111111111112111XX", false, true, "11111111111121110X");
    check("not looked at past the rows", "11111111111111113X", true, true, "11111111111111113X");
    check("a key swallowed by a repair needs nothing", "3311111111111111", false, true, "3011111111111111");
}

TEST(Keyboard, KeyMapFromDeviceTable)
{
    // Two bytes before the table, then pairs at 0, 2, 4, 6, 8 and a single byte at 10.
    const std::string table = "..\x00\x05\x80\x01\xC1\x00\x40\x02\x80\x20\x01"s;
    const std::string positions = "\x00\x02\x04\xFF\x06\x08\x0A"s;
    EXPECT_EQ(KeyMapFromDeviceTable(table, positions, 2, 9), "104 23   ");
}

TEST(Keyboard, CoveredCells)
{
    // A quadruple and a wide key above, a tall one below; the last is an unused key.
    constexpr auto map =
        "40300020"
        "00110000"sv;
    std::string covered;
    for (int position = 1; position <= 16; ++position)
        covered += IsCovered(position, 8, map) ? 'x' : '.';
    EXPECT_EQ(covered, ".x.x....xx....x.");
    EXPECT_FALSE(IsCovered(3, 2, "1301")) << "the row above ends with a wide key";
    EXPECT_FALSE(IsCovered(2, 2, "4111")) << "not unused";
}

TEST(Keyboard, SetKeyType)
{
    const auto check = [&](const char* reason, int position, char type, const std::string& before,
                           const std::string& after) {
        std::string map = before;
        SetKeyType(position, type, 3, map);
        EXPECT_EQ(map, after) << reason;
    };
    check("single to quadruple", 2, '4', "111111111", "140100111");
    check("quadruple to wide", 1, '3', "401001111", "301111111");
    check("tall to unused", 1, '0', "211011111", "011111111");
    check("tall at the bottom", 9, '2', "111111111", "111111112");
    check("outside", 10, '2', "111111111", "111111111");
}

}  // namespace kelvora
