#include "setup/SetupWriter.h"

#include <algorithm>
#include <random>
#include <vector>

#include "keymap/Keyboard.h"
#include "keymap/Models.h"
#include "setup/DeviceCode.h"
#include "setup/KeyMapPicture.h"
#include "setup/Options.h"
#include "setup/SampleTexts.h"
#include "setup/SetupReader.h"

using namespace kelvora;

namespace {

class RandomSetups {
public:
    SetupDocument Next()
    {
        SetupDocument document;
        std::vector kinds{ModuleKind::KM064, ModuleKind::MCR, ModuleKind::ICCR};
        std::shuffle(kinds.begin(), kinds.end(), random_);
        kinds.resize(Below(4));
        if (Below(2))
            kinds.insert(kinds.begin(), ModuleKind::KM096);
        for (const ModuleKind kind : kinds)
            InsertModule(document, kind, document.Modules.size());
        for (ModuleRecord& record : document.Modules)
            Choose(document.DeviceMap, record);
        return document;
    }

private:
    std::size_t Below(std::size_t limit) { return random_() % limit; }

    void Choose(std::string& deviceMap, ModuleRecord& record)
    {
        if (const Model* model = FindModel(record.Kind))
            for (std::size_t change = Below(200); change > 0; --change)
                ChangeKey(*model, record.KeyMap);
        if (record.Kind == ModuleKind::KM096)
            record.Options = Below(2) ? Options::Yes : Options::No;
        if (record.Kind == ModuleKind::Backlight)
            ChangeDeviceCode(deviceMap, record,
                             Below(2) ? DeviceCode::BacklightOn : DeviceCode::BacklightOff);
        if (record.Kind != ModuleKind::MCR)
            return;
        ChangeDeviceCode(deviceMap, record, static_cast<std::uint8_t>(DeviceCode::MCR12 + Below(3)));
        record.Options.replace(Options::AutoreadAt, 3, Below(2) ? Options::On : Options::Off);
        for (std::size_t track = 0; track < 3; ++track)
            if (const auto separator = static_cast<char>(Below(256)); Options::IsSeparatorCarried(separator))
                record.Options[Options::SeparatorAt + track] = separator;
    }

    // What a key mapping form does: a type that the key may take, or none.
    void ChangeKey(const Model& model, std::string& map)
    {
        const int position = static_cast<int>(Below(map.size())) + 1;
        const std::uint8_t allowed = AllowedKeyTypes(position, model.columns, map);
        const std::size_t type = Below(5);
        if (allowed != 0 && (type == 4 || (allowed >> type & 1) != 0))
            SetKeyType(position, type == 4 ? KeyType::Unused : static_cast<char>('1' + type), model.columns,
                       map);
    }

    std::mt19937 random_{20};
};

}  // namespace

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

TEST(SetupWriter, WhatIsWrittenReadsBack)
{
    RandomSetups setups;
    for (int round = 0; round < 2000; ++round) {
        const SetupDocument setup = setups.Next();
        const std::string text = WriteSetup(setup.Modules);
        ASSERT_EQ(ReadSetup(text), setup) << text;
    }
}
