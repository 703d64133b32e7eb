#include "flash/SetupImage.h"

#include <algorithm>
#include <optional>
#include <string>

#include "flash/KeyTables.h"
#include "flash/MatrixCodes.h"
#include "keymap/Models.h"
#include "setup/DeviceCode.h"
#include "setup/Options.h"

namespace kelvora {

namespace {

std::optional<BuildRefusal> RefusalOf(const SetupDocument& document)
{
    std::vector<ModuleKind> seen;
    for (const char code : document.DeviceMap) {
        const ModuleKind kind = KindOf(static_cast<std::uint8_t>(code));
        const auto place = static_cast<int>(seen.size());
        if (kind == ModuleKind::None)
            return BuildRefusal{BuildRefusal::Reason::UnknownModule, place, kind};
        if (std::ranges::find(seen, kind) != seen.end())
            return BuildRefusal{BuildRefusal::Reason::RepeatedKind, place, kind};
        seen.push_back(kind);
    }
    return std::nullopt;
}

constexpr FlashImage ErasedImage = [] {
    FlashImage image{};
    image.fill(ErasedByte);
    return image;
}();

// What the device is to hold for a key of that type in the place of `held`.
KeyPair PairFor(char type, const KeyPair& held, int keyNumber)
{
    if (type == KeyTypeOf(held) && !IsErased(held))
        return held;
    // A blank is a key that the setup does not have: it must not send anything.
    if (type < KeyType::Single || type > KeyType::Quadruple)
        return UnusedPair;
    const auto typeBits = static_cast<std::uint8_t>((type - KeyType::Single) << KeyTypeShift);
    const KeyPair retyped{static_cast<std::uint8_t>(typeBits | (held.first & KeyCodeMask)), held.second};
    // A retyped pair may come out as an erased one: such a code cannot be kept either.
    const bool hasCode = !IsErased(held) && KeyTypeOf(held) != KeyType::Unused;
    if (hasCode && !IsErased(retyped))
        return retyped;
    return {typeBits, static_cast<std::uint8_t>(keyNumber + 1)};
}

class Builder {
public:
    Builder(const SetupDocument& document, const FlashImage& device)
        : document_(document),
          device_(device),
          deviceCodes_(DeviceCodesOf(device)),
          tables_(KeyTablesOf(document.DeviceMap)),
          image_(device)
    {
    }

    FlashImage Build();

private:
    void PutFiscal(const ModuleRecord& record);
    void PutPairs();
    std::uint8_t OptionByte(ModuleKind kind) const;
    void PutAutoread(const ModuleRecord& record);
    void PutSeparators(const ModuleRecord& record);
    void MoveTables();
    void PutKeys(const ModuleRecord& record, const KeyTable& table);

    const SetupDocument& document_;
    const FlashImage& device_;
    std::string deviceCodes_;
    std::vector<KeyTable> tables_;
    FlashImage image_;
};

void Builder::PutFiscal(const ModuleRecord& record)
{
    std::uint8_t& byte = image_[FlashLayout::FiscalAt];
    byte = static_cast<std::uint8_t>(record.Options == Options::Yes ? byte | FlashLayout::FiscalBit
                                                                    : byte & ~FlashLayout::FiscalBit);
}

// The option byte that the device holds for its module of that kind.
std::uint8_t Builder::OptionByte(ModuleKind kind) const
{
    const auto held = std::ranges::find(deviceCodes_, kind,
                                        [](char code) { return KindOf(static_cast<std::uint8_t>(code)); });
    if (held == deviceCodes_.end())
        return ErasedByte;
    const auto position = static_cast<std::size_t>(held - deviceCodes_.begin());
    return device_[FlashLayout::PairsAt + position * FlashLayout::PairSize + 1];
}

void Builder::PutPairs()
{
    const std::string& codes = document_.DeviceMap;
    for (std::size_t position = 0; position < MaximumModules; ++position) {
        const std::size_t address = FlashLayout::PairsAt + position * FlashLayout::PairSize;
        if (position < codes.size()) {
            const auto code = static_cast<std::uint8_t>(codes[position]);
            PutPair(image_, address, {code, OptionByte(KindOf(code))});
        } else if (deviceCodes_.size() != codes.size()) {
            // Where the device's list ends at the same place it stays as it is behind its end.
            image_[address] = DeviceCode::NotInUse;
        }
    }
}

void Builder::PutAutoread(const ModuleRecord& record)
{
    std::uint8_t& byte = image_[FlashLayout::PairsAt + record.Position * FlashLayout::PairSize + 1];
    const bool on = record.Options.substr(Options::AutoreadAt) == Options::On;
    byte = static_cast<std::uint8_t>(on ? byte | FlashLayout::AutoreadBit : byte & ~FlashLayout::AutoreadBit);
}

void Builder::PutSeparators(const ModuleRecord& record)
{
    for (std::size_t track = 0; track < FlashLayout::SeparatorCount; ++track) {
        const char separator = record.Options[Options::SeparatorAt + track];
        std::uint8_t& byte = image_[FlashLayout::SeparatorsAt + track];
        if (separator != Options::NoSeparator)
            byte = static_cast<std::uint8_t>(separator);
        else if (byte != ErasedByte)
            byte = 0;
    }
}

void Builder::MoveTables()
{
    const std::vector<KeyTable> held = KeyTablesOf(deviceCodes_);
    for (const KeyTable& table : tables_) {
        auto* const to = image_.begin() + table.start;
        if (const KeyTable* const from = FindTable(held, table.kind))
            std::copy_n(device_.begin() + from->start, table.length, to);
        else
            std::fill_n(to, table.length, ErasedByte);
    }
}

void Builder::PutKeys(const ModuleRecord& record, const KeyTable& table)
{
    const std::string positions = ParseMatrixCodes(record.MatrixCodes);
    const int first = FirstKeyNumber(record.Kind, document_.Modules);
    const std::size_t cells = std::min(record.KeyMap.size(), positions.size());
    for (std::size_t cell = 0; cell < cells; ++cell) {
        const char type = record.KeyMap[cell];
        if (positions[cell] == NoContact || type == KeyType::Absent)
            continue;
        const std::size_t address = table.start + static_cast<unsigned char>(positions[cell]);
        const int number = first + static_cast<int>(cell);
        PutPair(image_, address, PairFor(type, PairAt(image_, address), number));
    }
}

FlashImage Builder::Build()
{
    PutPairs();
    MoveTables();
    for (const ModuleRecord& record : document_.Modules) {
        if (record.Kind == ModuleKind::KM096)
            PutFiscal(record);
        if (record.Kind == ModuleKind::MCR) {
            PutAutoread(record);
            PutSeparators(record);
        }
        const KeyTable* const table = FindTable(tables_, record.Kind);
        if (table && FindModel(record.Kind))
            PutKeys(record, *table);
    }
    return image_;
}

// Whether a device of that model has the same at a position when a setup is read back from it. What the
// model's default map lacks there is no key for the setup, and what it has is one.
bool IsHeld(char type, char defaultType)
{
    return KeyType::HasKey(defaultType) ? KeyType::HasKey(type) : type == defaultType;
}

void AppendUnheldKeys(const SetupDocument& document, const ModuleRecord& record, const Model& model,
                      std::vector<UnheldSetting>& unheld)
{
    const int first = FirstKeyNumber(record.Kind, document.Modules);
    const std::size_t cells = std::min(record.KeyMap.size(), model.defaultMap.size());
    for (std::size_t cell = 0; cell < cells; ++cell)
        if (const char type = record.KeyMap[cell]; !IsHeld(type, model.defaultMap[cell]))
            unheld.push_back({UnheldSetting::What::Key, record.Kind, first + static_cast<int>(cell), type});
}

void AppendUnheldSeparators(const ModuleRecord& record, std::vector<UnheldSetting>& unheld)
{
    int track = 0;
    for (const char separator : record.Options.substr(Options::SeparatorAt, FlashLayout::SeparatorCount)) {
        ++track;
        if (static_cast<std::uint8_t>(separator) == ErasedByte || !Options::IsSeparatorCarried(separator))
            unheld.push_back({UnheldSetting::What::Separator, record.Kind, track, separator});
    }
}

}  // namespace

std::variant<FlashImage, BuildRefusal> BuildSetupImage(const SetupDocument& document,
                                                       const FlashImage* device)
{
    if (const auto refusal = RefusalOf(document))
        return *refusal;
    return Builder(document, device ? *device : ErasedImage).Build();
}

std::vector<UnheldSetting> WhatTheDeviceCannotHold(const SetupDocument& document)
{
    std::vector<UnheldSetting> unheld;
    for (const ModuleRecord& record : document.Modules) {
        if (const Model* const model = FindModel(record.Kind))
            AppendUnheldKeys(document, record, *model, unheld);
        if (record.Kind == ModuleKind::MCR)
            AppendUnheldSeparators(record, unheld);
    }
    return unheld;
}

}  // namespace kelvora
