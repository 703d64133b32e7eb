#include "flash/Backups.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "flash/TransferPlan.h"

namespace kelvora {

namespace {

constexpr std::string_view Extension = ".mem";

// "2026-03-09 07-05-00 COM1": names in alphabetical order are in order of time.
std::string FileStem(const BackupOrigin& origin)
{
    const std::string title = BackupTitle(origin);
    const std::size_t comma = title.find(", ");
    std::string time = title.substr(comma + 2);
    std::ranges::replace(time, ':', '-');
    return time + " " + title.substr(0, comma);
}

}  // namespace

Backups::Backups(Files& files, std::string folder, Clock clock)
    : files_(files), folder_(std::move(folder)), clock_(std::move(clock))
{
}

std::string Backups::Save(int port, std::string_view deviceMap, const FlashImage& image)
{
    const BackupOrigin origin{port, clock_()};
    files_.MakeFolder(folder_);
    const std::string start = folder_ + "/" + FileStem(origin);
    std::string path = start + std::string(Extension);
    for (int number = 2; files_.Exists(path); ++number)
        path = start + "_" + std::to_string(number) + std::string(Extension);
    files_.Write(path,
                 FormatDeviceMapDump({BackupTitle(origin), std::string(deviceMap)}) + FormatDump(0, image));
    return path;
}

std::vector<BackupEntry> Backups::List() const
{
    std::vector<BackupEntry> entries;
    for (const std::string& name : files_.List(folder_)) {
        if (!name.ends_with(Extension))
            continue;
        BackupEntry entry{folder_ + "/" + name, name, std::nullopt, {}, std::nullopt, {}};
        try {
            const FlashDump dump = Read(entry.path);
            if (dump.deviceMap)
                entry.origin = OriginOf(dump.deviceMap->title);
            entry.modules = ModulesFor(dump).Known();
        } catch (const FileError& error) {
            entry.readError = error.what();
        } catch (const DumpError& error) {
            entry.damage = error;
        }
        entries.push_back(std::move(entry));
    }
    // Of one second's backups the names' numbers grow: "_10" comes after "_2".
    std::ranges::stable_sort(entries, std::ranges::greater(), [](const BackupEntry& entry) {
        return std::tuple(entry.origin ? entry.origin->time : std::chrono::local_seconds::min(),
                          entry.origin ? entry.name.size() : 0, entry.name);
    });
    return entries;
}

FlashDump Backups::Read(const std::string& path) const
{
    return ReadDump(files_.Read(path));
}

}  // namespace kelvora
