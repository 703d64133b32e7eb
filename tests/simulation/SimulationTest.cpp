#include <gtest/gtest.h>

#include <algorithm>

#include "simulation/Play.h"

namespace kelvora::simulation {
namespace {

// What the simulation has found, step for step.
void Replay(std::uint64_t seed, const char* steps)
{
    const auto failure = Play(seed, StepsOf(steps));
    EXPECT_FALSE(failure) << failure->what;
}

TEST(Simulation, HoldsItsRules)
{
    for (std::uint64_t seed = 1; seed <= 10; ++seed) {
        const auto failure = Play(seed, StepsOf(seed, 100));
        ASSERT_FALSE(failure) << failure->what << "\n" << TestOf(Shortest(*failure));
    }
}

TEST(Simulation, KeepsWhatIsInANewFolder)
{
    Replay(1, "scan 823251; kill 990315; save-as 135197");
    // Whose name was not safe yet when its program died.
    Replay(3001359, "kill 918530; add 115514; add 497485; kill 886077; add 239658");
}

// The power fails after a copy was taken whose program had died before its change was safe.
TEST(Simulation, KeepsAnUnsavedSetupThatWasTaken)
{
    Replay(700080,
           "restart-till 188739; save-as 689879; close 133005; scan 977955; open 523790; add 723023; "
           "kill 322362; download 567299; save-as 631892; options 661593; kill 769174; delete 231585; "
           "kill 556464; foreign 905572");
}

// The line goes away at the end of the reading, and is still away when the writing begins.
TEST(Simulation, TellsOfATillThatIsHeldSinceTheReading)
{
    Replay(2000184, "download 639341; line-fault 55201; restore 932892");
}

// The wizard has taken the light off the line before the scan.
TEST(Simulation, ScansALineThatLacksAPart)
{
    Replay(2191, "wizard 285809; command 434496");
}

// How much is done in the sessions of some seeds: commits into tills, and saves.
std::vector<std::pair<int, int>> Done()
{
    std::vector<std::pair<int, int>> done;
    for (std::uint64_t seed = 1; seed <= 4; ++seed) {
        Session session(seed);
        for (const Step& step : StepsOf(TextOf(StepsOf(seed, 100))))
            session.Play(step);
        done.emplace_back(session.Commits(), session.Saves());
    }
    return done;
}

TEST(Simulation, SeedDecidesAll)
{
    const auto done = Done();
    EXPECT_EQ(Done(), done);
    EXPECT_TRUE(
        std::ranges::any_of(done, [](const auto& each) { return each.first > 0 && each.second > 0; }));
}

}  // namespace
}  // namespace kelvora::simulation
