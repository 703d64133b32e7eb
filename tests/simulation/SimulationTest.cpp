#include <gtest/gtest.h>

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
    const auto play = [](std::uint64_t seed, const std::vector<Step>& steps) { return Play(seed, steps); };
    for (std::uint64_t seed = 1; seed <= 4; ++seed) {
        const auto failure = Play(seed, StepsOf(seed, 100));
        ASSERT_FALSE(failure) << failure->what << "\n" << TestOf(Shortest(*failure, play));
    }
}

TEST(Simulation, KeepsWhatIsInANewFolder)
{
    Replay(1, "scan 823251; kill 990315; save-as 135197");
    // Whose name was not safe yet when its program died.
    Replay(3001359, "kill 918530; add 115514; add 497485; kill 886077; add 239658");
    // A backup that is used again, and a journal that goes on.
    Replay(1, "disk-heals 2; kill 323425; download 9; download 9");
    Replay(1, "disk-heals 2; kill 107390; scan 9; scan 9; kill 304403; set-clock 1");
    // A backup that is another name of its file, since a batch died.
    Replay(4188,
           "options 163980; download 575721; save 612297; kill-at-write 955377; edit 179757; "
           "disk-fault 941355; save 222564");
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
    // It does not hear that it is released, and the question is answered No.
    Replay(900595, "download 8985; foreign 977951; close 982385; download 275812; command 707250");
}

// The wizard has taken the light off the line before the scan.
TEST(Simulation, ScansALineThatLacksAPart)
{
    Replay(2191, "wizard 285809; command 434496");
}

// And what is played comes to its end, too.
TEST(Simulation, SeedDecidesAll)
{
    const auto done = [](std::uint64_t seed) {
        Session session(seed);
        for (const Step& step : StepsOf(TextOf(StepsOf(seed, 200))))
            session.Play(step);
        return session.Done();
    };
    auto all = done(1);
    EXPECT_EQ(done(1), all);
    for (std::uint64_t seed = 2; seed <= 6; ++seed)
        all.merge(done(seed));
    EXPECT_EQ(all.size(), 11) << testing::PrintToString(all);
}

}  // namespace
}  // namespace kelvora::simulation
