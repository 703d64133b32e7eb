#include "flash/Backups.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "flash/TransferPlan.h"
#include "platform/PortName.h"

namespace kelvora {

namespace {

constexpr std::string_view Extension = ".mem";

// "2026-03-09 07-05-00 COM1": names in alphabetical order are in order of time.
std::string FileStem(const BackupOrigin& origin)
{
    std::string time = LocalTimeText(origin.time);
    std::ranges::replace(time, ':', '-');
    return time + " " + PortName(origin.port);
}

// What a name of that form tells, whatever the file holds.
std::optional<BackupOrigin> OriginOfName(std::string_view name)
{
    const std::size_t timeEnd = name.find(" COM");
    if (timeEnd == std::string_view::npos)
        return std::nullopt;
    std::string time(name.substr(0, timeEnd));
    std::replace(std::ranges::find(time, ' '), time.end(), '-', ':');
    const std::string_view port = name.substr(timeEnd + 1);
    return OriginOf(std::string(port.substr(0, port.find_first_of("._"))) + ", " + time);
}

// Of one second's backups the names' numbers grow: "_10" comes after "_2".
auto AgeOf(const std::optional<BackupOrigin>& origin, const std::string& name)
{
    return origin ? std::tuple(origin->time, name.size(), name)
                  : std::tuple(std::chrono::local_seconds::min(), std::size_t{}, name);
}

}  // namespace

std::string BackupFolder(const std::string& dataFolder)
{
    return dataFolder + "/backups";
}

Backups::Backups(Files& files, std::string folder, Clock clock)
    : files_(files), folder_(std::move(folder)), clock_(std::move(clock))
{
}

std::optional<std::string> Backups::Kept(const Held& held) const
{
    std::vector<std::string> names = files_.List(folder_);
    const std::chrono::local_seconds now = clock_();
    std::erase_if(names, [&](const std::string& name) {
        const auto origin = OriginOfName(name);
        // The clock may have been ahead for a while.
        return !name.ends_with(Extension) || !origin || origin->port != held.port || origin->time > now;
    });
    std::ranges::sort(names, std::ranges::greater(),
                      [](const std::string& name) { return AgeOf(OriginOfName(name), name); });
    for (const std::string& name : names) {
        try {
            const FlashDump dump = Read(folder_ + "/" + name);
            const auto source = SourceOf(dump);
            const bool isSame = source && source->deviceMap == held.deviceMap &&
                                source->terminal == held.terminal && source->origin.port == held.port &&
                                dump.head.kind == DumpKind::Device && dump.image == held.image;
            return isSame ? std::optional(folder_ + "/" + name) : std::nullopt;
        } catch (const FileError&) {
            continue;
        } catch (const DumpError&) {
            // A damaged one keeps nothing: the one before it is the newest.
            continue;
        }
    }
    return std::nullopt;
}

std::string Backups::Keep(const Held& held)
{
    files_.MakeFolder(folder_);
    if (const auto kept = Kept(held))
        return *kept;
    const BackupOrigin origin{held.port, clock_()};
    const std::string start = folder_ + "/" + FileStem(origin);
    std::string path = start + std::string(Extension);
    for (int number = 2; files_.Exists(path); ++number)
        path = start + "_" + std::to_string(number) + std::string(Extension);
    const DumpSource source{origin, std::string(held.deviceMap), std::string(held.terminal)};
    files_.Write(path, FormatFlashDump(DumpOfDevice(held.image, source)));
    return path;
}

std::vector<BackupEntry> Backups::List() const
{
    std::vector<BackupEntry> entries;
    for (const std::string& name : files_.List(folder_)) {
        if (!name.ends_with(Extension))
            continue;
        BackupEntry entry;
        entry.path = folder_ + "/" + name;
        entry.name = name;
        entry.origin = OriginOfName(name);
        try {
            const FlashDump dump = Read(entry.path);
            if (dump.head.deviceMap)
                entry.origin = OriginOf(dump.head.deviceMap->title);
            entry.kind = dump.head.kind;
            entry.modules = ModulesFor(dump).Known();
            entry.terminal = dump.head.terminal;
        } catch (const FileError& error) {
            entry.readError = error.what();
        } catch (const DumpError& error) {
            entry.damage = error;
        }
        entries.push_back(std::move(entry));
    }
    std::ranges::stable_sort(entries, std::ranges::greater(),
                             [](const BackupEntry& entry) { return AgeOf(entry.origin, entry.name); });
    return entries;
}

FlashDump Backups::Read(const std::string& path) const
{
    return ReadDump(files_.Read(path));
}

}  // namespace kelvora
