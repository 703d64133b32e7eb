// How a fuzz target says that something does not hold: the fuzzer keeps the input that led there.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace kelvora {

inline void Require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

}  // namespace kelvora
