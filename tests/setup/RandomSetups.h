// Setups of any modules, options and keys that the program can make.
#pragma once

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "keymap/Keyboard.h"
#include "keymap/Models.h"
#include "setup/DeviceCode.h"
#include "setup/Options.h"
#include "setup/SetupDocument.h"

namespace kelvora {

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

}  // namespace kelvora
