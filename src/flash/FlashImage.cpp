#include "flash/FlashImage.h"

#include <algorithm>

#include "setup/DeviceCode.h"
#include "setup/ModuleRecord.h"

namespace kelvora {

namespace {

constexpr std::array WholeImage{FlashRegion{0, FlashSize}};

template <std::size_t Count>
std::uint16_t FirstDifferenceIn(const std::array<FlashRegion, Count>& regions, const FlashImage& a,
                                const FlashImage& b)
{
    for (const FlashRegion& region : regions)
        for (std::size_t address = region.start; region.Contains(address); ++address)
            if (a[address] != b[address])
                return static_cast<std::uint16_t>(address);
    return 0;
}

}  // namespace

std::uint16_t CopyOrCompareRegions(FlashImage& destination, const FlashImage& source, bool allAddresses,
                                   bool compare)
{
    if (compare)
        return FirstDifference(destination, source, allAddresses);
    if (allAddresses)
        destination = source;
    else
        for (const FlashRegion& region : FlashRegions)
            std::copy_n(source.begin() + region.start, region.length, destination.begin() + region.start);
    return 0;
}

std::uint16_t FirstDifference(const FlashImage& a, const FlashImage& b, bool allAddresses)
{
    return allAddresses ? FirstDifferenceIn(WholeImage, a, b) : FirstDifferenceIn(FlashRegions, a, b);
}

std::string_view TextOf(const FlashImage& image)
{
    return {reinterpret_cast<const char*>(image.data()), image.size()};
}

std::optional<FlashImage> ImageFrom(std::string_view bytes)
{
    FlashImage image;
    if (bytes.size() != image.size())
        return std::nullopt;
    std::ranges::copy(bytes, image.begin());
    return image;
}

std::string DeviceCodesOf(const FlashImage& image)
{
    std::string codes;
    for (std::size_t position = 0; position < MaximumModules; ++position) {
        const std::uint8_t code = image[FlashLayout::PairsAt + position * FlashLayout::PairSize];
        if (code == DeviceCode::NotInUse)
            break;
        codes += static_cast<char>(code);
    }
    return codes;
}

bool NamesModules(const FlashImage& image)
{
    return std::ranges::any_of(DeviceCodesOf(image),
                               [](char code) { return static_cast<std::uint8_t>(code) != ErasedByte; });
}

}  // namespace kelvora
