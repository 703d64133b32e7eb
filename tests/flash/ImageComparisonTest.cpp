#include "flash/ImageComparison.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "flash/Images.h"

namespace kelvora {

using namespace std::string_literals;

TEST(ImageQuery, IsAnAddressPairsOfDigitsOrText)
{
    const auto check = [&](const char* typed, const std::optional<ImageQuery>& query) {
        EXPECT_EQ(ParseImageQuery(typed), query) << typed;
    };
    check("01A0", ImageQuery{0x1A0, {}});
    check(" 1fff ", ImageQuery{0x1FFF, {}});
    check("0001:a0", ImageQuery{0x1A0, {}});
    check("2026", ImageQuery{{}, "2026", true});
    check("0020:00", ImageQuery{{}, "0020:00", true});
    check("0001:A", ImageQuery{{}, "0001:A", true});
    check("0001:G0", ImageQuery{{}, "0001:G0", true});
    check("4A 0b", ImageQuery{{}, "\x4A\x0B"});
    check("00  FF 1B", ImageQuery{{}, "\0\xFF\x1B"s});
    check("4a", ImageQuery{{}, "J"});
    check("4A 4", ImageQuery{{}, "4A 4", true});
    check("Till 3", ImageQuery{{}, "Till 3", true});
    check("   ", std::nullopt);
}

TEST(ImageComparison, FindsInEitherImageAndGoesRound)
{
    ImageComparison images{"a", "b", Filled(0), Filled(0)};
    images.before[0x100] = 'k';
    images.before[0x101] = 'm';
    images.after[0x1FFE] = 'K';
    images.after[0x1FFF] = 'M';
    const auto find = [&](const char* typed, std::size_t from) {
        return FindInImages(images, ParseImageQuery(typed).value(), from);
    };
    EXPECT_EQ(find("km", 0x100), 0x100U);
    EXPECT_EQ(find("km", 0x101), 0x1FFEU);
    EXPECT_EQ(find("km", 0x1FFF), 0x100U);
    EXPECT_EQ(find("6B 6D", 0x101), 0x100U);  // numbers mean these very bytes
    EXPECT_EQ(find("kma", 0), std::nullopt);
    EXPECT_EQ(find("4D 00", 0), std::nullopt);  // the end is no beginning
    EXPECT_EQ(find("0040", 0x100), 0x40U);
}

TEST(ImageComparison, TextHasTheWordsAndBothImagesWhole)
{
    ImageComparison images{"till.dat", "COM1", Filled('.'), Filled('.')};
    images.after[0x1A1] = 'A';
    const std::string text = ComparisonText(images, {"a byte"});
    EXPECT_TRUE(text.starts_with("- till.dat\r\n+ COM1\r\n\r\na byte\r\n\r\n  0000:00 2E 2E ")) << text;
    EXPECT_NE(text.find("  0001:90 2E 2E 2E 2E 2E 2E 2E 2E 2E 2E 2E 2E 2E 2E 2E 2E ................\r\n"
                        "- 0001:A0 2E 2E 2E 2E 2E 2E 2E 2E 2E 2E 2E 2E 2E 2E 2E 2E ................\r\n"
                        "+ 0001:A0 2E 41 2E 2E 2E 2E 2E 2E 2E 2E 2E 2E 2E 2E 2E 2E .A..............\r\n"
                        "  0001:B0 "),
              std::string::npos);
    EXPECT_EQ(std::ranges::count(text, '\n'), 5 + 8192 / 16 + 1);
}

}  // namespace kelvora
