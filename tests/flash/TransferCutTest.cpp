// A download whose line is cut at a byte while it writes: the device holds the old image or the new one, and
// what the program says of it is true.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "flash/TransferLine.h"

namespace kelvora {
namespace {

using bench::Direction;
using Reason = TransferResult::Reason;
using State = TransferResult::State;

struct CutRun {
    State state = State::Old;
    Reason reason = Reason::Done;
    bool isWarned = false;
    bool isTrue = false;
    std::array<std::uint64_t, 2> passed{};  ///< bytes to the device and to the host, since the faults began
};

CutRun RunCut(const bench::FaultPlan& faults)
{
    TransferLine line;
    const FlashImage before = line.Flash();
    const SetupDocument setup = line.OtherSetup();
    const FlashImage wanted = Built(setup, before);
    line.whileAsked = [&] { line.bench.line.SetFaults(faults); };
    const TransferResult result = line.Run(setup);
    const FlashImage after = line.Flash();
    const bool saysOld = result.state == State::Old;
    const bool saysNew = result.state == State::New;
    const bool isTrue = (after == before && !saysNew) || (after == wanted && !saysOld);
    return {result.state,
            result.reason,
            !result.line.warnings.empty(),
            isTrue && (!result.image || *result.image == after),
            {line.bench.line.Faults().Passed(Direction::ToDevice),
             line.bench.line.Faults().Passed(Direction::ToHost)}};
}

bench::FaultPlan CutAfter(Direction direction, std::uint64_t bytes, bool isAway)
{
    bench::FaultPlan faults;
    bench::LineCut& cut = isAway ? faults.awayAfter : faults.silentAfter;
    (direction == Direction::ToDevice ? cut.toDevice : cut.toHost) = bytes;
    return faults;
}

constexpr std::array Directions{Direction::ToDevice, Direction::ToHost};

// Every byte of the commit, which are the last frames but three, and every fifth of those before.
TEST(TransferCut, TheDeviceIsOldOrNewAndTheTruthIsTold)
{
    constexpr std::uint64_t Ends = 120;
    const CutRun whole = RunCut({});
    ASSERT_EQ(whole.state, State::New);
    for (const Direction direction : {Direction::ToDevice, Direction::ToHost}) {
        const std::uint64_t bytes = whole.passed.at(direction == Direction::ToHost ? 1 : 0);
        std::array<int, 4> seen{};
        State last = State::Old;
        for (std::uint64_t cut = 0; cut < bytes; cut += cut + Ends < bytes ? 5 : 1) {
            const CutRun run = RunCut(CutAfter(direction, cut, cut % 2 == 1));
            ASSERT_TRUE(run.isTrue) << cut;
            // What is lost behind the answer to the commit is a warning.
            ASSERT_EQ(run.reason, run.isWarned && run.state == State::New ? Reason::Done : Reason::Line)
                << cut;
            // The later the cut, the further the work: old, then unknown, then new.
            const auto rank = [](State state) {
                return state == State::Unknown ? 1 : state == State::New ? 2 : 0;
            };
            ASSERT_GE(rank(run.state), rank(last)) << cut;
            last = run.state;
            ++seen.at(static_cast<std::size_t>(run.state));
        }
        // It is unknown only within the commit and its answer: the two frames are 22 and 17 bytes.
        EXPECT_EQ(seen.at(static_cast<std::size_t>(State::Unknown)),
                  direction == Direction::ToHost ? 17 : 22);
        EXPECT_GT(seen.at(static_cast<std::size_t>(State::Old)), 10);
        EXPECT_GT(seen.at(static_cast<std::size_t>(State::New)), 10);
    }
}

}  // namespace
}  // namespace kelvora
