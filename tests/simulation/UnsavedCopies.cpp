#include "simulation/UnsavedCopies.h"

#include <algorithm>
#include <iterator>

#include "simulation/Rules.h"

namespace kelvora::simulation {

namespace {

constexpr const char* CopyFolder = "/sim/state/recovery";

}  // namespace

UnsavedCopies::Copies::iterator UnsavedCopies::Of(const void* program, int window)
{
    return std::ranges::find_if(
        copies_, [&](const Copy& copy) { return copy.program == program && copy.window == window; });
}

UnsavedCopies::Copies::iterator UnsavedCopies::Left(const RecoveryCopy& offered)
{
    return std::ranges::find_if(copies_,
                                [&](const Copy& copy) { return !copy.program && MayBe(copy, offered); });
}

bool UnsavedCopies::MayBe(const Copy& copy, const RecoveryCopy& found)
{
    return std::ranges::any_of(copy.versions, [&](const auto& version) {
        return version && version->path == found.path && version->saved == found.saved &&
               version->setup == found.setup;
    });
}

// A copy of what its file holds is taken away.
bool UnsavedCopies::IsSaved(const Copy& copy) const
{
    return std::ranges::any_of(copy.versions, [&](const auto& version) {
        return version && world_.disk.Content(version->path) == version->setup + "\r\n";
    });
}

void UnsavedCopies::NoteKeeping(const void* program, int window, const RecoveryCopy& copy)
{
    auto found = Of(program, window);
    if (found == copies_.end())
        found = copies_.insert(found, {program, window, {std::nullopt}});
    if (!world_.IsDead())
        found->versions.emplace_back(copy);
}

void UnsavedCopies::NoteKept(const void* program, int window, bool isKept)
{
    if (world_.IsDead())
        return;
    auto& versions = Of(program, window)->versions;
    versions = {isKept ? versions.back() : versions.front()};
}

void UnsavedCopies::NoteDropping(const void* program, int window)
{
    if (const auto found = Of(program, window); found != copies_.end() && !world_.IsDead())
        Drop(found);
}

void UnsavedCopies::Drop(Copies::iterator copy)
{
    isDropping_ = true;
    copies_.erase(copy);
}

void UnsavedCopies::NoteDeath(const void* program)
{
    for (Copy& copy : copies_)
        if (copy.program == program)
            copy.program = nullptr;
}

void UnsavedCopies::JudgeOffers(const std::vector<RecoveryOffer>& offers)
{
    Copies offered;
    bool isAnyHidden = false;
    for (const RecoveryOffer& offer : offers) {
        const bool isHidden = offer.damage == RecoveryDamage::Unreadable && !world_.disk.faults.AreNone();
        isAnyHidden = isAnyHidden || isHidden;
        if (isHidden)
            continue;
        Require(offer.damage == RecoveryDamage::None, Rule::Whole, offer.id + " is damaged");
        const auto left = Left(offer.copy);
        Require(left != copies_.end() || hasMore_, Rule::Unsaved, offer.id + " is offered and was not left");
        if (left == copies_.end())
            continue;
        offered.push_back(*left);
        copies_.erase(left);
    }
    std::erase_if(copies_, [&](const Copy& copy) {
        const bool isToBeOffered = !copy.program && !isAnyHidden;
        Require(!isToBeOffered || !copy.versions.front() || IsSaved(copy), Rule::Unsaved,
                "an unsaved setup is not offered");
        isDropping_ = isDropping_ || isToBeOffered;
        return isToBeOffered;
    });
    std::ranges::move(offered, std::back_inserter(copies_));
}

void UnsavedCopies::NoteTaken(const RecoveryOffer& offer, const void* program, int window)
{
    NoteThrownAway(offer);
    copies_.push_back({program, window, {offer.copy}});
}

void UnsavedCopies::NoteThrownAway(const RecoveryOffer& offer)
{
    if (const auto found = Left(offer.copy); found != copies_.end() && !world_.IsDead())
        Drop(found);
}

void UnsavedCopies::EndStep()
{
    const bool mayFail = world_.IsDead() || !world_.disk.faults.AreNone();
    hasDropped_ = hasDropped_ || isDropping_;
    hasMore_ = hasMore_ || (isDropping_ && mayFail) || (hasDropped_ && world_.WasPowerCut());
    isDropping_ = false;
    std::vector<RecoveryCopy> there;
    for (const std::string& name : world_.disk.List(CopyFolder))
        if (name.ends_with(".copy"))
            if (auto copy = ReadRecoveryCopy(*world_.disk.Content(CopyFolder + ("/" + name))))
                there.push_back(*std::move(copy));
    // Those that can be but one come first: what else is there is for the others.
    std::ranges::stable_sort(copies_, {}, [](const Copy& copy) {
        return std::pair(!copy.versions.front(), copy.versions.size());
    });
    std::erase_if(copies_, [&](Copy& copy) {
        const auto found =
            std::ranges::find_if(there, [&](const RecoveryCopy& each) { return MayBe(copy, each); });
        const bool isThere = found != there.end();
        Require(isThere || !copy.versions.front() || (!copy.program && IsSaved(copy)), Rule::Unsaved,
                "the copy of an unsaved setup is gone");
        if (isThere && world_.WasPowerCut())
            copy.versions = {*found};
        if (isThere)
            there.erase(found);
        return !isThere && !copy.program && (copy.versions.front() || world_.WasPowerCut());
    });
}

}  // namespace kelvora::simulation
