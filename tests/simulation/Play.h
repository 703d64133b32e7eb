// Playing whole sessions: by a seed, or by the steps that a failure has shown.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "simulation/Session.h"

namespace kelvora::simulation {

struct Failure {
    std::uint64_t seed = 0;
    std::string what;         ///< the rule, and what was found; one line
    std::vector<Step> steps;  ///< the last one is the one after which it does not hold
};

/// Nothing when all rules hold after each step. `onStep` is told before each how many it makes.
std::optional<Failure> Play(
    std::uint64_t seed, const std::vector<Step>& steps,
    const std::function<void(std::size_t)>& onStep = [](std::size_t /*count*/) {});

using Player = std::function<std::optional<Failure>(std::uint64_t, const std::vector<Step>&)>;

/// With steps taken out, one by one in the end, as long as `play` finds that the same rule fails.
Failure Shortest(Failure failure, const Player& play);

/// As a test that plays it again.
std::string TestOf(const Failure& failure);

}  // namespace kelvora::simulation
