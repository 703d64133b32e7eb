// The kinds of module that can hang on a line, numbered as the setup's records hold them.
#pragma once

#include <cstdint>

namespace kelvora {

enum class ModuleKind : std::uint8_t {
    None = 0,       ///< ends a list
    KM096 = 1,      ///< main keyboard
    Backlight = 2,  ///< the main keyboard's backlight unit, a module of its own on the line
    Code4 = 3,      ///< the main keyboard's further part, device code 4
    KM064 = 4,      ///< extension keyboard
    MCR = 5,        ///< magnetic badge reader
    ICCR = 6,       ///< chip card unit with keypad
};

/// Whether it is a part of the main keyboard: it comes and goes with that, and has no section in a setup
/// file.
constexpr bool IsPart(ModuleKind kind)
{
    return kind == ModuleKind::Backlight || kind == ModuleKind::Code4;
}

}  // namespace kelvora
