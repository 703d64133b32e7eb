#include "picture/SetupSheet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "picture/SheetText.h"
#include "picture/Svg.h"
#include "picture/SvgDrawing.h"
#include "setup/DeviceCode.h"
#include "setup/SetupReader.h"

namespace kelvora {
namespace {

constexpr int Margin = 850;

const SheetHeading Heading{"till07", "/shop/till07.dat", "2026-03-09 07:05"};

std::string Sheet(const SetupDocument& document, const SheetHeading& heading = Heading)
{
    return SetupSheet(document, heading, MessageCatalogue());
}

bool Says(const std::string& svg, const std::string& text)
{
    return std::ranges::any_of(TextsOf(svg), [&](const DrawnText& drawn) { return drawn.text == text; });
}

// The keys' numbers and where they stand; a number in brackets is an unused key's.
std::map<int, DrawnText> Keys(const std::string& svg)
{
    std::map<int, DrawnText> keys;
    for (const DrawnText& drawn : TextsOf(svg)) {
        const std::string digits = drawn.text.starts_with('(') ? drawn.text.substr(1) : drawn.text;
        if (digits.find_first_not_of("0123456789)") != std::string::npos)
            continue;
        EXPECT_TRUE(keys.emplace(std::stoi(digits), drawn).second) << "twice: " << drawn.text;
    }
    return keys;
}

}  // namespace

TEST(SetupSheet, EveryKeyOnceAndInItsPlaceWhateverTheLine)
{
    std::string others = "\xBF\x03\x08";  // the first in the order of signed characters
    do {
        for (std::size_t count = 0; count <= others.size(); ++count) {
            const SetupDocument document = ReadDeviceMap("\xD6\x17\x04" + others.substr(0, count));
            const std::string svg = Sheet(document);
            ASSERT_TRUE(IsWellFormed(svg));
            const auto keys = Keys(svg);
            std::size_t expected = 0;
            for (const ModuleRecord& record : document.Modules) {
                if (record.Columns == 0)
                    continue;
                const int first = FirstKeyNumber(record.Kind, document.Modules);
                const DrawnText& corner = keys.at(first);
                const int cell = keys.at(first + 1).x - corner.x;
                EXPECT_GE(cell, 440) << "too small to read";
                for (int index = 0; index < record.Rows * record.Columns; ++index) {
                    const char type = record.KeyMap[static_cast<std::size_t>(index)];
                    if (type != '1' && type != '3')
                        continue;
                    ++expected;
                    ASSERT_TRUE(keys.contains(first + index)) << first + index;
                    const DrawnText& key = keys.at(first + index);
                    EXPECT_EQ(key.x, corner.x + index % record.Columns * cell + (type == '3' ? cell / 2 : 0));
                    EXPECT_EQ(key.y, corner.y + index / record.Columns * cell);
                    EXPECT_TRUE(key.x > Margin && key.x < SheetWidth - Margin &&
                                key.y < SheetHeight - Margin);
                }
            }
            EXPECT_EQ(keys.size(), expected) << count;
        }
    } while (std::ranges::next_permutation(others).found);
}

TEST(SetupSheet, TellsWhatTheSetupIsAndHolds)
{
    SetupDocument document = ReadDeviceMap("\xD6\x1F\x04\x02\x08\xFF");
    document.Modules[3].Options = "2,3  ^<\xA7OFF";
    document.Modules[4].KeyMap[0] = '0';
    const std::string svg = Sheet(document);
    for (const char* const text :
         {"till07", "/shop/till07.dat", "2026-03-09 07:05", "1. Composite Keyboard (KM096)", "2. MCR",
          "Keys 1-96, fiscal keyboard: yes, backlight: no, Display and key lock", "tracks read: 2,3",
          "separator after track 2: &lt; (3C)", "separator after track 3: \u00A7 (A7)", "auto-read: no",
          "3. ICCR", "Keys 97-112", "(97)", "98", "Unknown modules: 255"})
        EXPECT_TRUE(Says(svg, text)) << text;
    EXPECT_EQ(svg.find("Page"), std::string::npos);
    EXPECT_TRUE(Says(Sheet({}), "This setup has no modules."));
    EXPECT_TRUE(Keys(Sheet({})).empty());
}

TEST(SetupSheet, HeadingsOfEverySort)
{
    const auto check = [&](const SheetHeading& heading, const char* text) {
        const std::string svg = Sheet(ReadDeviceMap("\xD6"), heading);
        EXPECT_TRUE(IsWellFormed(svg));
        EXPECT_TRUE(Says(svg, text)) << text;
    };
    check({"", "a\n<\x7F>&\uFFFF.dat", "d"}, "a?&lt;?&gt;&amp;?.dat");
    check({"a", "b", "d", true}, "b, with changes that are not saved");
    check({"a", "", "d", true}, "with changes that are not saved");
    check({"a", "b", "d", false, 2, 12}, "Page 2/12");
    EXPECT_EQ(SheetDate(std::chrono::local_days{std::chrono::year{2026} / 3 / 9} + std::chrono::hours(7) +
                        std::chrono::minutes(5)),
              "2026-03-09 07:05");
}

TEST(SheetText, IsShortenedAndWrapped)
{
    // At size 100 a letter is 60 wide.
    EXPECT_EQ(Shortened("till.dat", 100, 480), "till.dat");
    EXPECT_EQ(Shortened("/shops/north/till.dat", 100, 600), "/sh\u2026ll.dat");
    EXPECT_EQ(Shortened("\u00E8\u00E8\u00E8\u00E8\u00E8\u00E8", 100, 300), "\u00E8\u00E8\u2026\u00E8\u00E8");
    EXPECT_EQ(TextWidth("\u00E8a\u4E2D", 100), 220);
    EXPECT_EQ(WrappedParts({"one", "two", "three", "and a long one"}, 100, 600),
              (std::vector<std::string>{"one, two", "three", "and\u2026ng one"}));
}

}  // namespace kelvora
