#include "flash/SetupImage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "flash/Images.h"
#include "flash/TakeFromImage.h"
#include "setup/RandomSetups.h"

namespace kelvora {
namespace {

using namespace std::string_literals;

TEST(SetupImage, OfADeviceThatWasNeverRead)
{
    const auto built = BuildSetupImage(ReadDeviceMap(std::string(WholeChain)), nullptr);
    const FlashImage image = std::get<FlashImage>(built);
    EXPECT_EQ(image[6], 0xFF);
    EXPECT_EQ(TextOf(image).substr(128, 14), "\xD6\xFF\x17\xFF\x04\xFF\xBF\xFF\x03\xFF\x08\xFF\x00\xFF"s);
    // Contact a2 is key 2: a single key, and its number + 1 as code. h1 has no key behind it.
    EXPECT_EQ(TextOf(image).substr(256 + 16, 2), "\x00\x03"s);
    EXPECT_EQ(TextOf(image).substr(256 + 14, 2), "\xFF\xFF");
    // Key 83, "3" of the default map, stands at d7; the cell that it covers, e5, is unused.
    EXPECT_EQ(TextOf(image).substr(256 + 6 + 6 * 16, 2), "\x80\x54"s);
    EXPECT_EQ(TextOf(image).substr(256 + 8 + 4 * 16, 2), "\x00\x00"s);
    // The extension keyboard's first key, 97, at h5.
    EXPECT_EQ(TextOf(image).substr(480 + 14 + 4 * 16, 2), "\x00\x62"s);
    // The tables of code-4 part and badge reader, and the keypad's two contacts without a key.
    EXPECT_EQ(TextOf(image).substr(448, 32), std::string(32, '\xFF'));
    EXPECT_EQ(TextOf(image).substr(608, 32), std::string(32, '\xFF'));
    EXPECT_EQ(TextOf(image).substr(640 + 8 + 2 * 16, 4), std::string(4, '\xFF'));
    EXPECT_EQ(TextOf(image).substr(768), std::string(8192 - 768, '\xFF'));
}

// Each row: a pair of the device, the key type that the setup has there, and the pair that is written.
TEST(SetupImage, WritesAPairOnlyWhereItMeansSomethingElse)
{
    const auto check = [&](const std::string& reason, const std::string& held, char type,
                           const std::string& written) {
        SetupDocument document = ReadDeviceMap("\x08");
        Module(document, ModuleKind::ICCR).KeyMap[0] = type;
        FlashImage device = ImageOf("\x08");
        std::copy(held.begin(), held.end(), device.begin() + 256);
        EXPECT_EQ(TextOf(Built(document, device)).substr(256, 2), written) << reason;
    };
    check("the same type keeps its code", "\x45\x99", '2', "\x45\x99");
    check("another type keeps its code", "\x45\x99", '4', "\xC5\x99");
    check("a code in the second byte alone", "\x00\x02"s, '3', "\x80\x02");
    check("unused", "\x45\x99", '0', "\x00\x00"s);
    check("unused as the device has it", "\x40\x01", '0', "\x40\x01");
    check("used without a code", "\x40\x01", '1', "\x00\x02"s);
    check("used after an erasure", "\xFF\xFF", '4', "\xC0\x02");
    check("unused after an erasure", "\xFF\xFF", '0', "\x00\x00"s);
    check("no key in the setup", "\x45\x99", ' ', "\x00\x00"s);
    check("no key in the setup after an erasure", "\xFF\xFF", ' ', "\x00\x00"s);
    check("a position that the model lacks", "\x45\x99", 'X', "\x45\x99");
    check("a code that would look erased", "\x3F\xFF", '4', "\xC0\x02");
}

TEST(SetupImage, OptionsTouchTheirBitsAlone)
{
    SetupDocument document = ReadDeviceMap("\xD6\x03");
    FlashImage device = ImageOf("\xD6\x03");
    device[6] = 0xA1;
    device[131] = 0x70;
    device[1024] = 'a', device[1025] = 'b', device[1026] = 0xFF;
    Module(document, ModuleKind::KM096).Options = "NO ";
    Module(document, ModuleKind::MCR).Options = "1,2,3^;^ON ";
    Module(document, ModuleKind::MCR).KeyMap[0] = '1';  // which has no key
    const FlashImage image = Built(document, device);
    EXPECT_EQ(image[6], 0xA0);
    EXPECT_EQ(TextOf(image).substr(448, 32), std::string(32, '\xFF'));
    EXPECT_EQ(image[131], 0x71);
    EXPECT_EQ(TextOf(image).substr(1024, 3), "\x00;\xFF"s);
}

TEST(SetupImage, TablesAndOptionsMoveWithTheirModule)
{
    FlashImage device = ImageOf("\xD6\xBF\x03\x08");
    device[133] = 0x34;           // the badge reader's option
    device[256 + 192 + 128] = 7;  // its table's first byte
    device[135] = 0x56;           // a position behind the new end
    const FlashImage image = Built(ReadDeviceMap("\xD6\x03\xBF"), device);
    EXPECT_EQ(TextOf(image).substr(128, 8), "\xD6\xFF\x03\x35\xBF\xFF\x00\x56"s);
    EXPECT_EQ(image[256 + 192], 7);
}

TEST(SetupImage, IsRefused)
{
    using Reason = BuildRefusal::Reason;
    SetupDocument twice;
    for (const int code : {0xBF, 0xD6, 0x01, 0xBF})
        AppendModule(twice, static_cast<std::uint8_t>(code));
    EXPECT_EQ(std::get<BuildRefusal>(BuildSetupImage(twice, nullptr)),
              (BuildRefusal{Reason::RepeatedKind, 3, ModuleKind::KM064}));
    EXPECT_EQ(std::get<BuildRefusal>(BuildSetupImage(ReadDeviceMap("\xD6\xFF\xBF"), nullptr)),
              (BuildRefusal{Reason::UnknownModule, 1, ModuleKind::None}));
}

TEST(SetupImage, WhatTheDeviceCannotHold)
{
    using What = UnheldSetting::What;
    SetupDocument document = ReadDeviceMap(std::string(WholeChain));
    EXPECT_TRUE(WhatTheDeviceCannotHold(document).empty());
    std::string& main = Module(document, ModuleKind::KM096).KeyMap;
    main[0] = ' ', main[1] = 'X', main[2] = '0', main[3] = '1';
    Module(document, ModuleKind::ICCR).KeyMap[17] = '1';
    Module(document, ModuleKind::MCR).Options = "1,2,3;^\xFFON ";
    const std::vector<UnheldSetting> unheld{
        {What::Key, ModuleKind::KM096, 1, ' '},        {What::Key, ModuleKind::KM096, 2, 'X'},
        {What::Key, ModuleKind::KM096, 3, '0'},        {What::Key, ModuleKind::KM096, 4, '1'},
        {What::Separator, ModuleKind::MCR, 3, '\xFF'}, {What::Key, ModuleKind::ICCR, 178, '1'},
    };
    EXPECT_EQ(WhatTheDeviceCannotHold(document), unheld);
}

// What no setup decides: the bytes around options and pairs, and the device's own key contents.
std::string Undecided(const FlashImage& image)
{
    const std::string text(TextOf(image));
    return text.substr(0, 6) + text.substr(7, 121) + text.substr(142, 114) + text.substr(768, 256) +
           text.substr(1027);
}

TEST(SetupImage, WhatIsBuiltReadsBack)
{
    std::mt19937 random(20);
    RandomSetups setups;
    std::string chain;
    for (int round = 0; round < 200; ++round) {
        const SetupDocument document = setups.Next();
        // A device that was set up for other modules, with anything in between.
        FlashImage device = ImageOf(std::exchange(chain, document.DeviceMap));
        for (std::size_t address = 0; address < device.size(); ++address)
            if (address < 128 || address >= 142 || address % 2 != 0)
                device[address] = static_cast<std::uint8_t>(random());
        if (document.Modules.empty() || !WhatTheDeviceCannotHold(document).empty())
            continue;
        const FlashImage image = Built(document, device);
        const TakenSetup taken = TakeFromImage(ReadDeviceMap(document.DeviceMap), image);
        ASSERT_EQ(taken.document, document);
        EXPECT_TRUE(taken.notices.empty());
        EXPECT_EQ(Built(taken.document, image), image) << "nothing is left to write";
        EXPECT_EQ(Undecided(image), Undecided(device));
    }
}

}  // namespace
}  // namespace kelvora
