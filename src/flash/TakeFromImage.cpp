#include "flash/TakeFromImage.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "flash/KeyTables.h"
#include "flash/MatrixCodes.h"
#include "keymap/Keyboard.h"
#include "keymap/Models.h"
#include "setup/KeyMapPicture.h"
#include "setup/Options.h"

namespace kelvora {

namespace {

class Taker {
public:
    Taker(SetupDocument scanned, const FlashImage& image) : image_(image), taken_{std::move(scanned), {}} {}

    TakenSetup Take();

private:
    void TakeFiscal(ModuleRecord& record) const;
    void TakeSeparators(ModuleRecord& record);
    void TakeAutoread(ModuleRecord& record) const;
    void TakeKeyMaps();
    std::optional<TakeNotice::What> TakeKeyMap(ModuleRecord& record, std::size_t start) const;

    const FlashImage& image_;
    TakenSetup taken_;
};

void Taker::TakeFiscal(ModuleRecord& record) const
{
    record.Options = image_[FlashLayout::FiscalAt] & FlashLayout::FiscalBit ? Options::Yes : Options::No;
}

void Taker::TakeSeparators(ModuleRecord& record)
{
    for (std::size_t track = 0; track < FlashLayout::SeparatorCount; ++track) {
        const std::uint8_t byte = image_[FlashLayout::SeparatorsAt + track];
        auto separator = static_cast<char>(byte);
        if (byte == 0 || byte == ErasedByte) {
            separator = Options::NoSeparator;
        } else if (separator == Options::NoSeparator || !Options::IsSeparatorCarried(separator)) {
            // The character that means "none" in the options cannot be a separator itself.
            separator = Options::NoSeparator;
            taken_.notices.push_back(
                {TakeNotice::What::SeparatorNotCarried, record.Kind, static_cast<int>(track) + 1});
        }
        record.Options[Options::SeparatorAt + track] = separator;
    }
}

void Taker::TakeAutoread(ModuleRecord& record) const
{
    const std::string codes = DeviceCodesOf(image_);
    const auto reader = std::ranges::find(codes, ModuleKind::MCR,
                                          [](char code) { return KindOf(static_cast<std::uint8_t>(code)); });
    if (reader == codes.end())
        return;
    const auto position = static_cast<std::size_t>(reader - codes.begin());
    const std::uint8_t option = image_[FlashLayout::PairsAt + position * FlashLayout::PairSize + 1];
    record.Options.replace(Options::AutoreadAt, std::string::npos,
                           option & FlashLayout::AutoreadBit ? Options::On : Options::Off);
}

std::optional<TakeNotice::What> Taker::TakeKeyMap(ModuleRecord& record, std::size_t start) const
{
    const std::string positions = ParseMatrixCodes(record.MatrixCodes);
    const std::string keys = KeyMapFromDeviceTable(TextOf(image_), positions, start, record.KeyMap.size());
    std::string map = record.KeyMap;
    for (std::size_t cell = 0; cell < map.size(); ++cell) {
        if (keys[cell] == KeyType::NoKey || map[cell] == KeyType::Absent)
            continue;
        if (IsErased(PairAt(image_, start + static_cast<unsigned char>(positions[cell]))))
            return TakeNotice::What::ErasedKey;
        map[cell] = keys[cell];
    }
    if (!IsKeyMapValid(map, record.Rows, record.Columns) || !CanBeDrawn(map, record.Columns))
        return TakeNotice::What::InvalidKeyMap;
    record.KeyMap = std::move(map);
    return std::nullopt;
}

void Taker::TakeKeyMaps()
{
    const std::string codes = DeviceCodesOf(image_);
    // A download may leave the device with other parts than the line reports: the tables are where the image
    // itself says.
    const std::vector<KeyTable> tables = KeyTablesOf(codes);
    if (!NamesModules(image_))
        return taken_.notices.push_back({TakeNotice::What::EmptyImage});
    if (!HaveSameMainModules(codes, taken_.document.DeviceMap))
        return taken_.notices.push_back({TakeNotice::What::ModulesDisagree});
    for (ModuleRecord& record : taken_.document.Modules) {
        if (!FindModel(record.Kind))
            continue;
        const KeyTable* const table = FindTable(tables, record.Kind);
        const auto fault = table ? TakeKeyMap(record, table->start) : TakeNotice::What::TableNotFound;
        if (fault)
            taken_.notices.push_back({*fault, record.Kind});
    }
}

TakenSetup Taker::Take()
{
    for (ModuleRecord& record : taken_.document.Modules) {
        if (record.Kind == ModuleKind::KM096)
            TakeFiscal(record);
        if (record.Kind == ModuleKind::MCR) {
            TakeSeparators(record);
            TakeAutoread(record);
        }
    }
    if (!taken_.document.Modules.empty())
        TakeKeyMaps();
    return std::move(taken_);
}

}  // namespace

TakenSetup TakeFromImage(SetupDocument scanned, const FlashImage& image)
{
    return Taker(std::move(scanned), image).Take();
}

}  // namespace kelvora
