// Where the copies of unsaved setups are kept: those of this run of the program, and what runs that have died
// left there.
#pragma once

#include <string>
#include <vector>

namespace kelvora {

/// A copy that a run has left.
struct LeftCopy {
    std::string id;     ///< where it is, for people too
    std::string text;   ///< what it holds
    std::string error;  ///< why that cannot be read; mostly empty
};

class RecoveryStore {
public:
    virtual ~RecoveryStore() = default;

    /// Puts `text` in the place of this run's copy for that window, safe from a power cut. Throws FileError;
    /// the copy is then as it was.
    virtual void Keep(int window, const std::string& text) = 0;

    /// Takes this run's copy for that window away, where there is one.
    virtual void Drop(int window) = 0;

    /// The copies of runs that have ended, which no other program gets until Release. Throws FileError.
    virtual std::vector<LeftCopy> Claim() = 0;

    /// Makes a claimed copy this run's for that window. Throws FileError; the copy is then as it was.
    virtual void Adopt(const std::string& id, int window) = 0;

    /// Takes a claimed copy away. Throws FileError.
    virtual void Remove(const std::string& id) = 0;

    /// Leaves what was claimed and is still there to the next start.
    virtual void Release() = 0;
};

}  // namespace kelvora
