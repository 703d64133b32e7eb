// kelvora_simulation: plays sessions of a seed and the seeds after it, in several processes, and shows what
// breaks a rule, or ends a process, as a test.
#include <sys/mman.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

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

/// How far a process has come, where its parent sees it whatever ends it.
struct Mark {
    std::uint64_t played;  ///< sessions
    std::uint64_t seed;
    std::size_t steps;  ///< of that seed's session, begun
    std::array<char, 4000> what;
};

/// A process that plays.
class Player {
public:
    using Work = std::function<std::optional<Failure>(Mark&)>;

    explicit Player(const Work& work)
        : mark_(static_cast<Mark*>(
                    mmap(nullptr, sizeof(Mark), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)),
                &Free)
    {
        if (mark_.get() == MAP_FAILED)
            throw std::bad_alloc();
        std::fflush(stdout);
        process_ = fork();
        if (process_ != 0)
            return;
        const auto failure = work(*mark_);
        if (failure)
            failure->what.copy(mark_->what.data(), mark_->what.size() - 1);
        std::exit(failure ? 1 : 0);
    }

    pid_t Process() const { return process_; }
    const Mark& Came() const { return *mark_; }

    /// What it has found, or has ended of; `steps` are those of its last session.
    Failure Found(int status, std::vector<Step> steps) const
    {
        std::string what = mark_->what.data();
        if (what.empty())
            what = "crash: " + (WIFSIGNALED(status) ? std::string(strsignal(WTERMSIG(status)))
                                                    : "ended with " + std::to_string(WEXITSTATUS(status)));
        steps.resize(mark_->steps);
        return {mark_->seed, what, std::move(steps)};
    }

private:
    static void Free(Mark* mark) { munmap(mark, sizeof(Mark)); }

    std::unique_ptr<Mark, void (*)(Mark*)> mark_;
    pid_t process_ = 0;
};

// A step that does not end is ended.
std::optional<Failure> PlayMarked(Mark& mark, std::uint64_t seed, const std::vector<Step>& steps)
{
    // Of the processor, however busy the machine is.
    constexpr itimerval LongestStep{{}, {30, 0}};
    mark.seed = seed;
    return Play(seed, steps, [&](std::size_t count) {
        mark.steps = count;
        setitimer(ITIMER_PROF, &LongestStep, nullptr);
    });
}

std::optional<Failure> PlayApart(std::uint64_t seed, const std::vector<Step>& steps)
{
    const Player player([&](Mark& mark) { return PlayMarked(mark, seed, steps); });
    int status = 0;
    waitpid(player.Process(), &status, 0);
    return status == 0 ? std::nullopt : std::optional(player.Found(status, steps));
}

// Every so many sessions from the first one on.
std::optional<Failure> PlayShare(const Request& request, unsigned share, Mark& mark)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + std::chrono::seconds(request.seconds);
    for (std::uint64_t at = share; request.seconds > 0 ? Clock::now() < end : at < request.sessions;
         at += request.jobs) {
        const std::uint64_t seed = request.seed + at;
        if (auto failure = PlayMarked(mark, seed, StepsOf(seed, request.steps)))
            return failure;
        ++mark.played;
    }
    return std::nullopt;
}

// The first that fails ends the others.
std::optional<Failure> PlayAll(const Request& request)
{
    std::vector<std::unique_ptr<Player>> players;
    for (unsigned share = 0; share < request.jobs; ++share)
        players.push_back(
            std::make_unique<Player>([&](Mark& mark) { return PlayShare(request, share, mark); }));
    std::optional<Failure> failure;
    int status = 0;
    for (pid_t ended = wait(&status); ended > 0; ended = wait(&status)) {
        if (failure || status == 0)
            continue;
        const auto player = std::ranges::find(players, ended, &Player::Process);
        failure = (*player)->Found(status, StepsOf((*player)->Came().seed, request.steps));
        for (const auto& other : players)
            if (other != *player)
                kill(other->Process(), SIGTERM);
    }
    std::uint64_t played = 0;
    for (const auto& player : players)
        played += player->Came().played;
    std::printf("%llu sessions of %zu steps\n", static_cast<unsigned long long>(played), request.steps);
    return failure;
}

void Tell(const Request& request, const Failure& failure)
{
    std::printf("seed %llu, step %zu: %s\n", static_cast<unsigned long long>(failure.seed),
                failure.steps.size(), failure.what.c_str());
    if (request.isEnough)
        return;
    std::fflush(stdout);
    const Failure shortest = Shortest(failure, PlayApart);
    std::printf("%zu steps are enough:\n\n%s\n", shortest.steps.size(), TestOf(shortest).c_str());
}

std::string WhyNoSteps(const std::string& text)
{
    try {
        return StepsOf(text).empty() ? "no steps" : "";
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
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
    app.add_option("--replay", request.replay, "The steps to play, as a failure shows them")
        ->check(WhyNoSteps);
    CLI11_PARSE(app, argc, argv);
    const auto failure =
        request.replay.empty() ? PlayAll(request) : PlayApart(request.seed, StepsOf(request.replay));
    if (failure)
        Tell(request, *failure);
    return failure ? 1 : 0;
}
