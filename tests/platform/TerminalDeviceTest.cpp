#include "platform/posix/TerminalDevice.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include "platform/posix/Descriptor.h"

namespace kelvora {
namespace {

TEST(TerminalDevice, IsToldFromAllElseThatAPathMayBe)
{
    const Descriptor master(posix_openpt(O_RDWR | O_NOCTTY), "posix_openpt");
    ASSERT_EQ(grantpt(master.Number()) + unlockpt(master.Number()), 0);
    struct Row {
        std::string path;
        bool isNoTerminal, isPseudoTerminal;
    };
    for (const Row& row :
         {Row{ptsname(master.Number()), false, true}, Row{"/dev/null", true, false}, Row{"/dev", true, false},
          Row{"/proc/self/exe", true, false}, Row{"/dev/none-of-that-name", false, false}}) {
        EXPECT_EQ(IsNoTerminal(row.path), row.isNoTerminal) << row.path;
        EXPECT_EQ(IsPseudoTerminal(row.path), row.isPseudoTerminal) << row.path;
    }
}

}  // namespace
}  // namespace kelvora
