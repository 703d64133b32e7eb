#include "setup/SetupDocument.h"

#include <array>
#include <map>
#include <random>
#include <vector>

#include "keymap/Models.h"
#include "setup/PosCfg.h"
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
    EXPECT_TRUE(MoveModule(document, ModuleKind::KM096, 1));
    EXPECT_EQ(document.DeviceMap, "\xFF\xBF\xFF\xD6\x17\x04\x08") << "taken out, then before the record at 1";
    EXPECT_TRUE(RemoveModule(document, ModuleKind::KM096));
    EXPECT_FALSE(RemoveModule(document, ModuleKind::KM096));
    EXPECT_EQ(document, ReadDeviceMap("\xFF\xBF\xFF\x08"));
}

TEST(SetupDocument, StaysInStepUnderAnyOperations)
{
    constexpr std::array kinds{ModuleKind::KM096, ModuleKind::KM064, ModuleKind::MCR, ModuleKind::ICCR};
    std::mt19937 random(7);
    const auto below = [&](unsigned limit) { return static_cast<std::size_t>(random() % limit); };
    for (unsigned run = 0; run < 200; ++run) {
        const std::size_t unknown = run % 2;
        SetupDocument document = ReadDeviceMap(std::string(unknown, '\xFF'));
        std::map<ModuleKind, std::string> maps;  // what each module present bears
        for (int step = 0; step < 40; ++step) {
            const ModuleKind kind = kinds.at(below(4));
            const std::size_t operation = below(4);
            if (operation == 0 && RemoveModule(document, kind))
                maps.erase(kind);
            else if (operation == 1)
                MoveModule(document, kind, below(9));
            else if (!maps.contains(kind) && InsertModule(document, kind, below(9)))
                document.Modules.at(*FindModule(document.Modules, kind)).KeyMap = maps[kind] =
                    std::to_string(step);
            std::size_t next = 0;
            for (const ModuleRecord& record : document.Modules) {
                ASSERT_GE(record.Position, next);
                ASSERT_EQ(static_cast<std::uint8_t>(document.DeviceMap.at(record.Position)),
                          record.DeviceCode);
                ASSERT_TRUE(!maps.contains(record.Kind) || record.KeyMap == maps[record.Kind]);
                next = record.Position + 1U;
            }
            ASSERT_EQ(document.DeviceMap.size(), document.Modules.size() + unknown);
            ASSERT_LE(document.DeviceMap.size(), MaximumModules);
            ASSERT_EQ(document.Modules.size(), maps.size() + (maps.contains(ModuleKind::KM096) ? 2U : 0U));
        }
    }
}

TEST(SetupDocument, ChangesDeviceCodes)
{
    struct Row {
        std::string reason, deviceMap;
        std::uint8_t code, position, newCode;
        bool done;
        std::string newMap, options;
    };
    const std::vector<Row> rows{
        {"tracks 1 and 2", "\xBF\x03", 3, 1, 1, true, "\xBF\x01", "1,2  ;^,OFF"},
        {"tracks 2 and 3", "\x03\xBF", 3, 0, 2, true, "\x02\xBF", "2,3  ;^,OFF"},
        {"the same tracks again", "\x03", 3, 0, 3, true, "\x03", "1,2,3;^,OFF"},
        {"backlight off", "\xD6\x17\x04", 23, 1, 31, true, "\xD6\x1F\x04", "NO "},
        {"backlight on", "\xD6\x1F", 31, 1, 23, true, "\xD6\x17", "YES"},
        {"its code stands elsewhere", "\x03\xBF\x03", 3, 2, 1, false, "\x03\xBF\x03", "1,2,3;^,OFF"},
        {"no map", "", 3, 0, 1, false, "", "1,2,3;^,OFF"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.reason);
        std::string map = row.deviceMap;
        ModuleRecord record = CreateRecord(row.code, row.position);
        if (record.Kind == ModuleKind::MCR)
            record.Options = "1,2,3;^,OFF";
        EXPECT_EQ(ChangeDeviceCode(map, record, row.newCode), row.done);
        EXPECT_EQ(map, row.newMap);
        EXPECT_EQ(record.DeviceCode, row.done ? row.newCode : row.code);
        EXPECT_EQ(record.Options, row.options);
    }
}

TEST(SetupDocument, NumbersKeysThroughTheLine)
{
    const ModuleList modules = ReadSetup("[KM096]\n[MCR]\n[ICCR]\n[KM064]").Modules;
    EXPECT_EQ(FirstKeyNumber(ModuleKind::ICCR, modules), 97);
    EXPECT_EQ(FirstKeyNumber(ModuleKind::KM064, modules), 113)
        << "the record of a chip card unit holds 4 x 4";
}

TEST(PosCfg, BaudRateRewritesTheSettings)
{
    struct Row {
        std::string before;
        std::int16_t index;
        std::string after;
    };
    for (const Row& row :
         {Row{"9600,n,8,1", 0, "19200,n,8,1"}, Row{"9600,n,8,1", 7, "150,n,8,1"}, Row{"19200", 1, "9600"},
          Row{"9600,n,8,1", 8, ",n,8,1"}, Row{"9600,n,8,1", -1, ",n,8,1"}}) {
        PosCfg settings(SetupMode::New, 1);
        settings.PortSettings = row.before;
        settings.SetBaudRate(row.index);
        EXPECT_EQ(settings.BaudRate(), row.index);
        EXPECT_EQ(settings.PortSettings, row.after);
    }
    EXPECT_EQ(BaudIndexOf("150,n,8,1"), 7);
    EXPECT_EQ(BaudIndexOf("110,n,8,1"), 1) << "a speed that is not in the table";
}
