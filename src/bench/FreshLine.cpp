#include "bench/FreshLine.h"

#include <algorithm>
#include <random>
#include <span>

namespace kelvora::bench {

namespace {

struct Device {
    Module module;
    std::string_view name;
    std::size_t addresses;
    IdentityBytes block;
};

constexpr std::array Devices{
    Device{Module::KM096, "km096", 3, {0xAA, 0x55, 214, 23, 0xFF, 0xFF, 4, 0}},
    Device{Module::KM064, "km064", 1, {0xAA, 0x55, 191, 0, 0, 0, 0, 0}},
    Device{Module::MCR12, "mcr12", 1, {0xAA, 0x55, 0, 0, 0, 11, 0, 0}},
    Device{Module::MCR23, "mcr23", 1, {0xAA, 0x55, 0, 0, 0, 2, 0, 0}},
    Device{Module::MCR123, "mcr123", 1, {0xAA, 0x55, 0, 0, 0, 3, 0, 0}},
    Device{Module::ICCR, "iccr", 1, {0xAA, 0x55, 0, 0, 8, 0, 0, 0}},
};

constexpr std::uint8_t Unknown = 255;

/// What a byte of the identity block says at its place, and what the terminal calls it.
struct Identity {
    std::uint8_t value;
    std::size_t offset;
    std::uint8_t deviceCode;
    std::size_t keyTable;  ///< bytes of its key table in the flash
    bool hasKeys;          ///< its table holds a key's type and code per pair
};

constexpr std::array Identities{
    Identity{214, 2, 214, 192, true}, Identity{191, 2, 191, 128, true}, Identity{23, 3, 23, 0, false},
    Identity{31, 3, 31, 0, false},    Identity{4, 6, 4, 32, false},     Identity{11, 5, 1, 32, false},
    Identity{2, 5, 2, 32, false},     Identity{3, 5, 3, 32, false},     Identity{8, 4, 8, 48, true},
};

/// Where the identifying bytes of a block begin, after its two marker bytes.
constexpr std::size_t FirstOffset = 2;

// Places in the flash.
constexpr std::size_t FiscalAddress = 6;
constexpr std::size_t PairsAddress = 128;
constexpr std::size_t KeyTablesAddress = 256;
constexpr std::size_t KeyTablesEnd = 768;
constexpr std::size_t SeparatorsAddress = 1024;
constexpr std::size_t Separators = 3;
constexpr std::uint8_t AutoRead = 1;

const Device& DeviceOf(Module module)
{
    return *std::ranges::find(Devices, module, &Device::module);
}

/// The place of the first byte from `from` on that can identify; the block's end when there is none.
std::size_t FindIdentifying(const IdentityBytes& block, std::size_t from)
{
    while (from < block.size() && (block[from] == 0 || block[from] == Unknown))
        ++from;
    return from;
}

std::size_t DecidingOffset(const std::vector<IdentityBytes>& modules, std::size_t address,
                           std::size_t previousOffset)
{
    const IdentityBytes& block = modules[address];
    if (address == 0)
        return block[FirstOffset] == Unknown ? FirstOffset : FindIdentifying(block, FirstOffset);
    if (block == modules[address - 1]) {
        const std::size_t next = FindIdentifying(block, previousOffset + 1);
        if (next < block.size())
            return next;
    }
    return FindIdentifying(block, FirstOffset);
}

const Identity* FindIdentity(const IdentityBytes& block, std::size_t offset)
{
    for (const Identity& identity : Identities)
        if (offset < block.size() && identity.offset == offset && identity.value == block[offset])
            return &identity;
    return nullptr;
}

/// What each module is; null where that is not known.
std::vector<const Identity*> Identify(const std::vector<IdentityBytes>& modules)
{
    std::vector<const Identity*> found;
    std::size_t offset = FirstOffset;
    for (std::size_t address = 0; address < modules.size(); ++address) {
        offset = DecidingOffset(modules, address, offset);
        found.push_back(FindIdentity(modules[address], offset));
    }
    return found;
}

/// Key codes count from 2, for one below means a key without a code; past 255 they begin anew.
void WriteKeys(std::span<std::uint8_t> table, unsigned& keys)
{
    for (std::size_t index = 0; index < table.size(); index += 2) {
        table[index] = 0;
        table[index + 1] = static_cast<std::uint8_t>(2 + keys++ % 254);
    }
}

FlashBytes FreshFlash(const std::vector<IdentityBytes>& modules, std::uint64_t seed)
{
    FlashBytes flash{};
    std::mt19937_64 noise(seed);
    for (std::uint8_t& byte : flash)
        byte = static_cast<std::uint8_t>(noise() >> 56);
    flash[FiscalAddress] |= 1;
    std::ranges::fill(std::span(flash).subspan(PairsAddress, 2 * MostModules), std::uint8_t{0});
    std::ranges::fill(std::span(flash).subspan(SeparatorsAddress, Separators), std::uint8_t{0});
    std::size_t pair = PairsAddress;
    std::size_t table = KeyTablesAddress;
    unsigned keys = 0;
    for (const Identity* identity : Identify(modules)) {
        flash[pair] = identity != nullptr ? identity->deviceCode : Unknown;
        const bool isBadgeReader = flash[pair] >= 1 && flash[pair] <= 3;
        flash[pair + 1] = isBadgeReader ? AutoRead : 0;
        pair += 2;
        if (identity == nullptr || table + identity->keyTable > KeyTablesEnd)
            continue;
        if (identity->hasKeys)
            WriteKeys(std::span(flash).subspan(table, identity->keyTable), keys);
        table += identity->keyTable;
    }
    return flash;
}

}  // namespace

std::optional<Module> FindModule(std::string_view name)
{
    const auto* const found = std::ranges::find(Devices, name, &Device::name);
    return found == Devices.end() ? std::nullopt : std::optional(found->module);
}

std::size_t AddressesOf(Module module)
{
    return DeviceOf(module).addresses;
}

LineState FreshLine(const std::vector<Module>& modules, std::uint64_t seed)
{
    LineState line;
    for (const Module module : modules)
        line.modules.insert(line.modules.end(), AddressesOf(module), DeviceOf(module).block);
    line.flash = FreshFlash(line.modules, seed);
    return line;
}

std::vector<std::uint8_t> DeviceMapOf(const std::vector<IdentityBytes>& modules)
{
    std::vector<std::uint8_t> map;
    for (const Identity* identity : Identify(modules))
        map.push_back(identity != nullptr ? identity->deviceCode : Unknown);
    return map;
}

}  // namespace kelvora::bench
