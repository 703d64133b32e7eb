// A simulated line whose flash holds random bytes: what every transfer is measured with, for no protocol can
// take advantage of what it carries.
#pragma once

#include <cstdint>
#include <random>

#include "bench/FreshLine.h"

namespace kelvora {

/// The line of all modules; `seed` means the same bytes on every machine.
inline bench::LineState RandomMemory(std::uint64_t seed)
{
    using enum bench::Module;
    bench::LineState memory = bench::FreshLine({KM096, KM064, MCR123, ICCR});
    std::mt19937_64 random(seed);
    for (auto& byte : memory.flash)
        byte = static_cast<std::uint8_t>(random());
    return memory;
}

}  // namespace kelvora
