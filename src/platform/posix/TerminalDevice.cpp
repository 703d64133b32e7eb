#include "platform/posix/TerminalDevice.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include "platform/posix/Descriptor.h"

namespace kelvora {

bool IsNoTerminal(const std::string& path)
{
    struct stat status {};
    if (stat(path.c_str(), &status) != 0)
        return false;
    if (!S_ISCHR(status.st_mode))
        return true;
    const Descriptor device(open(path.c_str(), O_RDONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    return device.IsOpen() && isatty(device.Number()) == 0;
}

bool IsPseudoTerminal(const std::string& path)
{
    // The kernel's number of the devices below /dev/pts.
    constexpr unsigned PseudoTerminalMajor = 136;
    // All 0 where there is none.
    struct stat status {};
    stat(path.c_str(), &status);
    return S_ISCHR(status.st_mode) && major(status.st_rdev) == PseudoTerminalMajor;
}

}  // namespace kelvora
