#include "platform/posix/StopSignal.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>

namespace kelvora {

TEST(StopSignal, EndsTheProgramAtTheSecondForWhoAsksAndAtTheThirdForWhoCounts)
{
    const auto need = [](bool isTrue) {
        if (!isTrue)
            _exit(1);
    };
    const testing::KilledBySignal isLast(SIGTERM);
    StopSignal stop;
    EXPECT_EXIT((need(!stop.Requested()), raise(SIGINT), need(stop.Requested()), raise(SIGTERM)), isLast, "");
    EXPECT_EXIT((raise(SIGINT), raise(SIGTERM), stop.Requested()), isLast, "") << "both before it asked";
    EXPECT_EXIT(
        (raise(SIGINT), need(stop.Count() == 1), raise(SIGINT), need(stop.Count() == 2), raise(SIGTERM)),
        isLast, "");
}

}  // namespace kelvora
