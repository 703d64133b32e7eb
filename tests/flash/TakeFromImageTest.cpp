#include "flash/TakeFromImage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <vector>

#include "flash/Images.h"

namespace kelvora {
namespace {

using enum ModuleKind;
// What each image leaves untaken of a line's setup, and that the setup keeps its own there.
TEST(TakeFromImage, TellsWhatItLeaves)
{
    using What = TakeNotice::What;
    struct Case {
        std::string reason, line;
        std::function<void(FlashImage&)> spoil;
        std::vector<TakeNotice> notices;
    };
    const std::string keyboards = "\xD6\xBF\x08";
    const auto pairs = [](const std::string& codes) {
        return [codes](FlashImage& image) { image = ImageOf(codes); };
    };
    const std::vector<Case> cases{
        {"nothing spoilt", keyboards, [](FlashImage&) {}, {}},
        {"erased", keyboards, [](FlashImage& image) { image = Filled(0xFF); }, {{What::EmptyImage}}},
        {"no pairs", keyboards, pairs(""), {{What::EmptyImage}}},
        {"another order", keyboards, pairs("\xD6\x08\xBF"), {{What::ModulesDisagree}}},
        {"a module more", keyboards, pairs("\xD6\xBF\x08\x01"), {{What::ModulesDisagree}}},
        {"nothing on the line", "", pairs("\xD6"), {}},
        {"erased key",
         keyboards,
         [](FlashImage& image) { image[448] = image[449] = 0xFF; },
         {{What::ErasedKey, KM064}}},
        {"erased where the model has no key",
         keyboards,
         [](FlashImage& image) { image[256 + 14] = image[256 + 15] = 0xFF; },
         {}},
        {"a wide key over a key",
         keyboards,
         [](FlashImage& image) { image[576] = 0x81; },
         {{What::InvalidKeyMap, ICCR}}},
        {"a wide key over the right edge",
         keyboards,
         [](FlashImage& image) {
             image[576 + 14] = 0x80;               // key 8, h1
             image[576 + 2] = image[576 + 3] = 0;  // key 9, b1
         },
         {{What::InvalidKeyMap, ICCR}}},
        {"a tall and a wide key share a cell",
         keyboards,
         [](FlashImage& image) {
             image[576 + 10] = 0x40;                 // key 2, f1
             image[576 + 20] = 0x80;                 // key 5, c2
             image[576 + 30] = image[576 + 31] = 0;  // key 6, h2
         },
         {{What::InvalidKeyMap, ICCR}}},
    };
    for (const Case& c : cases) {
        SetupDocument device = ReadDeviceMap(keyboards);
        for (const ModuleKind kind : {KM096, KM064, ICCR})
            Module(device, kind).KeyMap[0] = '0';
        FlashImage image = Built(device, Filled(0xFF));
        c.spoil(image);
        const TakenSetup taken = TakeFromImage(ReadDeviceMap(c.line), image);
        EXPECT_EQ(taken.notices, c.notices) << c.reason;
        for (const ModuleRecord& record : taken.document.Modules) {
            const bool left = std::ranges::any_of(c.notices, [&](const TakeNotice& notice) {
                return notice.kind == None || notice.kind == record.Kind;
            });
            EXPECT_EQ(record.KeyMap[0], left ? '1' : '0') << c.reason;
        }
    }
}

TEST(TakeFromImage, AnUnknownModuleHidesTheTablesBehindIt)
{
    using What = TakeNotice::What;
    FlashImage image = ImageOf("\xD6\x55\xBF");
    std::fill_n(image.begin() + 256, 192, std::uint8_t{0});
    const TakenSetup taken = TakeFromImage(ReadDeviceMap("\xD6\x55\xBF"), image);
    EXPECT_EQ(taken.notices, (std::vector<TakeNotice>{{What::TableNotFound, KM064}}));
    EXPECT_EQ(taken.document.Modules[0].KeyMap.substr(0, 14), "00        0000");
}

TEST(TakeFromImage, KeepsTheLineAndTakesTheOptions)
{
    FlashImage image = ImageOf("\xD6\x1F\x04\x01");
    image[6] = 0xFE;
    image[128 + 7] = 0x02;
    image[1024] = '%', image[1025] = 0, image[1026] = 0xFF;
    SetupDocument scanned = TakeFromImage(ReadDeviceMap("\xD6\x17\x03"), image).document;
    EXPECT_EQ(scanned.DeviceMap, "\xD6\x17\x03");
    EXPECT_EQ(Module(scanned, KM096).Options, "NO ");
    EXPECT_EQ(Module(scanned, Backlight).Options, "YES");
    EXPECT_EQ(Module(scanned, MCR).Options, "1,2,3%^^OFF");
}

TEST(TakeFromImage, SeparatorsThatNoFileCarriesAreNone)
{
    using What = TakeNotice::What;
    FlashImage image = ImageOf("\x03");
    image[1024] = ' ', image[1025] = '^', image[1026] = 'a';
    const TakenSetup taken = TakeFromImage(ReadDeviceMap("\x03"), image);
    EXPECT_EQ(taken.document.Modules[0].Options, "1,2,3^^^ON ");
    EXPECT_EQ(taken.notices, (std::vector<TakeNotice>{{What::SeparatorNotCarried, MCR, 1},
                                                      {What::SeparatorNotCarried, MCR, 2},
                                                      {What::SeparatorNotCarried, MCR, 3}}));
}

}  // namespace
}  // namespace kelvora
