#include "platform/Encoding.h"

#include <gtest/gtest.h>

#include <numeric>

namespace kelvora {

TEST(Utf8, HasACharacterForEveryCodeOfAText)
{
    std::string codes(256, '\0');
    std::iota(codes.begin(), codes.end(), '\0');
    EXPECT_EQ(Utf8FromText("A\x7F" + codes.substr(0x80, 33) + "\xFF"),
              "A\x7F\u20AC\xC2\x81\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\xC2\x8D"
              "\u017D\xC2\x8F\xC2\x90\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153"
              "\xC2\x9D\u017E\u0178\u00A0\u00FF");
    EXPECT_EQ(TextFromUtf8(Utf8FromText(codes)), codes);
    for (const char* const lost : {"\xE8", "\xC2\x80", "\xC2\x9F", "\u0100", "\u30AC", "\U000420AC"})
        EXPECT_EQ(TextFromUtf8(lost), std::nullopt) << lost;
}

TEST(Utf8, PathsThatAreUtf8AreLeftAsTheyAre)
{
    // The first and the last character of each form of the first byte.
    for (const char* path : {"till.dat", "caff\u00E8", "\xC2\x80\u07FF",
                             "\u0800\u0FFF\u1000\uCFFF\uD000\uD7FF\uE000\uEFFF\uFFFF",
                             "\U00010000\U0003FFFF\U00040000\U000FFFFF\U00100000\U0010FFFF"})
        EXPECT_EQ(Utf8FromPath(path), path);
    // Windows-1252, overlong, no continuation, a surrogate, past the last, cut.
    for (const char* bytes :
         {"lib\xE9rer", "\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xE1\x7F\x80",
          "\xE1\xC0\x80", "\xE1\x80\x7F", "\xE1\x80\xC0", "\xED\xA0\x80", "\xED\x7F\x80", "\xF4\x7F\x80\x80",
          "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF"})
        EXPECT_FALSE(IsUtf8(bytes)) << bytes;
    EXPECT_FALSE(IsUtf8(std::string_view("\u20AC", 2)));
    EXPECT_EQ(Utf8FromPath("caff\xE8"), "caff\u00E8");
    EXPECT_EQ(TextFromPath("caff\u00E8\u30AC"), "caff\xE8?");
    EXPECT_EQ(TextFromPath("caff\xE8"), "caff\xE8");
}

}  // namespace kelvora
