#include "setup/SetupWriter.h"

#include <gtest/gtest.h>

#include <vector>

#include "keymap/Keyboard.h"
#include "keymap/Models.h"
#include "setup/DeviceCode.h"
#include "setup/KeyMapPicture.h"
#include "setup/SetupReader.h"

using namespace kelvora;

TEST(SetupWriter, WritesAWholeSetup)
{
    SetupDocument setup =
        ReadSetup("[KM096]\nFiscal=NO\nBacklight=NO\n[ICCR]\n[MCR]\nTracks=2,3\nTrack2Sep=;\n[KM064]");
    SetKeyType(1, KeyType::Quadruple, 8, setup.Modules.back().KeyMap);
    const std::string text =
        "[Kelvora]\r\nVersion = 2.0\r\n"
        "[KM096]\r\n"
        "KeyMap = SS________SS _\r\n         SS________SS _\r\n         SS________SS _\r\n"
        "         SSSSSSSSSSSS _\r\n         SSSSSSSSSSSS _\r\n         SSSSSSSSSSSS _\r\n"
        "         SSSSSSSSSSHH _\r\n         SSSSSSSSSSHH\r\n"
        "Fiscal = NO \r\nBacklight = NO \r\n"
        "[ICCR]\r\n"
        "KeyMap = SSSS _\r\n         SSSS _\r\n         SSSS _\r\n         SSSS\r\n"
        "[MCR]\r\nTracks = 2,3  \r\nTrack2Sep = ;\r\nAutoread = ON \r\n"
        "[KM064]\r\n"
        "KeyMap = QQSSSSSS _\r\n         QQSSSSSS _\r\n         SSSSSSSS _\r\n         SSSSSSSS _\r\n"
        "         SSSSSSSS _\r\n         SSSSSSSS _\r\n         SSSSSSSS _\r\n         SSSSSSSS\r\n";
    EXPECT_EQ(WriteSetup(setup.Modules), text);
    setup.Modules.push_back({});
    setup.Modules.push_back(CreateRecord(DeviceCode::ICCR, 6));
    EXPECT_EQ(WriteSetup(setup.Modules), text) << "device code 0 ends the list";
}

TEST(SetupWriter, DrawsKeyMaps)
{
    struct Row {
        std::string reason, map;
        std::size_t columns;
        std::string picture;
    };
    const std::vector<Row> rows{
        {"a later key writes over, unused and absent cells do not", "401201X 0", 3,
         "QQS _\r\n         VQS _\r\n         V_="},
        {"an incomplete row is lost", "11111", 2, "SS _\r\n         SS"},
        {"with one column the last cell is lost", "111", 1, "S _\r\n         S"},
        {"nothing is drawn past the picture's end", "1113", 2, "SS _\r\n         SH"},
    };
    for (const Row& row : rows) {
        std::string text;
        AppendKeyMapPicture(text, row.map, row.columns);
        EXPECT_EQ(text, "KeyMap = " + row.picture + "\r\n") << row.reason;
    }
}
