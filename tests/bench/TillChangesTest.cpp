#include "bench/TillChanges.h"

#include <gtest/gtest.h>

#include <vector>

#include "fakes/FakeLineClock.h"

namespace kelvora::bench {
namespace {

using namespace std::chrono_literals;

TEST(TillChanges, HappenInTheirTime)
{
    using enum TillEvent::From;
    FakeEventLoop loop;
    FakeLineClock clock(loop);
    std::vector<std::chrono::milliseconds> times;
    TillChanges changes(
        clock, {{Start, 1s}, {EventBefore, 500ms}, {LastCommand, 2s}, {Start, 3s}}, [&](const TillEvent&) {
            times.push_back(
                std::chrono::duration_cast<std::chrono::milliseconds>(loop.Now().time_since_epoch()));
        });
    loop.Pass(1200ms);
    changes.Hear("$9902");
    loop.Pass(10s);
    changes.Hear("$9900");
    loop.Pass(10s);
    EXPECT_EQ(times, (std::vector{1000ms, 1500ms})) << "nothing was done with that till yet";
    changes.Hear("$9902");
    loop.Pass(1s);
    changes.Hear("$9911");
    loop.Pass(1s);
    changes.Hear("$9900");
    loop.Pass(10s);
    EXPECT_EQ(times, (std::vector{1000ms, 1500ms, 24200ms, 24200ms}));
}

}  // namespace
}  // namespace kelvora::bench
