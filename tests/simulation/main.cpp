// kelvora_simulation: plays sessions of a seed and the seeds after it, in several processes, and shows what
// breaks a rule as a test.
#include <sys/wait.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "simulation/Play.h"

namespace {

using namespace kelvora::simulation;  // NOLINT: this is the simulation's own program

struct Request {
    std::uint64_t seed = 1;
    std::size_t steps = 100;
    std::uint64_t sessions = 1;
    int seconds = 0;  ///< in place of `sessions`
    unsigned jobs = 2;
    bool isEnough = false;  ///< to know that a rule breaks
    std::string replay{};
};

int Tell(const Request& request, const Failure& failure)
{
    std::printf("seed %llu, step %zu: %s\n", static_cast<unsigned long long>(failure.seed),
                failure.steps.size(), failure.what.c_str());
    if (request.isEnough)
        return 1;
    const Failure shortest = Shortest(failure);
    std::printf("%zu steps are enough:\n\n%s\n", shortest.steps.size(), TestOf(shortest).c_str());
    return 1;
}

// Every so many sessions from the first one on.
int PlayShare(const Request& request, unsigned share)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + std::chrono::seconds(request.seconds);
    std::uint64_t played = 0;
    for (std::uint64_t at = share; request.seconds > 0 ? Clock::now() < end : at < request.sessions;
         at += request.jobs) {
        if (const auto failure = Play(request.seed + at, StepsOf(request.seed + at, request.steps)))
            return Tell(request, *failure);
        ++played;
    }
    std::printf("%llu sessions of %zu steps\n", static_cast<unsigned long long>(played), request.steps);
    return 0;
}

// The first that fails ends the others.
int PlayAll(const Request& request)
{
    std::fflush(stdout);
    std::vector<pid_t> players;
    for (unsigned share = 0; share < request.jobs; ++share) {
        players.push_back(fork());
        if (players.back() == 0)
            std::exit(PlayShare(request, share));
    }
    int failed = 0;
    int status = 0;
    while (wait(&status) > 0) {
        if (failed == 0 && status != 0)
            for (const pid_t player : players)
                kill(player, SIGTERM);
        failed |= status == 0 ? 0 : 1;
    }
    return failed;
}

}  // namespace

int main(int argc, char* argv[])
{
    setenv("TZ", "UTC", 1);
    Request request;
    CLI::App app("Plays the whole program with everything going wrong at once, by a seed");
    app.add_option("--seed", request.seed, "Of the first session; the others have the numbers after it");
    app.add_option("--steps", request.steps, "Of a session");
    app.add_option("--sessions", request.sessions, "How many");
    app.add_option("--seconds", request.seconds, "As many sessions as fit into that time");
    app.add_option("--jobs", request.jobs, "Processes")->check(CLI::Range(1, 64));
    app.add_flag("--first", request.isEnough, "Only say what breaks first: do not look for fewer steps");
    app.add_option("--replay", request.replay, "The steps to play, as a failure shows them");
    CLI11_PARSE(app, argc, argv);
    if (request.replay.empty())
        return PlayAll(request);
    const auto failure = Play(request.seed, StepsOf(request.replay));
    return failure ? Tell(request, *failure) : 0;
}
