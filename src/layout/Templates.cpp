#include "layout/Templates.h"

#include <algorithm>
#include <utility>

#include "platform/AsciiCase.h"

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
    files_.MakeFolder(ownFolder_);
    return ownFolder_ + "/" + std::string(name) + std::string(TemplateEnding);
}

bool IsTemplateName(std::string_view name)
{
    return name.find_first_not_of(' ') != std::string_view::npos && name.front() != '.' &&
           name.find('/') == std::string_view::npos && name.size() <= LongestName;
}

}  // namespace kelvora
