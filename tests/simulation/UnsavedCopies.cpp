#include "simulation/UnsavedCopies.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "setup/SetupReader.h"
#include "setup/SetupWriter.h"
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

// Those that must be there come first, and of them those that can be but one: what else is there is for the
// others.
void UnsavedCopies::SortByCertainty()
{
    std::ranges::stable_sort(copies_, {}, [](const Copy& copy) {
        return std::pair(!copy.versions.front(), copy.versions.size());
    });
}

UnsavedCopies::Copies::iterator UnsavedCopies::Left(const RecoveryCopy& offered)
{
    SortByCertainty();
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
        const auto text = version ? world_.disk.Content(version->path) : std::nullopt;
        const auto held = text ? TryReadSetup(*text) : std::nullopt;
        return held && WriteSetup(held->Modules) == version->setup;
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
        Drop(*found);
}

// It may stay when the disk does not work, and come back when the power is cut.
void UnsavedCopies::Drop(Copy& copy)
{
    copy.program = nullptr;
    copy.isGone = world_.disk.faults.AreNone();
    if (copy.versions.front())
        copy.versions.insert(copy.versions.begin(), std::nullopt);
}

void UnsavedCopies::NoteDeath(const void* program)
{
    for (Copy& copy : copies_)
        if (copy.program == program)
            copy.program = nullptr;
}

void UnsavedCopies::JudgeFile(const RecoveryOffer& offer) const
{
    const auto text = world_.disk.Content(offer.copy.path);
    const auto now = text ? TryReadSetup(*text) : std::nullopt;
    FileSince file = offer.copy.path.empty() ? FileSince::None : FileSince::Gone;
    if (text)
        file = !now                                           ? FileSince::Unreadable
               : WriteSetup(now->Modules) == offer.copy.saved ? FileSince::Same
                                                              : FileSince::Changed;
    Require(offer.file == file, Rule::Truth, offer.id + " says what has not become of its file");
    const std::string old = offer.copy.path.empty() ? WriteSetup({}) : offer.copy.saved;
    const std::string base = now ? WriteSetup(now->Modules) : old;
    Require(offer.differences.empty() == (base == offer.copy.setup), Rule::Truth,
            offer.id + " has other differences from its file than are told");
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
        JudgeFile(offer);
        const auto left = Left(offer.copy);
        Require(left != copies_.end(), Rule::Unsaved, offer.id + " is offered and was not left");
        offered.push_back(*left);
        // Which of what it may be it is has been seen.
        if (world_.disk.Certain(offer.id) == world_.disk.Content(offer.id))
            offered.back().versions = {offer.copy};
        copies_.erase(left);
    }
    for (Copy& copy : copies_)
        if (!copy.program && !isAnyHidden && copy.versions.front()) {
            Require(IsSaved(copy), Rule::Unsaved, "an unsaved setup is not offered");
            copy.versions.insert(copy.versions.begin(), std::nullopt);
        }
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
        Drop(*found);
}

// Of those that it may be the one that the fewest others may be.
UnsavedCopies::Found UnsavedCopies::Find(const Copy& copy, std::vector<RecoveryCopy>& there) const
{
    const auto best = std::ranges::min_element(there, {}, [&](const RecoveryCopy& each) {
        const auto mayBe = [&](const Copy& other) { return MayBe(other, each); };
        return std::pair(!mayBe(copy), std::ranges::count_if(copies_, mayBe));
    });
    return best != there.end() && MayBe(copy, *best) ? best : there.end();
}

void UnsavedCopies::EndStep()
{
    std::vector<RecoveryCopy> there;
    for (const std::string& name : world_.disk.List(CopyFolder))
        if (name.ends_with(".copy"))
            if (auto copy = ReadRecoveryCopy(*world_.disk.Content(CopyFolder + ("/" + name))))
                there.push_back(*std::move(copy));
    SortByCertainty();
    std::erase_if(copies_, [&](Copy& copy) {
        const bool isGone = std::exchange(copy.isGone, false) && !world_.IsDead();
        const auto found = isGone ? there.end() : Find(copy, there);
        const bool isThere = found != there.end();
        Require(isThere || !copy.versions.front() || (!copy.program && IsSaved(copy)), Rule::Unsaved,
                "the copy of an unsaved setup is gone");
        if (isThere && world_.WasPowerCut())
            copy.versions = {*found};
        if (isThere)
            there.erase(found);
        return !isThere && !copy.program && (copy.versions.front() || world_.WasPowerCut());
    });
    Require(there.empty(), Rule::Unsaved, "a copy is there that nobody has left");
}

}  // namespace kelvora::simulation
