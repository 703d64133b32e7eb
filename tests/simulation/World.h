// What there is besides the programs: time, a disk, two lines with a till at each, and the things that happen
// to them. A program is killed, or loses its power, in the middle of its work: from then on nothing that it
// does has an effect, while what it has built is taken down.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bench/SimulatedPort.h"
#include "fakes/FakeLineClock.h"
#include "flash/FlashImage.h"
#include "simulation/Disk.h"
#include "simulation/Random.h"
#include "simulation/SystemCalls.h"

namespace kelvora::simulation {

/// A rule does not hold. It is none of the errors that a program handles.
struct Broken {
    std::string what;  ///< begins with the rule's name
};

/// `rule` of Rules.h; `what` says what was found.
void Require(bool holds, const char* rule, const std::string& what);

/// Virtual time, in which things happen to a program that waits.
class Loop final : public FakeEventLoop {
public:
    void Yield() override
    {
        onYield();
        FakeEventLoop::Yield();
    }
    void Block(std::chrono::microseconds time)
    {
        FakeEventLoop::Block(time);
        blocked_ += time;
    }
    /// The time without what a slow disk has taken.
    Time Worked() const { return Now() - blocked_; }
    std::function<void()> onYield;

private:
    Time::duration blocked_{};
};

/// A line and the till at its end, which remembers what it held.
struct Till {
    Till(Loop& loop, std::uint64_t seed, bool isPaced);

    /// Another till is connected in place of the one at hand.
    void Replace(bench::LineState memory, std::string name);

    FlashImage Flash() const;
    std::string DeviceMap() const;
    /// From now on that goes wrong on the line.
    void SetFaults(const bench::FaultPlan& plan);

    bench::FakeLineClock clock;
    bench::SimulatedLine line;
    bench::SimulatedPort port;
    bench::FlashBytes held;      ///< what the flash held before its last change
    int commits = 0;             ///< how often it has changed
    const void* user = nullptr;  ///< who has the port open
    bench::FaultPlan faults;     ///< of the line
    bool isClean = true;         ///< nothing has gone wrong on the line since it was made whole
};

class World {
public:
    /// What an operation that runs may do: while it does, the flash may become what is wanted, once the user
    /// has said so. `mayCommit` throws Broken when it must not be what it has become.
    using Judge = std::function<void(Till&)>;

    explicit World(std::uint64_t seed);
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    ~World();

    /// Something that a kill may come before, such as a change of the disk. False when the program that works
    /// is dead.
    bool Moment(bool isChange = false);

    /// The program that works from now on; it lives until it is killed or the power fails.
    void Begin(const void* program);
    bool IsDead() const { return isDead_; }
    /// Kills it after so many moments, or takes the power from the whole machine; at changes of the disk
    /// alone if that is wanted.
    void KillAfter(std::size_t moments, bool isPowerCut, bool isAtChange = false);
    /// Kills it now when that has not happened yet.
    void EndKill();
    bool IsKillSet() const { return killAfter_ > 0; }
    bool WasPowerCut() const { return wasPowerCut_; }

    /// After so many moments another program does something, in the midst of this one's step.
    void InTheMidst(std::size_t moments, const void* program, std::function<void()> action);

    /// The same now, while this one waits; no kill comes before it is done.
    void Beside(const void* program, const std::function<void()>& action);

    std::chrono::system_clock::time_point WallTime() const;

    Random random;
    Random meanwhile{0};  ///< what else happens while a program waits
    Loop loop;
    Disk disk;
    std::array<std::unique_ptr<Till>, 2> tills;
    std::chrono::seconds clockAhead{0};  ///< what somebody has set the clock forward by
    Judge onCommit;
    std::function<void()> whileWaiting;  ///< what else happens while a program waits; may be empty
    std::size_t waits = 0;               ///< since Begin
    std::vector<std::string> told;       ///< to the user, since Begin

private:
    void Kill();

    SimulatedSystem system_;
    const void* program_ = nullptr;  ///< that works
    bool isDead_ = false;
    bool isPowerCut_ = false;
    bool isAtChange_ = false;
    bool wasPowerCut_ = false;
    std::size_t killAfter_ = 0;
    std::size_t midstAfter_ = 0;
    std::function<void()> inTheMidst_;
};

}  // namespace kelvora::simulation
