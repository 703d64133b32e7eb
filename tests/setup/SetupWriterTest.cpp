#include "setup/SetupWriter.h"

#include <gtest/gtest.h>

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
    std::string narrow;
    AppendKeyMapPicture(narrow, "111", 1);
    EXPECT_EQ(narrow, "KeyMap = S _\r\n         S\r\n") << "of one column without the last cell";
}
