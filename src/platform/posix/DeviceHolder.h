// Which program holds a serial device: the one that its lock file names, else one that has it open.
//   LCK..ttyUSB0   the process number in digits, blanks before it allowed; what follows is the program's own
// A process of another account cannot be looked into: where there is no lock file it stays unknown.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace kelvora {

/// Where to look; the defaults are those of this machine.
struct HolderSources {
    std::vector<std::filesystem::path> lockFolders{"/run/lock", "/var/lock", "/var/spool/lock", "/tmp"};
    std::filesystem::path processes = "/proc";
};

/// "minicom (PID 1234)"; empty where nobody is found.
std::string FindDeviceHolder(const std::string& device, const HolderSources& sources = {});

/// Whether a lock file with a process's number and nothing else, as programs other than Qt's write it, names
/// a living one. Qt, which looks for the program's name too, would take it for a dead one's.
bool IsLockedByNumber(const std::string& device, const HolderSources& sources = {});

/// Removes the device's lock files that no living process holds: those that name a dead one, and those that
/// are empty because whoever made them was killed. False when there is none, or none that may be removed.
bool RemoveDeadLocks(const std::string& device, const HolderSources& sources = {});

}  // namespace kelvora
