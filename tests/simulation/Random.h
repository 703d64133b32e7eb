// Chance that means the same on every machine: a generator whose numbers the standard fixes, and ways to
// choose by them that it does not leave to the library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>

namespace kelvora::simulation {

class Random {
public:
    explicit Random(std::uint64_t seed) : numbers_(seed) {}

    std::uint64_t Next() { return numbers_(); }
    /// 0 to `limit` - 1; `limit` is more than 0.
    std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(numbers_() % limit); }
    /// True once in `times` on average.
    bool Once(std::size_t times) { return Below(times) == 0; }
    /// 1 to 2^bits - 1, small numbers as likely as large ones.
    std::size_t Scale(unsigned bits)
    {
        const std::size_t size = Below(bits);
        return (std::size_t{1} << size) + Below(std::size_t{1} << size);
    }

    template <class List>
    auto& Of(List& list)
    {
        return *(std::begin(list) +
                 static_cast<std::ptrdiff_t>(Below(static_cast<std::size_t>(std::size(list)))));
    }

private:
    std::mt19937_64 numbers_;
};

}  // namespace kelvora::simulation
