#include "picture/DevicePicture.h"

#include <gtest/gtest.h>

#include "picture/KeyGridPicture.h"
#include "picture/Svg.h"
#include "setup/DeviceCode.h"

using namespace kelvora;

namespace {

std::string Numbers(const std::string& svg)
{
    std::string numbers;
    for (const DrawnText& drawn : TextsOf(svg))
        numbers += drawn.text + " ";
    return numbers;
}

ModuleRecord Keypad(std::string keyMap)
{
    ModuleRecord record = CreateRecord(DeviceCode::ICCR, 0);
    record.KeyMap = std::move(keyMap);
    return record;
}

}  // namespace

TEST(DevicePicture, EveryButtonHasItsDocument)
{
    for (const StripButtonShape& shape : StripButtons) {
        const std::string svg = DevicePicture(shape.button, nullptr);
        EXPECT_TRUE(IsWellFormed(svg)) << svg;
        EXPECT_NE(
            svg.find("viewBox=\"0 0 " + std::to_string(shape.width) + " " + std::to_string(shape.height)),
            std::string::npos);
    }
}

TEST(DevicePicture, ShowsTheRecordsOptions)
{
    const auto differ = [](StripButton button, std::uint8_t code, auto change) {
        ModuleRecord record = CreateRecord(code, 0);
        const std::string before = DevicePicture(button, &record);
        change(record);
        return before != DevicePicture(button, &record);
    };
    EXPECT_TRUE(differ(StripButton::Master, DeviceCode::KM096, [](auto& record) { record.Options = "NO "; }));
    EXPECT_TRUE(differ(StripButton::Backlight, DeviceCode::BacklightOn,
                       [](auto& record) { record.DeviceCode = DeviceCode::BacklightOff; }));
    EXPECT_TRUE(differ(StripButton::MCR, DeviceCode::MCR123,
                       [](auto& record) { record.Options.replace(0, 5, "2,3  "); }));
    EXPECT_TRUE(differ(StripButton::MCR, DeviceCode::MCR123,
                       [](auto& record) { record.Options.replace(8, 3, "OFF"); }));
    EXPECT_FALSE(differ(StripButton::MCR, DeviceCode::MCR123, [](auto& record) { record.Options[5] = '1'; }))
        << "a separator that looks like a track";
}

TEST(KeyGridPicture, DrawsOneCapAKey)
{
    const auto check = [&](const char* reason, const char* map, const char* numbers) {
        EXPECT_EQ(Numbers(KeyGridPicture(Keypad(map), 10)), numbers) << reason;
    };
    check("covered cells draw nothing", "4030002111011111XX", "10 12 16 17 18 19 21 22 23 24 25 ");
    check("unused keys count", "0111111111111110XX", "10 11 12 13 14 15 16 17 18 19 20 21 22 23 24 25 ");
    check("positions without a key stay empty", "1 X1            XX", "10 13 ");
    check("a fifth row is drawn where it has keys", "                11", "26 27 ");
    check("a map that is cut short", "11", "10 11 ");
}

TEST(KeyGridPicture, LargeCapsReachOverTheGapAndNeverOutOfTheGrid)
{
    // A position is 600 wide, its cap 520.
    const auto has = [](const char* map, const char* size) {
        return KeyGridPicture(Keypad(map), 1).find(size) != std::string::npos;
    };
    EXPECT_TRUE(has("3011111111111111XX", "width=\"1120\" height=\"520\""));
    EXPECT_TRUE(has("2111011111111111XX", "width=\"520\" height=\"1120\""));
    EXPECT_TRUE(has("4011001111111111XX", "width=\"1120\" height=\"1120\""));
    EXPECT_FALSE(has("1114111111111111XX", "width=\"1120\"")) << "last column";
    EXPECT_FALSE(has("1111111111112111XX", "height=\"1120\"")) << "last row";
}
