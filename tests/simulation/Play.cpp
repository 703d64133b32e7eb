#include "simulation/Play.h"

namespace kelvora::simulation {

namespace {

std::string RuleOf(const Failure& failure)
{
    return failure.what.substr(0, failure.what.find(':'));
}

// Of one line, for a comment.
std::string Escaped(std::string_view text)
{
    std::string escaped;
    for (const char c : text)
        if (c >= ' ' && c <= '~' && c != '\\')
            escaped += c;
        else if (c == '\n')
            escaped += " | ";
    return escaped;
}

}  // namespace

std::optional<Failure> Play(std::uint64_t seed, const std::vector<Step>& steps,
                            const std::function<void(std::size_t)>& onStep)
{
    Session session(seed);
    std::vector<Step> played;
    for (const Step& step : steps) {
        played.push_back(step);
        onStep(played.size());
        try {
            session.Play(step);
        } catch (const Broken& broken) {
            return Failure{seed, Escaped(broken.what), played};
        } catch (const std::exception& error) {
            return Failure{seed, Escaped(std::string("crash: ") + error.what()), played};
        }
    }
    return std::nullopt;
}

Failure Shortest(Failure failure, const Player& play)
{
    const std::string rule = RuleOf(failure);
    for (std::size_t size = failure.steps.size() / 2; size > 0;) {
        bool isShorter = false;
        for (std::size_t at = 0; at + size <= failure.steps.size();) {
            std::vector<Step> fewer = failure.steps;
            const auto from = fewer.begin() + static_cast<std::ptrdiff_t>(at);
            fewer.erase(from, from + static_cast<std::ptrdiff_t>(size));
            auto again = play(failure.seed, fewer);
            const bool isSame = again && RuleOf(*again) == rule;
            if (isSame)
                failure = *std::move(again);
            else
                at += size;
            isShorter = isShorter || isSame;
        }
        if (!isShorter || size > 1)
            size /= 2;
    }
    return failure;
}

std::string TestOf(const Failure& failure)
{
    return "// " + failure.what + "\nTEST(Simulation, Seed" + std::to_string(failure.seed) +
           ")\n{\n    Replay(" + std::to_string(failure.seed) + ", \"" + TextOf(failure.steps) + "\");\n}\n";
}

}  // namespace kelvora::simulation
