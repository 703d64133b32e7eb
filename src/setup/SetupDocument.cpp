#include "setup/SetupDocument.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "keymap/Models.h"
#include "setup/DeviceCode.h"
#include "setup/Options.h"

namespace kelvora {

namespace {

using Difference = ModuleList::difference_type;

// The parts that are added, moved and removed together with a main keyboard.
constexpr std::array MasterParts{ModuleKind::Backlight, ModuleKind::Code4};

// Puts records, with their codes in the device map, before the record at `index`.
void InsertRecords(SetupDocument& document, ModuleList records, std::size_t index)
{
    index = std::min(index, document.Modules.size());
    std::size_t position = document.DeviceMap.size();
    if (index < document.Modules.size())
        position = document.Modules[index].Position;
    for (auto later = document.Modules.begin() + static_cast<Difference>(index);
         later != document.Modules.end(); ++later)
        later->Position = static_cast<std::uint8_t>(later->Position + records.size());
    std::string codes;
    for (ModuleRecord& record : records) {
        record.Position = static_cast<std::uint8_t>(position + codes.size());
        codes += static_cast<char>(record.DeviceCode);
    }
    document.DeviceMap.insert(position, codes);
    document.Modules.insert(document.Modules.begin() + static_cast<Difference>(index),
                            std::make_move_iterator(records.begin()), std::make_move_iterator(records.end()));
}

// Takes out the module of that kind, a main keyboard with its parts; none when the setup has no such module.
ModuleList TakeRecords(SetupDocument& document, ModuleKind kind)
{
    ModuleList taken;
    const auto take = [&](ModuleKind part) {
        if (const auto found = FindModule(document.Modules, part)) {
            taken.push_back(document.Modules[*found]);
            DeleteRecord(document, *found);
        }
    };
    take(kind);
    if (kind == ModuleKind::KM096 && !taken.empty())
        std::ranges::for_each(MasterParts, take);
    return taken;
}

}  // namespace

std::optional<std::size_t> FindModule(const ModuleList& modules, ModuleKind kind)
{
    const auto found = std::ranges::find(modules, kind, &ModuleRecord::Kind);
    if (found == modules.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - modules.begin());
}

std::string NewDeviceCodes(ModuleKind kind)
{
    if (kind == ModuleKind::None || IsPart(kind))
        return {};
    std::string codes(1, static_cast<char>(FirstDeviceCode(kind)));
    if (kind == ModuleKind::KM096)
        for (const ModuleKind part : MasterParts)
            codes += static_cast<char>(FirstDeviceCode(part));
    return codes;
}

bool AppendModule(SetupDocument& document, std::uint8_t deviceCode)
{
    if (document.DeviceMap.size() >= MaximumModules || KindOf(deviceCode) == ModuleKind::None)
        return false;
    document.Modules.push_back(
        CreateRecord(deviceCode, static_cast<std::uint8_t>(document.DeviceMap.size())));
    document.DeviceMap += static_cast<char>(deviceCode);
    return true;
}

bool InsertModule(SetupDocument& document, ModuleKind kind, std::size_t index)
{
    const std::string codes = NewDeviceCodes(kind);
    if (codes.empty() || document.DeviceMap.size() + codes.size() > MaximumModules)
        return false;
    ModuleList records;
    for (const char code : codes)
        records.push_back(CreateRecord(static_cast<std::uint8_t>(code)));
    InsertRecords(document, std::move(records), index);
    return true;
}

void DeleteRecord(SetupDocument& document, std::size_t index)
{
    document.DeviceMap.erase(document.Modules[index].Position, 1);
    document.Modules.erase(document.Modules.begin() + static_cast<Difference>(index));
    for (auto later = document.Modules.begin() + static_cast<Difference>(index);
         later != document.Modules.end(); ++later)
        --later->Position;
}

void RemoveModule(SetupDocument& document, ModuleKind kind)
{
    TakeRecords(document, kind);
}

void MoveModule(SetupDocument& document, ModuleKind kind, std::size_t index)
{
    InsertRecords(document, TakeRecords(document, kind), index);
}

void ChangeDeviceCode(std::string& deviceMap, ModuleRecord& record, std::uint8_t newCode)
{
    if (deviceMap.find(static_cast<char>(record.DeviceCode)) != record.Position)
        return;
    deviceMap[record.Position] = static_cast<char>(newCode);
    record.DeviceCode = newCode;
    // The new code's own options say which tracks it reads, or the backlight's state.
    const std::string options = CreateRecord(newCode).Options;
    if (KindOf(newCode) == ModuleKind::MCR)
        record.Options.replace(0, Options::TracksLength, options, 0, Options::TracksLength);
    else if (KindOf(newCode) == ModuleKind::Backlight)
        record.Options = options;
}

std::string UnknownDeviceCodes(const SetupDocument& document)
{
    std::string codes;
    for (const char code : document.DeviceMap)
        if (KindOf(static_cast<std::uint8_t>(code)) == ModuleKind::None)
            codes += code;
    return codes;
}

std::int16_t FirstKeyNumber(ModuleKind kind, const ModuleList& modules)
{
    int number = 1;
    for (const ModuleRecord& record : modules) {
        if (record.Kind == kind)
            break;
        if (FindModel(record.Kind))
            number += record.Rows * record.Columns;
    }
    return static_cast<std::int16_t>(number);
}

}  // namespace kelvora
