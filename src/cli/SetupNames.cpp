#include "cli/SetupNames.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/AsciiCase.h"

namespace kelvora {

namespace fs = std::filesystem;

namespace {

// The names of a folder that are sorted together: bounds the memory that a folder of any size takes.
constexpr std::size_t GroupSize = 32768;

constexpr std::array<std::string_view, 2> SetupEndings{".dat", ".txt"};

using Endings = std::span<const std::string_view>;

bool HasEnding(std::string_view name, Endings endings)
{
    return std::ranges::any_of(endings, [&](std::string_view ending) {
        return name.size() >= ending.size() &&
               std::ranges::equal(name.substr(name.size() - ending.size()), ending, {}, AsciiLower);
    });
}

struct Entry {
    std::string name;
    bool isFolder;
};

// A link to a folder is neither a file nor gone into. One that leads nowhere counts as a file: reading it
// says what is wrong.
bool IsFile(const fs::directory_entry& entry)
{
    std::error_code none;
    return entry.is_regular_file(none) || (entry.is_symlink(none) && !entry.exists(none));
}

// The folder's next names, sorted. The folder is closed at its end: a deep tree does not need an open folder
// for each level. `problem` is what ended reading, if anything did.
std::vector<Entry> ReadGroup(fs::directory_iterator& folder, Endings endings, std::error_code& problem)
{
    std::vector<Entry> group;
    for (; folder != fs::directory_iterator() && group.size() < GroupSize; folder.increment(problem)) {
        std::error_code none;
        std::string name = folder->path().filename().string();
        if (!folder->is_symlink(none) && folder->is_directory(none))
            group.push_back({std::move(name), true});
        else if (HasEnding(name, endings) && IsFile(*folder))
            group.push_back({std::move(name), false});
    }
    std::ranges::sort(group, {}, &Entry::name);
    return group;
}

// False when no more names are wanted, here and below. `start` is where names below the named folder begin.
bool TakeFolder(const std::string& path, std::size_t start, Endings endings, const NameReceiver& receiver)
{
    const std::string prefix = path.ends_with('/') ? path : path + '/';
    std::error_code problem;
    fs::directory_iterator folder(path, problem);
    do {
        const std::vector<Entry> group = ReadGroup(folder, endings, problem);
        if (problem && !receiver.take({path, problem.message(), std::min(start, path.size())}))
            return false;
        for (const Entry& entry : group) {
            std::string name = prefix + entry.name;
            const bool more = entry.isFolder ? TakeFolder(name, start, endings, receiver)
                                             : receiver.take({std::move(name), {}, start});
            if (!more)
                return false;
        }
    } while (folder != fs::directory_iterator());
    return true;
}

bool TakeName(const std::string& path, const NameReceiver& receiver)
{
    if (IsFolder(path))
        return TakeFolder(path, path.size() + (path.ends_with('/') ? 0 : 1), SetupEndings, receiver);
    // Without a slash this is the whole.
    return receiver.take({path, {}, path.rfind('/') + 1});
}

bool TakeNamesOf(std::istream& in, char separator, const NameReceiver& receiver)
{
    std::string name;
    while (true) {
        if (in.rdbuf()->in_avail() <= 0)
            receiver.pause();
        if (!std::getline(in, name, separator))
            return true;
        if (!name.empty() && !TakeName(name, receiver))
            return false;
    }
}

NameReceiver KeepIn(std::vector<FoundName>& found)
{
    return {[&](FoundName name) {
                found.push_back(std::move(name));
                return true;
            },
            [] {}};
}

}  // namespace

bool IsFolder(const std::string& path)
{
    std::error_code none;
    return fs::is_directory(path, none);
}

void FindSetups(std::span<const std::string> names, std::istream& in, char separator,
                const NameReceiver& receiver)
{
    for (const std::string& name : names) {
        const bool more =
            name == StandardInputName ? TakeNamesOf(in, separator, receiver) : TakeName(name, receiver);
        if (!more)
            return;
    }
}

std::vector<FoundName> AllSetups(std::span<const std::string> names, std::istream& in)
{
    std::vector<FoundName> found;
    FindSetups(names, in, '\n', KeepIn(found));
    return found;
}

std::vector<FoundName> FilesBelow(const std::string& folder, std::span<const std::string_view> endings)
{
    std::vector<FoundName> found;
    TakeFolder(folder, 0, endings, KeepIn(found));
    return found;
}

}  // namespace kelvora
