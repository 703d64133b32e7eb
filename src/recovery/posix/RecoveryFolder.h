// The copies of unsaved setups in a folder. Each run of the program has a number there:
//   7.lock       locked for as long as the run lives, whatever ends it
//   7-2.copy     its copy for window 2
// A run without a copy has no lock either: a clean end leaves nothing.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/Files.h"
#include "platform/posix/Descriptor.h"
#include "recovery/RecoveryStore.h"

namespace kelvora {

class RecoveryFolder final : public RecoveryStore {
public:
    /// `folder` is made for the first copy. `files` outlives the object, whose end leaves its copies there.
    RecoveryFolder(Files& files, std::string folder) : files_(files), folder_(std::move(folder)) {}
    RecoveryFolder(const RecoveryFolder&) = delete;
    RecoveryFolder& operator=(const RecoveryFolder&) = delete;
    ~RecoveryFolder() override;

    void Keep(int window, const std::string& text) override;
    void Drop(int window) override;
    std::vector<LeftCopy> Claim() override;
    void Adopt(const std::string& id, int window) override;
    void Remove(const std::string& id) override;
    void Release() override;

private:
    std::string LockPath(int run) const { return folder_ + "/" + std::to_string(run) + ".lock"; }
    std::string CopyPath(int window) const;
    std::vector<std::string> CopiesOf(int run) const;
    LeftCopy ReadCopy(const std::string& name, const std::string& problem) const;
    std::set<int> Runs() const;
    bool HasRun() const;
    void BeginRun();
    void EndRun();

    Files& files_;
    std::string folder_;
    int run_ = 0;
    Descriptor lock_;                    ///< of this run; none before its first copy
    std::set<int> windows_;              ///< that have a copy
    std::map<int, Descriptor> claimed_;  ///< the locks of runs that have ended, by their numbers
};

}  // namespace kelvora
