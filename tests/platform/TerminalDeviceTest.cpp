#include "platform/posix/TerminalDevice.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include "platform/posix/Descriptor.h"

namespace kelvora {

TEST(TerminalDevice, IsToldFromAllElseThatAPathMayBe)
{
    const Descriptor master(posix_openpt(O_RDWR | O_NOCTTY), "posix_openpt");
    ASSERT_EQ(grantpt(master.Number()) + unlockpt(master.Number()), 0);
    const auto check = [&](const std::string& path, bool isNoTerminal, bool isPseudoTerminal) {
        EXPECT_EQ(IsNoTerminal(path), isNoTerminal) << path;
        EXPECT_EQ(IsPseudoTerminal(path), isPseudoTerminal) << path;
    };
    check(ptsname(master.Number()), false, true);
    check("/dev/null", true, false);
    check("/dev", true, false);
    check("/proc/self/exe", true, false);
    check("/dev/none-of-that-name", false, false);
}

}  // namespace kelvora
