#include "platform/Encoding.h"

#include <gtest/gtest.h>

#include <numeric>

namespace kelvora {

TEST(Utf8, HasACharacterForEveryCodeOfAText)
{
    EXPECT_EQ(Utf8FromText("A\x7F\x80\x81\x9F\xA0\xFF"), "A\x7F\u20AC\xC2\x81\u0178\u00A0\u00FF");
    std::string codes(256, '\0');
    std::iota(codes.begin(), codes.end(), '\0');
    EXPECT_EQ(TextFromUtf8(Utf8FromText(codes)), codes);
    for (const char* const lost : {"\xE8", "\u0100", "a\xE2\x82", "\U0001F600"})
        EXPECT_EQ(TextFromUtf8(lost), std::nullopt) << lost;
}

TEST(Utf8, PathsThatAreUtf8AreLeftAsTheyAre)
{
    for (const char* path : {"till.dat", "caff\u00E8", "\u20AC", "\U0001F600"})
        EXPECT_EQ(Utf8FromPath(path), path);
    const auto check = [&](const char* reason, const char* bytes) { EXPECT_FALSE(IsUtf8(bytes)) << reason; };
    check("Windows-1252", "caff\xE8");
    check("overlong", "\xC0\xAF");
    check("cut", "\xE2\x82");
    check("surrogate", "\xED\xA0\x80");
    check("past the last", "\xF4\x90\x80\x80");
    EXPECT_EQ(Utf8FromPath("caff\xE8"), "caff\u00E8");
}

}  // namespace kelvora
