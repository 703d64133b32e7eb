#include "flash/TakeFromImage.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "flash/Images.h"

namespace kelvora {

using enum ModuleKind;
// What each image leaves untaken of a line's setup, and that the setup keeps its own there.
TEST(TakeFromImage, TellsWhatItLeaves)
{
    using What = TakeNotice::What;
    const std::string keyboards = "\xD6\xBF\x08";
    const std::vector<TakeNotice> invalid{{What::InvalidKeyMap, ICCR}};
    const auto check =
        [&](const std::string& reason, const std::string& line, const std::optional<FlashImage>& otherImage,
            const std::vector<std::pair<std::size_t, int>>& bytes, const std::vector<TakeNotice>& notices) {
            SetupDocument device = ReadDeviceMap(keyboards);
            for (const ModuleKind kind : {KM096, KM064, ICCR})
                Module(device, kind).KeyMap[0] = '0';
            FlashImage image = otherImage.value_or(Built(device, Filled(0xFF)));
            for (const auto& [address, byte] : bytes)
                image.at(address) = static_cast<std::uint8_t>(byte);
            const TakenSetup taken = TakeFromImage(ReadDeviceMap(line), image);
            EXPECT_EQ(taken.notices, notices) << reason;
            for (const ModuleRecord& record : taken.document.Modules) {
                const bool left = std::ranges::any_of(notices, [&](const TakeNotice& notice) {
                    return notice.kind == None || notice.kind == record.Kind;
                });
                EXPECT_EQ(record.KeyMap[0], left ? '1' : '0') << reason;
            }
        };
    check("nothing spoilt", keyboards, {}, {}, {});
    check("erased", keyboards, Filled(0xFF), {}, {{What::EmptyImage}});
    check("no pairs", keyboards, ImageOf(""), {}, {{What::EmptyImage}});
    check("another order", keyboards, ImageOf("\xD6\x08\xBF"), {}, {{What::ModulesDisagree}});
    check("a module more", keyboards, ImageOf("\xD6\xBF\x08\x01"), {}, {{What::ModulesDisagree}});
    check("nothing on the line", "", ImageOf("\xD6"), {}, {});
    check("erased key", keyboards, {}, {{448, 0xFF}, {449, 0xFF}}, {{What::ErasedKey, KM064}});
    check("erased where the model has no key", keyboards, {}, {{270, 0xFF}, {271, 0xFF}}, {});
    check("a wide key over a key", keyboards, {}, {{576, 0x81}}, invalid);
    // Key 8 at h1; key 9, b1, is unused.
    check("a wide key over the right edge", keyboards, {}, {{590, 0x80}, {578, 0}, {579, 0}}, invalid);
    // Key 2 at f1, key 5 at c2; key 6, h2, is unused.
    check("a tall and a wide key share a cell", keyboards, {}, {{586, 0x40}, {596, 0x80}, {606, 0}, {607, 0}},
          invalid);
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

}  // namespace kelvora
