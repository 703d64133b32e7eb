// A store of unsaved setups in memory: what is in `left` comes from a run that has died.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/Files.h"
#include "recovery/RecoveryStore.h"

namespace kelvora {

class MemoryRecovery final : public RecoveryStore {
public:
    void Keep(int window, const std::string& text) override
    {
        if (isFull)
            throw FileError("/state/1.copy", "No space left on device");
        copies[window] = text;
        ++writes;
    }
    void Drop(int window) override { copies.erase(window); }
    std::vector<LeftCopy> Claim() override
    {
        std::vector<LeftCopy> claimed;
        for (const auto& [id, text] : left)
            claimed.push_back({id, text, text.empty() ? "Input/output error" : ""});
        return claimed;
    }
    void Adopt(const std::string& id, int window) override { copies[window] = left.extract(id).mapped(); }
    void Remove(const std::string& id) override { left.erase(id); }
    void Release() override { ++releases; }

    std::map<int, std::string> copies;
    std::map<std::string, std::string> left;  ///< by id; an empty one cannot be read
    bool isFull = false;
    int writes = 0;
    int releases = 0;
};

}  // namespace kelvora
