// How large the flash memory of a keyboard device is.
#pragma once

#include <cstddef>

namespace kelvora {

/// Bytes of the device's flash.
inline constexpr std::size_t FlashSize = 8192;

}  // namespace kelvora
