#include "cli/SetupNames.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/AsciiCase.h"

namespace kelvora {

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

enum class Entry { Skipped, File, Folder };

Entry EntryOfMode(mode_t mode, std::string_view name, Endings endings)
{
    if (S_ISDIR(mode))
        return Entry::Folder;
    return S_ISREG(mode) && HasEnding(name, endings) ? Entry::File : Entry::Skipped;
}

// A link that leads nowhere counts as a file: reading it says what is wrong.
Entry EntryOfLink(int folder, const char* name, Endings endings)
{
    struct stat target {};
    if (!HasEnding(name, endings) || (fstatat(folder, name, &target, 0) == 0 && !S_ISREG(target.st_mode)))
        return Entry::Skipped;
    return Entry::File;
}

Entry EntryOf(int folder, const dirent& found, Endings endings)
{
    const std::string_view name = found.d_name;
    switch (found.d_type) {
        case DT_REG:
            return EntryOfMode(S_IFREG, name, endings);
        case DT_DIR:
            return name == "." || name == ".." ? Entry::Skipped : Entry::Folder;
        case DT_LNK:
            return EntryOfLink(folder, found.d_name, endings);
        case DT_UNKNOWN:
            break;
        default:
            return Entry::Skipped;
    }
    struct stat status {};
    if (name == "." || name == ".." || fstatat(folder, found.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return Entry::Skipped;
    return S_ISLNK(status.st_mode) ? EntryOfLink(folder, found.d_name, endings)
                                   : EntryOfMode(status.st_mode, name, endings);
}

// Names of a folder, in one block of memory.
class NameGroup {
public:
    void Add(std::string_view name, Entry entry)
    {
        places_.push_back(
            {static_cast<std::uint32_t>(text_.size()), static_cast<std::uint16_t>(name.size()), entry});
        text_ += name;
    }
    void Sort()
    {
        std::ranges::sort(places_, {}, [&](const Place& place) { return Name(place); });
    }
    bool IsFull() const { return places_.size() >= GroupSize; }

    struct Place {
        std::uint32_t start;
        std::uint16_t length;
        Entry entry;
    };
    std::string_view Name(const Place& place) const
    {
        return std::string_view(text_).substr(place.start, place.length);
    }
    const std::vector<Place>& Places() const { return places_; }

private:
    std::string text_;
    std::vector<Place> places_;
};

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

// Fills the group with the folder's next names, and closes the folder at its end: a deep tree does not need
// an open folder for each level. Returns the error that ended reading, 0 for none.
int ReadGroup(Folder& folder, Endings endings, NameGroup& group)
{
    while (!group.IsFull()) {
        errno = 0;
        const dirent* found = readdir(folder.get());
        if (!found) {
            const int error = errno;
            folder.reset();
            return error;
        }
        if (const Entry entry = EntryOf(dirfd(folder.get()), *found, endings); entry != Entry::Skipped)
            group.Add(found->d_name, entry);
    }
    return 0;
}

std::string Description(int error)
{
    return std::generic_category().message(error);
}

// False when no more names are wanted, here and below. `start` is where names below the named folder begin.
bool TakeFolder(const std::string& path, std::size_t start, Endings endings, const NameReceiver& receiver)
{
    Folder folder(opendir(path.c_str()));
    if (!folder)
        return receiver.take({path, Description(errno), std::min(start, path.size())});
    const std::string prefix = path.ends_with('/') ? path : path + '/';
    while (folder) {
        NameGroup group;
        if (const int error = ReadGroup(folder, endings, group);
            error != 0 && !receiver.take({path, Description(error), std::min(start, path.size())}))
            return false;
        group.Sort();
        for (const NameGroup::Place& place : group.Places()) {
            std::string name = prefix;
            name += group.Name(place);
            const bool more = place.entry == Entry::Folder ? TakeFolder(name, start, endings, receiver)
                                                           : receiver.take({std::move(name), {}, start});
            if (!more)
                return false;
        }
    }
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
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
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
