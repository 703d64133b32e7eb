#include "flash/ImageDifferences.h"

#include <algorithm>
#include <string>

#include "flash/KeyTables.h"
#include "flash/MatrixCodes.h"
#include "keymap/Models.h"
#include "setup/SetupDocument.h"

namespace kelvora {

namespace {

// Bytes with a name, as a difference that is not filled in yet.
using Named = ImageDifference;

constexpr std::size_t PairsEnd = FlashLayout::PairsAt + MaximumModules * FlashLayout::PairSize;

bool IsErasedAt(const FlashImage& image, std::size_t first, std::size_t end)
{
    return std::all_of(image.begin() + first, image.begin() + end,
                       [](std::uint8_t byte) { return byte == ErasedByte; });
}

// Whether the image has that table where the line has it.
bool HasTable(const FlashImage& image, const KeyTable& table)
{
    if (IsErasedAt(image, FlashLayout::PairsAt, PairsEnd))
        return true;
    const std::vector<KeyTable> tables = KeyTablesOf(DeviceCodesOf(image));
    const KeyTable* const held = FindTable(tables, table.kind);
    return held && held->start == table.start;
}

std::string CodesOf(const ModuleList& modules)
{
    std::string codes;
    for (const ModuleRecord& record : modules) {
        codes.resize(std::max<std::size_t>(codes.size(), record.Position), static_cast<char>(ErasedByte));
        codes += static_cast<char>(record.DeviceCode);
    }
    return codes;
}

class Namer {
public:
    Namer(const FlashImage& before, const FlashImage& after, const ModuleList& modules)
        : before_(before), after_(after), modules_(modules)
    {
    }

    // All that has a name, in ascending order of addresses.
    std::vector<Named> Names();

private:
    void Name(Named::What what, std::size_t first, std::size_t length, ModuleKind kind, int number)
    {
        names_.push_back({what, first, first + length - 1, std::nullopt, kind, number});
    }
    void NamePairs();
    void NameKeys(const ModuleRecord& record, const KeyTable& table);

    const FlashImage& before_;
    const FlashImage& after_;
    const ModuleList& modules_;
    std::vector<Named> names_;
};

void Namer::NamePairs()
{
    for (std::size_t position = 0; position < MaximumModules; ++position) {
        const std::size_t address = FlashLayout::PairsAt + position * FlashLayout::PairSize;
        const int number = static_cast<int>(position) + 1;
        Name(Named::What::Module, address, 1, ModuleKind::None, number);
        const auto isReader = [&](const FlashImage& image) {
            return KindOf(image[address]) == ModuleKind::MCR;
        };
        if (isReader(before_) && isReader(after_))
            Name(Named::What::Autoread, address + 1, 1, ModuleKind::MCR, number);
    }
}

void Namer::NameKeys(const ModuleRecord& record, const KeyTable& table)
{
    const std::string positions = ParseMatrixCodes(record.MatrixCodes);
    const int first = FirstKeyNumber(record.Kind, modules_);
    for (std::size_t cell = 0; cell < record.KeyCount; ++cell)
        if (positions[cell] != NoContact)
            Name(Named::What::Key, table.start + static_cast<unsigned char>(positions[cell]),
                 FlashLayout::PairSize, record.Kind, first + static_cast<int>(cell));
}

std::vector<Named> Namer::Names()
{
    Name(Named::What::Fiscal, FlashLayout::FiscalAt, 1, ModuleKind::KM096, 0);
    NamePairs();
    const std::vector<KeyTable> tables = KeyTablesOf(CodesOf(modules_));
    for (const ModuleRecord& record : modules_) {
        const KeyTable* const table = FindTable(tables, record.Kind);
        if (!table || table->position != record.Position || !FindModel(record.Kind))
            continue;
        if (HasTable(before_, *table) && HasTable(after_, *table))
            NameKeys(record, *table);
    }
    for (std::size_t track = 0; track < FlashLayout::SeparatorCount; ++track)
        Name(Named::What::Separator, FlashLayout::SeparatorsAt + track, 1, ModuleKind::MCR,
             static_cast<int>(track) + 1);
    std::ranges::sort(names_, {}, &Named::first);
    return std::move(names_);
}

std::optional<std::size_t> RegionOf(std::size_t address)
{
    const auto* const found = std::ranges::find_if(
        FlashRegions, [&](const FlashRegion& region) { return region.Contains(address); });
    if (found == FlashRegions.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - FlashRegions.begin());
}

char ValueAt(const FlashImage& image, const Named& name)
{
    const auto bit = [&](std::uint8_t mask) { return image[name.first] & mask ? '1' : '0'; };
    switch (name.what) {
        case Named::What::Fiscal:
            return bit(FlashLayout::FiscalBit);
        case Named::What::Autoread:
            return bit(FlashLayout::AutoreadBit);
        case Named::What::Key:
            return KeyTypeOf(PairAt(image, name.first));
        default:
            return static_cast<char>(image[name.first]);
    }
}

class Describer {
public:
    Describer(const FlashImage& before, const FlashImage& after) : before_(before), after_(after) {}

    std::vector<ImageDifference> Describe(const std::vector<Named>& names);

private:
    bool Differs(std::size_t address) const { return before_[address] != after_[address]; }
    void DescribeNamed(ImageDifference difference);
    // The nameless bytes from `first` up to the one before `end`, in runs.
    void DescribeBytes(std::size_t first, std::size_t end);

    const FlashImage& before_;
    const FlashImage& after_;
    std::vector<ImageDifference> differences_;
};

void Describer::DescribeNamed(ImageDifference difference)
{
    if (!Differs(difference.first) && !Differs(difference.last))
        return;
    difference.region = RegionOf(difference.first);
    difference.before = ValueAt(before_, difference);
    difference.after = ValueAt(after_, difference);
    differences_.push_back(difference);
}

void Describer::DescribeBytes(std::size_t first, std::size_t end)
{
    bool isOpen = false;
    for (std::size_t address = first; address < end; ++address) {
        const auto region = RegionOf(address);
        if (!Differs(address))
            isOpen = false;
        else if (isOpen && differences_.back().region == region)
            differences_.back().last = address;
        else {
            differences_.push_back({Named::What::Bytes, address, address, region});
            isOpen = true;
        }
    }
}

std::vector<ImageDifference> Describer::Describe(const std::vector<Named>& names)
{
    std::size_t address = 0;
    for (const Named& name : names) {
        DescribeBytes(address, name.first);
        DescribeNamed(name);
        address = name.last + 1;
    }
    DescribeBytes(address, FlashSize);
    return std::move(differences_);
}

}  // namespace

std::vector<ImageDifference> DescribeDifferences(const FlashImage& before, const FlashImage& after,
                                                 const ModuleList& modules)
{
    return Describer(before, after).Describe(Namer(before, after, modules).Names());
}

ModuleList ModulesOf(const FlashImage& image)
{
    ModuleList modules;
    std::uint8_t position = 0;
    for (const char character : DeviceCodesOf(image)) {
        const auto code = static_cast<std::uint8_t>(character);
        if (KindOf(code) != ModuleKind::None)
            modules.push_back(CreateRecord(code, position));
        ++position;
    }
    return modules;
}

}  // namespace kelvora
