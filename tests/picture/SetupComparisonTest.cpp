#include "picture/SetupComparison.h"

#include <gtest/gtest.h>

#include "picture/Svg.h"
#include "setup/SetupReader.h"

namespace kelvora {
namespace {

using enum ModuleKind;
using Side = SetupComparison::Side;

// KM064's key 2 (98) becomes a quadruple one; the badge reader goes, and the chip card unit comes.
SetupComparison Example()
{
    const SetupDocument before = ReadDeviceMap("\xD6\x17\x04\xBF\x03");
    SetupDocument after = ReadDeviceMap("\xD6\x1F\x04\xBF\x08");
    after.Modules[3].KeyMap.replace(1, 2, "40");
    after.Modules[3].KeyMap.replace(9, 2, "00");
    return {before, after};
}

constexpr std::string_view MarkColour = "fill=\"#c04a00\"";
constexpr std::string_view RingColour = "#0a5fd0";

}  // namespace

TEST(SetupComparison, ShowsEachDifferenceWhereItIsSeen)
{
    const SetupComparison comparison = Example();
    EXPECT_EQ(comparison.Views(), (std::vector{None, KM096, KM064, ICCR}));
    // MCR removed, ICCR added, the order of the others, backlight, then four keys.
    ASSERT_EQ(comparison.Differences().size(), 7U);
    EXPECT_EQ(comparison.ViewOf(0), None);
    EXPECT_EQ(comparison.ViewOf(3), KM064);
    const auto check = [&](const char* reason, Side side, ModuleKind view, std::size_t marks) {
        const std::string svg = comparison.Picture(side, view, std::nullopt);
        EXPECT_TRUE(IsWellFormed(svg));
        EXPECT_EQ(Count(svg, MarkColour), marks) << reason;
        EXPECT_EQ(Count(svg, RingColour), 0U);
        EXPECT_EQ(Count(comparison.Picture(side, view, 3), RingColour), view == KM064 ? 1U : 0U) << reason;
    };
    check("four keys that are one each", Side::Before, KM064, 4);
    check("one cap where they are one key", Side::After, KM064, 1);
    check("no difference there", Side::After, KM096, 0);
    check("the keyboard with the backlight, KM064, MCR", Side::Before, None, 3);
    check("the same two, ICCR", Side::After, None, 3);
    EXPECT_EQ(Count(comparison.Picture(Side::Before, None, 0), RingColour), 1U);
    EXPECT_EQ(Count(comparison.Picture(Side::After, None, 0), RingColour), 0U) << "it is not there";
    EXPECT_EQ(comparison.Picture(Side::Before, ICCR, std::nullopt), "");
    const SetupComparison empty({}, {});
    EXPECT_EQ(empty.Views(), std::vector{None});
    EXPECT_EQ(empty.Picture(Side::Before, None, std::nullopt), "");
}

}  // namespace kelvora
