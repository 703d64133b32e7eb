#include "setup/ModuleRecord.h"

#include <algorithm>
#include <array>

#include "keymap/Models.h"
#include "setup/DeviceCode.h"
#include "setup/Options.h"

namespace kelvora {

namespace {

// Matrix line letter and column number of each key contact, from the devices' wiring; blanks are positions
// without a contact.
constexpr std::string_view MatrixKM096 =
    "h6 ,a2 ,   ,   ,   ,   ,   ,   ,   ,   ,h5 ,a7 ,b1 ,c4 ,   ,   ,   ,   ,   ,   ,   ,   ,b3 ,c8 ,"
    "h2 ,a6 ,   ,   ,   ,   ,   ,   ,   ,   ,h7 ,a5 ,b4 ,c1 ,b12,c9 ,b7 ,c5 ,b2 ,c6 ,b10,c11,b8 ,c3 ,"
    "d6 ,e2 ,d11,e10,d3 ,e8 ,d1 ,e4 ,d9 ,e12,d5 ,e7 ,f1 ,g4 ,f9 ,g12,f5 ,g7 ,f6 ,g2 ,f11,g10,f3 ,g8 ,"
    "d2 ,e6 ,d10,e11,d8 ,e3 ,d4 ,e1 ,d12,e9 ,d7 ,e5 ,f4 ,g1 ,f12,g9 ,f7 ,g5 ,f2 ,g6 ,f10,g11,f8 ,g3  ";
constexpr std::string_view MatrixKM064 =
    "h5 ,a7 ,h6 ,a2 ,h3 ,a8 ,h1 ,a4 ,b3 ,c8 ,b1 ,c4 ,b5 ,c7 ,b6 ,c2 ,h7 ,a5 ,h2 ,a6 ,h8 ,a3 ,h4 ,a1 ,"
    "b8 ,c3 ,b4 ,c1 ,b7 ,c5 ,b2 ,c6 ,d5 ,e7 ,d6 ,e2 ,d3 ,e8 ,d1 ,e4 ,f3 ,g8 ,f1 ,g4 ,f5 ,g7 ,f6 ,g2 ,"
    "d7 ,e5 ,d2 ,e6 ,d8 ,e3 ,d4 ,e1 ,f8 ,g3 ,f4 ,g1 ,f7 ,g5 ,f2 ,g6  ";
constexpr std::string_view MatrixICCR =
    "a1 ,f1 ,a2 ,f2 ,c2 ,h2 ,c1 ,h1 ,b1 ,e1 ,b2 ,e2 ,d2 ,g2 ,d1 ,g1 ,e3 ,f3 ,   ,   ,   ,   ,   ,   ,"
    "   ,   ,   ,   ,   ,   ,   ,    ";
constexpr std::string_view MatrixCode4 = "h1 ,a1 ,b1 ,c1 ,d1 ,e1 ,f1 ,g1 ,a2 ,b2 ,c2 ,   ,   ,   ,   ,    ";
constexpr std::string_view MatrixMCR = "a1 ,b1 ,c1 ,d1 ,e1 ,f1 ,g1 ,h1 ,a2 ,b2 ,c2 ,   ,   ,   ,   ,    ";

constexpr auto ElevenAbsentKeys = [] {
    std::array<char, 11> keys{};
    keys.fill('X');
    return keys;
}();
constexpr std::string_view ElevenAbsent(ElevenAbsentKeys.data(), ElevenAbsentKeys.size());

// Widths in pixels are those of the strip's buttons.
struct DeviceRow {
    std::uint8_t code;
    ModuleKind kind;
    std::string_view name;
    std::uint8_t width, keyCount;
    std::string_view matrixCodes, keyMap, options;
};

// The first row of a kind is what a new module of it starts as. The keyboards' key maps are their models'
// defaults.
constexpr std::array Devices{
    DeviceRow{DeviceCode::KM096, ModuleKind::KM096, "KM096", 196, 96, MatrixKM096, "", "YES"},
    DeviceRow{DeviceCode::BacklightOn, ModuleKind::Backlight, "BACKLIGHT", 24, 0, "", "", "YES"},
    DeviceRow{DeviceCode::BacklightOff, ModuleKind::Backlight, "BACKLIGHT", 24, 0, "", "", "NO "},
    DeviceRow{DeviceCode::Code4, ModuleKind::Code4, "CODE4", 116, 11, MatrixCode4, ElevenAbsent, ""},
    DeviceRow{DeviceCode::KM064, ModuleKind::KM064, "KM064", 138, 64, MatrixKM064, "", ""},
    DeviceRow{DeviceCode::MCR123, ModuleKind::MCR, "MCR", 45, 11, MatrixMCR, ElevenAbsent, "1,2,3^^^ON "},
    DeviceRow{DeviceCode::MCR12, ModuleKind::MCR, "MCR", 45, 11, MatrixMCR, ElevenAbsent, "1,2  ^^^ON "},
    DeviceRow{DeviceCode::MCR23, ModuleKind::MCR, "MCR", 45, 11, MatrixMCR, ElevenAbsent, "2,3  ^^^ON "},
    DeviceRow{DeviceCode::ICCR, ModuleKind::ICCR, "ICCR", 76, 18, MatrixICCR, "", ""},
};

const DeviceRow* FindDevice(std::uint8_t code)
{
    const auto* const found = std::ranges::find(Devices, code, &DeviceRow::code);
    return found == Devices.end() ? nullptr : found;
}

const DeviceRow* FindFirst(ModuleKind kind)
{
    const auto* const found = std::ranges::find(Devices, kind, &DeviceRow::kind);
    return found == Devices.end() ? nullptr : found;
}

}  // namespace

ModuleKind KindOf(std::uint8_t deviceCode)
{
    const DeviceRow* device = FindDevice(deviceCode);
    return device ? device->kind : ModuleKind::None;
}

std::string_view KindName(ModuleKind kind)
{
    const DeviceRow* device = FindFirst(kind);
    return device ? device->name : std::string_view();
}

ModuleKind KindOfSection(std::string_view head)
{
    const auto* const found = std::ranges::find(Devices, head, &DeviceRow::name);
    return found == Devices.end() || IsPart(found->kind) ? ModuleKind::None : found->kind;
}

std::uint8_t FirstDeviceCode(ModuleKind kind)
{
    const DeviceRow* device = FindFirst(kind);
    return device ? device->code : DeviceCode::NotInUse;
}

std::uint8_t CodeOfTracks(std::string_view tracks)
{
    const auto* const device = std::ranges::find_if(Devices, [&](const DeviceRow& row) {
        return row.kind == ModuleKind::MCR && Options::Tracks(row.options) == tracks;
    });
    return device == Devices.end() ? DeviceCode::NotInUse : device->code;
}

ModuleRecord CreateRecord(std::uint8_t deviceCode, std::uint8_t position)
{
    ModuleRecord record;
    record.Position = position;
    record.DeviceCode = deviceCode;
    const DeviceRow* device = FindDevice(deviceCode);
    if (!device)
        return record;
    record.Kind = device->kind;
    record.Width = device->width;
    record.KeyCount = device->keyCount;
    record.MatrixCodes = device->matrixCodes;
    record.KeyMap = device->keyMap;
    record.Options = device->options;
    if (const Model* model = FindModel(device->kind)) {
        record.Rows = model->rows;
        record.Columns = model->columns;
        record.KeyMap = model->defaultMap;
    }
    return record;
}

}  // namespace kelvora
