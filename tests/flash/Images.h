// Setups and images that the tests of the flash image start from.
#pragma once

#include <variant>

#include "flash/FlashImage.h"
#include "flash/SetupImage.h"
#include "setup/SetupDocument.h"
#include "setup/SetupReader.h"

namespace kelvora {

inline constexpr std::string_view WholeChain = "\xD6\x17\x04\xBF\x03\x08";

inline FlashImage Filled(std::uint8_t byte)
{
    FlashImage image{};
    image.fill(byte);
    return image;
}

/// An erased image whose pairs name these modules.
inline FlashImage ImageOf(std::string_view codes)
{
    FlashImage image = Filled(0xFF);
    for (std::size_t position = 0; position < 7; ++position)
        image[128 + 2 * position] = position < codes.size() ? static_cast<std::uint8_t>(codes[position]) : 0;
    return image;
}

inline FlashImage Built(const SetupDocument& document, const FlashImage& device)
{
    return std::get<FlashImage>(BuildSetupImage(document, &device));
}

inline ModuleRecord& Module(SetupDocument& document, ModuleKind kind)
{
    return document.Modules.at(FindModule(document.Modules, kind).value());
}

}  // namespace kelvora
