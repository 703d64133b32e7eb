#include "layout/Templates.h"

#include <algorithm>
#include <utility>

#include "platform/AsciiCase.h"
#include "platform/TextFiles.h"

namespace kelvora {

namespace {

constexpr std::string_view TemplateEnding = ".dat";

/// What a name may take of the 255 bytes that file systems have: endings of copies come behind it.
constexpr std::size_t LongestName = 200;

}  // namespace

Templates::Templates(Files& files, std::string programFolder, std::string ownFolder)
    : files_(files), programFolder_(std::move(programFolder)), ownFolder_(std::move(ownFolder))
{
}

std::vector<Template> Templates::List(bool isOwn) const
{
    const std::string& folder = isOwn ? ownFolder_ : programFolder_;
    const std::string start = folder + "/";
    std::vector<Template> found;
    for (const std::string& file : files_.List(folder))
        if (LowerCase(file).ends_with(TemplateEnding) && !file.starts_with('.'))
            found.push_back({start + file, file.substr(0, file.size() - TemplateEnding.size()), isOwn});
    std::ranges::sort(found, {}, &Template::name);
    return found;
}

std::string Templates::PathFor(std::string_view name) const
{
    return ownFolder_ + "/" + std::string(name) + std::string(TemplateEnding);
}

void Templates::Move(const std::string& path, const std::string& to) const
{
    files_.Copy(path, to);
    // A name that ends in ".DAT" has the same one.
    const std::string before = BackupName(path);
    const bool hasBefore = before != BackupName(to) && files_.Exists(before);
    if (hasBefore)
        files_.Copy(before, BackupName(to));
    files_.Remove(path);
    if (hasBefore)
        files_.Remove(before);
}

void Templates::Remove(const std::string& path) const
{
    files_.Remove(path);
    if (const std::string before = BackupName(path); files_.Exists(before))
        files_.Remove(before);
}

std::optional<NameFault> FaultOf(std::string_view name)
{
    if (name.find_first_not_of(' ') == std::string_view::npos || name.front() == '.' ||
        name.find('/') != std::string_view::npos)
        return NameFault::Unfit;
    return name.size() > LongestName ? std::optional(NameFault::TooLong) : std::nullopt;
}

}  // namespace kelvora
