// Which copies of unsaved setups have to be there: of windows that live, and of those that have died with
// their program and are to be offered.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "recovery/Recovery.h"
#include "simulation/World.h"

namespace kelvora::simulation {

class UnsavedCopies {
public:
    explicit UnsavedCopies(World& world) : world_(world) {}

    /// The window's copy is to become that one; and has, or is as it was.
    void NoteKeeping(const void* program, int window, const RecoveryCopy& copy);
    void NoteKept(const void* program, int window, bool isKept);
    /// It is to go.
    void NoteDropping(const void* program, int window);
    void NoteDeath(const void* program);

    /// What a start offers; throws Broken when one is missing, or none of those that were left.
    void JudgeOffers(const std::vector<RecoveryOffer>& offers);
    void NoteTaken(const RecoveryOffer& offer, const void* program, int window);
    void NoteThrownAway(const RecoveryOffer& offer);

    /// The step has ended.
    void EndStep();

private:
    struct Copy {
        const void* program = nullptr;  ///< null once it is dead
        int window = 0;
        std::vector<std::optional<RecoveryCopy>> versions;  ///< what it may be; nothing for none
        bool isGone = false;  ///< in this step it was taken away by a program and disk that work
    };
    using Copies = std::vector<Copy>;

    using Found = std::vector<RecoveryCopy>::iterator;

    Copies::iterator Of(const void* program, int window);
    void SortByCertainty();
    /// The one of a dead program that was offered.
    Copies::iterator Left(const RecoveryCopy& offered);
    void Drop(Copy& copy);
    void JudgeFile(const RecoveryOffer& offer) const;
    static bool MayBe(const Copy& copy, const RecoveryCopy& found);
    Found Find(const Copy& copy, std::vector<RecoveryCopy>& there) const;
    bool IsSaved(const Copy& copy) const;

    World& world_;
    Copies copies_;
};

}  // namespace kelvora::simulation
