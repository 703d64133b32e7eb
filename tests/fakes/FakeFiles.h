// Files in memory, which fail on demand.
#pragma once

#include <map>
#include <set>
#include <string>

#include "platform/Files.h"

namespace kelvora {

class FakeFiles final : public Files {
public:
    std::string Read(const std::string& path) const override
    {
        const auto found = content.find(path);
        if (found == content.end() || unreadable.contains(path))
            throw FileError(path,
                            unreadable.contains(path) ? "Permission denied" : "No such file or directory");
        return found->second;
    }
    bool Exists(const std::string& path) const override { return content.contains(path); }
    void Copy(const std::string& from, const std::string& to) override { Write(to, Read(from)); }
    void Write(const std::string& path, const std::string& text) override
    {
        if (unwritable.contains(path))
            throw FileError(path, "No space left on device");
        content[path] = text;
    }

    std::map<std::string, std::string> content;
    std::set<std::string> unreadable;
    std::set<std::string> unwritable;
};

}  // namespace kelvora
