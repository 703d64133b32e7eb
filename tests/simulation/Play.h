// Playing whole sessions: by a seed, or by the steps that a failure has shown.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "simulation/Session.h"

namespace kelvora::simulation {

struct Failure {
    std::uint64_t seed = 0;
    std::string what;         ///< the rule, and what was found
    std::vector<Step> steps;  ///< the last one is the one after which it does not hold
};

/// Nothing when all rules hold after each step.
std::optional<Failure> Play(std::uint64_t seed, const std::vector<Step>& steps);

/// With steps taken out, one by one in the end, as long as the same rule fails.
Failure Shortest(Failure failure);

/// As a test that plays it again.
std::string TestOf(const Failure& failure);

}  // namespace kelvora::simulation
