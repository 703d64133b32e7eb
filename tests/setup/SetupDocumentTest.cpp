#include "setup/SetupDocument.h"

#include <map>

#include "setup/SampleTexts.h"
#include "setup/SetupReader.h"

using namespace kelvora;

TEST(SetupDocument, EveryContactOfAModelHasItsOwnPlaceInTheMatrix)
{
    for (const auto& [code, contacts] :
         std::map<std::uint8_t, std::size_t>{{214, 72}, {191, 64}, {8, 18}, {4, 11}, {3, 11}}) {
        SCOPED_TRACE(static_cast<int>(code));
        const ModuleRecord record = CreateRecord(code, 5);
        std::map<std::string_view, int> places;
        for (std::size_t at = 0; at < record.MatrixCodes.size(); at += 4)
            ++places[record.MatrixCodes.substr(at, 3)];
        places.erase("   ");
        for (const auto& [place, times] : places)
            EXPECT_EQ(times, 1) << place;
        EXPECT_EQ(places.size(), contacts);
        EXPECT_EQ(record.KeyMap.size(), record.KeyCount);
    }
}

TEST(SetupDocument, InsertsRemovesAndMovesModules)
{
    SetupDocument document = ReadDeviceMap("\xFF\xBF\xFF\x08");
    EXPECT_FALSE(InsertModule(document, ModuleKind::Backlight, 0)) << "a part is never inserted alone";
    EXPECT_TRUE(InsertModule(document, ModuleKind::KM096, 0));
    EXPECT_EQ(document.DeviceMap, "\xFF\xD6\x17\x04\xBF\xFF\x08");
    EXPECT_FALSE(InsertModule(document, ModuleKind::MCR, 0)) << "the line is full";
    EXPECT_FALSE(AppendModule(document, 3));
    MoveModule(document, ModuleKind::KM096, 1);
    EXPECT_EQ(document.DeviceMap, "\xFF\xBF\xFF\xD6\x17\x04\x08") << "taken out, then before the record at 1";
    RemoveModule(document, ModuleKind::KM096);
    EXPECT_EQ(document, ReadDeviceMap("\xFF\xBF\xFF\x08"));
}

TEST(SetupDocument, NumbersKeysThroughTheLine)
{
    const ModuleList modules = ReadSetup("[KM096]\n[MCR]\n[ICCR]\n[KM064]").Modules;
    EXPECT_EQ(FirstKeyNumber(ModuleKind::ICCR, modules), 97);
    EXPECT_EQ(FirstKeyNumber(ModuleKind::KM064, modules), 113)
        << "the record of a chip card unit holds 4 x 4";
}
