// Counting what a piece of code takes from the heap through operator new.
#pragma once

#include <cstddef>

namespace kelvora {

/// How often operator new has been called in this process.
std::size_t Allocations();

}  // namespace kelvora
