#include "simulation/World.h"

#include <algorithm>

#include "bench/FreshLine.h"

namespace kelvora::simulation {

namespace {

/// A procedure that has waited so often in one step waits for what never comes.
constexpr std::size_t MostWaits = 2'000'000;

bench::LineOptions Options(bool isPaced)
{
    bench::LineOptions options;
    options.isPaced = isPaced;
    return options;
}

std::vector<bench::Module> Modules(std::uint64_t seed)
{
    using enum bench::Module;
    switch (seed % 4) {
        case 0:
            return {KM096, KM064};
        case 1:
            return {KM096, MCR12, ICCR};
        default:
            return {KM096, KM064, MCR123, ICCR};
    }
}

}  // namespace

void Require(bool holds, const char* rule, const std::string& what)
{
    if (!holds)
        throw Broken{std::string(rule) + ": " + what};
}

Till::Till(Loop& loop, std::uint64_t seed, bool isPaced)
    : clock(loop),
      line(clock, bench::FreshLine(Modules(seed), seed), Options(isPaced)),
      port(line),
      held(line.Memory().flash)
{
}

void Till::Replace(bench::LineState memory, std::string name)
{
    held = memory.flash;
    line.Put(std::move(memory), std::move(name), faults);
}

FlashImage Till::Flash() const
{
    FlashImage image{};
    std::ranges::copy(line.Memory().flash, image.begin());
    return image;
}

std::string Till::DeviceMap() const
{
    std::string map;
    for (const std::uint8_t code : bench::DeviceMapOf(line.Memory().modules))
        map += static_cast<char>(code);
    return map;
}

void Till::SetFaults(const bench::FaultPlan& plan)
{
    faults = plan;
    isClean = false;
    line.SetFaults(plan);
}

World::World(std::uint64_t seed)
    : random(seed),
      system_{disk, [this] { return WallTime(); }, [this] { return static_cast<unsigned>(random.Next()); }}
{
    const bool isPaced = random.Once(8);
    for (std::size_t i = 0; i < tills.size(); ++i) {
        tills.at(i) = std::make_unique<Till>(loop, random.Below(1000), isPaced);
        Till& till = *tills.at(i);
        till.line.onCommit = [this, &till] {
            const auto& flash = till.line.Memory().flash;
            if (flash == till.held)
                return true;
            ++till.commits;
            if (onCommit)
                onCommit(till);
            till.held = flash;
            return true;
        };
    }
    loop.onYield = [this] {
        if (++waits > MostWaits)
            throw Broken{"bound: the program waits for what never comes"};
        if (Moment() && whileWaiting)
            whileWaiting();
    };
    disk.onChange = [this] { return Moment(true); };
    disk.onSlowness = [this](std::chrono::milliseconds time) { loop.Block(time); };
    AnswerCalls(&system_);
}

World::~World()
{
    AnswerCalls(nullptr);
}

std::chrono::system_clock::time_point World::WallTime() const
{
    constexpr std::chrono::sys_days Start{std::chrono::year(2026) / 3 / 9};
    return Start + std::chrono::duration_cast<std::chrono::microseconds>(loop.Now().time_since_epoch()) +
           clockAhead;
}

void World::Begin(const void* program)
{
    program_ = disk.user = program;
    isDead_ = false;
    midstAfter_ = 0;
    wasPowerCut_ = false;
    waits = 0;
    told.clear();
}

bool World::Moment(bool isChange)
{
    const bool isNearer = killAfter_ > 0 && (isChange || !isAtChange_);
    if (!isDead_ && isNearer && --killAfter_ == 0)
        Kill();
    if (!isDead_ && midstAfter_ > 0 && --midstAfter_ == 0)
        inTheMidst_();
    return !isDead_;
}

void World::InTheMidst(std::size_t moments, const void* program, std::function<void()> action)
{
    midstAfter_ = moments;
    inTheMidst_ = [this, program, action = std::move(action)] {
        const void* const user = std::exchange(disk.user, program);
        action();
        disk.user = user;
    };
}

void World::Beside(const void* program, const std::function<void()>& action)
{
    const auto kill = std::exchange(killAfter_, 0);
    const auto midst = std::exchange(midstAfter_, 0);
    const void* const waiting = std::exchange(program_, program);
    disk.user = program;
    action();
    program_ = disk.user = waiting;
    killAfter_ = kill;
    midstAfter_ = midst;
}

void World::KillAfter(std::size_t moments, bool isPowerCut, bool isAtChange)
{
    killAfter_ = moments;
    isPowerCut_ = isPowerCut;
    isAtChange_ = isAtChange;
}

void World::EndKill()
{
    if (!isDead_)
        Kill();
}

void World::Kill()
{
    isDead_ = true;
    killAfter_ = 0;
    wasPowerCut_ = isPowerCut_;
    if (isPowerCut_)
        disk.PowerCut(random);
    else
        disk.CloseFilesOf(program_);
    for (const auto& till : tills) {
        till->port.Close();
        till->user = nullptr;
    }
}

}  // namespace kelvora::simulation
