// A download whose line is cut at a byte of its end: the device holds the old image or the new one, and what
// the program says of it is true.
#include <gtest/gtest.h>

#include <array>

#include "flash/TransferLine.h"

namespace kelvora {
namespace {

using bench::Direction;
using State = TransferResult::State;

/// The bytes that a download has sent and heard since its question.
std::array<std::uint64_t, 2> Passed(const TransferLine& line)
{
    const bench::LineFaults& faults = line.bench.line.Faults();
    return {faults.Passed(Direction::ToDevice), faults.Passed(Direction::ToHost)};
}

// Every byte of the commit, which are the last frames but three. The simulation cuts the line elsewhere.
TEST(TransferCut, TheDeviceIsOldOrNewAndTheTruthIsTold)
{
    TransferLine whole;
    whole.whileAsked = [&] { whole.bench.line.SetFaults({}); };
    ASSERT_EQ(whole.Run(whole.OtherSetup()).state, State::New);
    for (const bool isToHost : {false, true}) {
        const std::uint64_t bytes = Passed(whole).at(isToHost ? 1 : 0);
        std::array<int, 5> seen{};
        for (std::uint64_t cut = bytes - 120; cut < bytes; ++cut) {
            bench::FaultPlan faults;
            bench::LineCut& how = cut % 2 == 1 ? faults.awayAfter : faults.silentAfter;
            (isToHost ? how.toHost : how.toDevice) = cut;
            TransferLine line;
            const FlashImage before = line.Flash();
            const SetupDocument setup = line.OtherSetup();
            line.whileAsked = [&] { line.bench.line.SetFaults(faults); };
            const TransferResult result = line.Run(setup);
            const bool isOld = line.Flash() == before;
            ASSERT_TRUE(isOld || line.Flash() == Built(setup, before)) << cut;
            ASSERT_NE(result.state, isOld ? State::New : State::Old) << cut;
            ASSERT_TRUE(!result.image || *result.image == line.Flash()) << cut;
            ++seen.at(static_cast<std::size_t>(result.state));
        }
        // It is unknown only within the commit and its answer: the two frames are 22 and 17 bytes.
        EXPECT_EQ(seen.at(static_cast<std::size_t>(State::Unknown)), isToHost ? 17 : 22);
        EXPECT_GT(seen.at(static_cast<std::size_t>(State::Old)), 10);
        EXPECT_GT(seen.at(static_cast<std::size_t>(State::New)), 10);
    }
}

}  // namespace
}  // namespace kelvora
