#include "platform/posix/DeviceHolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <optional>
#include <string_view>
#include <system_error>

#include "platform/posix/Descriptor.h"

namespace kelvora {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view DeviceFolder = "/dev/";

/// A process that has this open is the other end of pseudo-terminals: it holds none of them against others.
constexpr std::string_view PseudoTerminalMaster = "/dev/ptmx";

bool IsNumber(const std::string& text)
{
    return !text.empty() && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

// The process's name while it lives.
std::optional<std::string> NameOf(const fs::path& process)
{
    std::ifstream file(process / "comm");
    std::string name;
    return std::getline(file, name) ? std::optional(name) : std::nullopt;
}

std::string Describe(const std::string& name, const std::string& process)
{
    return name + " (PID " + process + ")";
}

// A link and what it leads to are locked under names of their own.
std::vector<fs::path> NamesOf(const std::string& device)
{
    std::error_code error;
    const fs::path real = fs::canonical(device, error);
    std::vector<fs::path> names{device};
    if (!error)
        names.push_back(real);
    return names;
}

std::vector<std::string> LockNamesOf(const fs::path& device)
{
    std::string whole = device.string();
    if (whole.starts_with(DeviceFolder))
        whole.erase(0, DeviceFolder.size());
    std::ranges::replace(whole, '/', '_');
    return {"LCK.." + whole, "LCK.." + device.filename().string()};
}

std::vector<fs::path> LockFilesOf(const std::vector<fs::path>& devices, const HolderSources& sources)
{
    std::vector<fs::path> files;
    for (const fs::path& device : devices)
        for (const std::string& lock : LockNamesOf(device))
            for (const fs::path& folder : sources.lockFolders)
                files.push_back(folder / lock);
    return files;
}

// A text that is neither blank nor begins with a number is in some other program's own form: it may mean a
// living one.
bool NamesNobodyAlive(const fs::path& lock, const fs::path& processes)
{
    std::ifstream file(lock);
    std::string process;
    if (!(file >> process))
        return file.eof();
    return IsNumber(process) && !NameOf(processes / process);
}

// A program that locks the file itself has it open, whatever the text says.
bool RemoveUnlessOpen(const fs::path& lock)
{
    const Descriptor file(open(lock.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    return file.IsOpen() && flock(file.Number(), LOCK_EX | LOCK_NB) == 0 && unlink(lock.c_str()) == 0;
}

bool HoldsNumberAlone(const fs::path& lock)
{
    std::ifstream file(lock);
    std::string number;
    std::string more;
    return file >> number && !(file >> more);
}

std::string HolderByLock(const fs::path& lock, const fs::path& processes)
{
    std::ifstream file(lock);
    std::string process;
    file >> process;
    if (!IsNumber(process))
        return {};
    // What a dead process has left holds nothing.
    const auto name = NameOf(processes / process);
    return name ? Describe(*name, process) : std::string();
}

bool HasOpen(const fs::path& process, const fs::path& device)
{
    bool found = false;
    std::error_code error;
    for (fs::directory_iterator file(process / "fd", error), end; !error && file != end;
         file.increment(error)) {
        std::error_code gone;
        const fs::path target = fs::read_symlink(file->path(), gone);
        if (target == PseudoTerminalMaster)
            return false;
        found = found || target == device;
    }
    return found;
}

std::string HolderByProcess(const fs::path& device, const fs::path& processes)
{
    std::error_code error;
    for (fs::directory_iterator entry(processes, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string number = entry->path().filename().string();
        if (!IsNumber(number) || !HasOpen(entry->path(), device))
            continue;
        if (const auto name = NameOf(entry->path()))
            return Describe(*name, number);
    }
    return {};
}

}  // namespace

std::string FindDeviceHolder(const std::string& device, const HolderSources& sources)
{
    const std::vector<fs::path> names = NamesOf(device);
    for (const fs::path& lock : LockFilesOf(names, sources))
        if (std::string holder = HolderByLock(lock, sources.processes); !holder.empty())
            return holder;
    return HolderByProcess(names.back(), sources.processes);
}

bool IsLockedByNumber(const std::string& device, const HolderSources& sources)
{
    return std::ranges::any_of(LockFilesOf(NamesOf(device), sources), [&](const fs::path& lock) {
        return HoldsNumberAlone(lock) && !HolderByLock(lock, sources.processes).empty();
    });
}

bool RemoveDeadLocks(const std::string& device, const HolderSources& sources)
{
    bool isRemoved = false;
    for (const fs::path& lock : LockFilesOf(NamesOf(device), sources))
        isRemoved |= NamesNobodyAlive(lock, sources.processes) && RemoveUnlessOpen(lock);
    return isRemoved;
}

}  // namespace kelvora
