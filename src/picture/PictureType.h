// The types of picture that a sheet can become, and the names that they have in options and file endings.
#pragma once

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "platform/AsciiCase.h"

namespace kelvora {

enum class PictureType { Svg, Png, Pdf, Last = Pdf };

/// In the order of PictureType; a file's ending is "." and the name.
inline constexpr std::array<std::string_view, 3> PictureTypeNames{"svg", "png", "pdf"};
static_assert(PictureTypeNames.size() == static_cast<std::size_t>(PictureType::Last) + 1);

constexpr std::string_view PictureTypeName(PictureType type)
{
    return PictureTypeNames.at(static_cast<std::size_t>(type));
}

/// The type of that name, which is in small letters.
constexpr std::optional<PictureType> PictureTypeNamed(std::string_view name)
{
    const auto* const known = std::ranges::find(PictureTypeNames, name);
    if (known == PictureTypeNames.end())
        return std::nullopt;
    return static_cast<PictureType>(known - PictureTypeNames.begin());
}

/// The type that a file's name ends with, in letters of any case.
inline std::optional<PictureType> PictureTypeOf(std::string_view path)
{
    const std::size_t dot = path.rfind('.');
    return dot == std::string_view::npos ? std::nullopt : PictureTypeNamed(LowerCase(path.substr(dot + 1)));
}

}  // namespace kelvora
