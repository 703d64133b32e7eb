#include "picture/ModuleStrip.h"

#include <gtest/gtest.h>

#include <initializer_list>

#include "layout/LayoutCommands.h"
#include "layout/StripScale.h"

using namespace kelvora;
using enum StripButton;

namespace {

ModuleList Line(std::initializer_list<std::uint8_t> codes)
{
    ModuleList modules;
    for (const std::uint8_t code : codes)
        modules.push_back(CreateRecord(code, static_cast<std::uint8_t>(modules.size())));
    return modules;
}

constexpr PlacedButton FirstMaster{Master, 20, 585};
constexpr PlacedButton FirstLamp{Backlight, 2360, 585};
constexpr PlacedButton FirstDisplay{Code4, 570, 935};

}  // namespace

TEST(ModuleStrip, PlacesTheChainFromLeftToRight)
{
    const auto check = [&](const char* reason, const ModuleList& modules,
                           const std::vector<PlacedButton>& expected) {
        EXPECT_EQ(LayOutStrip(modules), expected) << reason;
    };
    check("all four, each after the gap", Line({214, 31, 4, 191, 3, 8}),
          {FirstMaster,
           FirstLamp,
           FirstDisplay,
           {KM064, 2980, 585},
           {MCR, 5070, 585},
           {ICCR, 5765, 600},
           {Keypad, 5865, 1775}});
    check("the keypad comes right after its unit", Line({214, 8, 191}),
          {FirstMaster, {ICCR, 2980, 600}, {Keypad, 3080, 1775}, {KM064, 4140, 585}});
    check("a part further down the line still rides on the master", Line({214, 1, 23}),
          {FirstMaster, FirstLamp, {MCR, 2980, 585}});
    check("parts without a master have nothing to ride on", Line({23, 4, 191}), {{KM064, 20, 585}});
    check("there is one button a kind", Line({214, 214, 23, 23}), {FirstMaster, FirstLamp});
}

TEST(ModuleStrip, HitTestFindsMainButtonAndHalf)
{
    const auto strip = LayOutStrip(Line({214, 23, 4, 3}));
    const auto check = [&](int x, const std::optional<StripHit>& expected) {
        EXPECT_EQ(HitTest(strip, x), expected) << x;
    };
    check(19, {});
    check(20, StripHit{Master, false});
    check(1489, StripHit{Master, false});
    check(1490, StripHit{Master, true});
    check(2959, StripHit{Master, true});
    check(2960, {});
    check(2980, StripHit{MCR, false});
    check(3317, StripHit{MCR, false});  // 675 is odd: the middle belongs to neither half of whole twips
    check(3318, StripHit{MCR, true});
    check(3655, {});
}

TEST(StripScale, FitsTheMiddleOfTheWindowAndFindsEachPixelsButton)
{
    const std::vector<PlacedButton> strip = LayOutStrip(Line({214, 191, 3, 8}));
    // 15 twips to a pixel: the gap before the first button is a pixel and a third, its top 39.
    EXPECT_EQ(FitStrip(strip, 462, 262).PlaceOf(strip.front()), (PixelRect{1, 39, 196, 175}));
    const StripScale small = FitStrip(strip, 100, 100);
    EXPECT_EQ(small.PlaceOf(strip.front()).width, 78) << "no smaller than two fifths";
    EXPECT_EQ(small.left + small.top, 0) << "nor does it begin outside";
    EXPECT_EQ(FitStrip(strip, 9000, 9000).PlaceOf(strip.front()), (PixelRect{3812, 4225, 588, 525}))
        << "no larger than three times";
    EXPECT_EQ(ClampToStrip(99999, strip), 6904);
    EXPECT_EQ(FullStripHeight(), 3925) << "the lowest button, and its text";
    // Whatever the rounding, the strip's outermost pixel belongs to its first button.
    for (int width = 400; width < 1400; ++width) {
        const StripScale scale = FitStrip(strip, width, 600);
        const int edge = ClampToStrip(scale.ToTwips(scale.PlaceOf(strip.front()).left), strip);
        EXPECT_EQ(HitTest(strip, edge), (StripHit{Master, false})) << width;
    }
}
