// Values that many things share, each known by its place and kept once for all of them (and once more as the
// key by which it is found).
#pragma once

#include <cstddef>
#include <map>
#include <vector>

namespace kelvora {

/// `Places` is a map of values to places.
template <class Value, class Places = std::map<Value, std::size_t>>
class OnceEach {
public:
    /// The place of that value, counted from 0 in the order in which they came.
    std::size_t PlaceOf(const Value& value)
    {
        const auto [at, isNew] = places_.try_emplace(value, values_.size());
        if (isNew)
            values_.push_back(value);
        return at->second;
    }

    const std::vector<Value>& Values() const { return values_; }

private:
    Places places_;
    std::vector<Value> values_;
};

}  // namespace kelvora
