// Unsaved setups outlive the program: what is kept of them while it runs, and what is offered at the next
// start. No window lives here.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/Files.h"
#include "recovery/RecoveryCopy.h"
#include "recovery/RecoveryStore.h"
#include "setup/SetupDifferences.h"

namespace kelvora {

/// What became of the file of a setup since its copy was made.
enum class FileSince {
    None,        ///< the setup had no file yet
    Same,        ///< it holds what it held
    Changed,     ///< it holds another setup
    Gone,        ///< it is no longer there
    Unreadable,  ///< it cannot be read, or is no setup any more
    Last = Unreadable,
};

/// Why a copy cannot be taken.
enum class RecoveryDamage {
    None,        ///< it can
    Content,     ///< it is not what was written there
    Unreadable,  ///< its file cannot be read
};

/// A copy that a run has left. One that is damaged has nothing but its id and what is wrong.
struct RecoveryOffer {
    std::string id;  ///< where the copy is, for people too
    RecoveryDamage damage = RecoveryDamage::None;
    std::string error;  ///< the system's words where it is unreadable
    RecoveryCopy copy;
    FileSince file = FileSince::None;
    SetupDocument base;      ///< what its file holds now; where that says nothing, what it held
    SetupDocument document;  ///< the setup with its changes
    std::vector<SetupDifference> differences;  ///< from `base` to `document`
};

class Recovery {
public:
    /// Both outlive the object.
    Recovery(RecoveryStore& store, const Files& files) : store_(store), files_(files) {}

    /// Keeps the unsaved setup of that window; its time is now. Does nothing where the same is kept already,
    /// or where there is nothing to keep: an empty setup without a file. What was kept before stays then, for
    /// undo would still bring it back. Throws FileError.
    void Keep(int window, RecoveryCopy copy);

    /// The window has nothing unsaved, or is gone.
    void Drop(int window);
    void DropAll();

    /// What runs that have ended left: claimed until Release, the oldest first. One whose changes its file
    /// has by now is taken away. Throws FileError.
    std::vector<RecoveryOffer> Offers();

    /// The offer is that window's copy from now on. Throws FileError.
    void Take(const RecoveryOffer& offer, int window);

    /// Throws FileError.
    void ThrowAway(const RecoveryOffer& offer) { store_.Remove(offer.id); }

    /// No offer is taken any more; those that are left wait for the next start.
    void Release() { store_.Release(); }

private:
    RecoveryOffer OfferOf(const LeftCopy& left) const;
    void LookAtFile(RecoveryOffer& offer) const;

    RecoveryStore& store_;
    const Files& files_;
    std::map<int, RecoveryCopy> kept_;  ///< by window, without their times
};

}  // namespace kelvora
