// Files in memory, which fail on demand.
#pragma once

#include <future>
#include <map>
#include <set>
#include <string>

#include "platform/Files.h"

namespace kelvora {

class FakeFiles final : public Files {
public:
    std::string Read(const std::string& path) const override
    {
        if (const auto late = comesLater.find(path); late != comesLater.end())
            late->second.wait();
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

    std::vector<std::string> List(const std::string& folder) const override
    {
        if (unreadable.contains(folder))
            throw FileError(folder, "Permission denied");
        std::vector<std::string> names;
        for (const auto& [path, text] : content)
            if (path.starts_with(folder + "/") && path.find('/', folder.size() + 1) == std::string::npos)
                names.push_back(path.substr(folder.size() + 1));
        return names;
    }
    void MakeFolder(const std::string& folder) override
    {
        if (unwritable.contains(folder))
            throw FileError(folder, "Permission denied");
        folders.insert(folder);
    }
    void Remove(const std::string& path) override
    {
        if (unwritable.contains(path) || content.erase(path) == 0)
            throw FileError(path, "Permission denied");
    }

    std::unique_ptr<const Files> ForThread() const override { return std::make_unique<FakeFiles>(*this); }

    std::map<std::string, std::string> content;
    std::set<std::string> folders;                               ///< that were made
    std::map<std::string, std::shared_future<void>> comesLater;  ///< what holds up who reads it
    std::set<std::string> unreadable;
    std::set<std::string> unwritable;
};

}  // namespace kelvora
