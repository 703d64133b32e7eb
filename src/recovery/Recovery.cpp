#include "recovery/Recovery.h"

#include <algorithm>
#include <utility>

#include "platform/LocalTime.h"
#include "setup/SetupReader.h"
#include "setup/SetupWriter.h"

namespace kelvora {

namespace {

bool HoldsNothing(const RecoveryCopy& copy)
{
    return copy.path.empty() && copy.setup == WriteSetup({});
}

// The changes were saved before the copy could be taken away.
bool IsSaved(const RecoveryOffer& offer)
{
    return (offer.file == FileSince::Same || offer.file == FileSince::Changed) &&
           WriteSetup(offer.base.Modules) == offer.copy.setup;
}

}  // namespace

void Recovery::Keep(int window, RecoveryCopy copy)
{
    copy.time.clear();
    if (HoldsNothing(copy))
        return;
    if (const auto kept = kept_.find(window); kept != kept_.end() && kept->second == copy)
        return;
    RecoveryCopy dated = copy;
    dated.time = LocalTimeText(LocalTime());
    store_.Keep(window, RecoveryText(dated));
    kept_.insert_or_assign(window, std::move(copy));
}

void Recovery::Drop(int window)
{
    if (kept_.erase(window) != 0)
        store_.Drop(window);
}

void Recovery::DropAll()
{
    while (!kept_.empty())
        Drop(kept_.begin()->first);
}

std::vector<RecoveryOffer> Recovery::Offers()
{
    std::vector<RecoveryOffer> offers;
    for (const LeftCopy& left : store_.Claim()) {
        RecoveryOffer offer = OfferOf(left);
        if (!IsSaved(offer)) {
            offers.push_back(std::move(offer));
            continue;
        }
        try {
            store_.Remove(offer.id);
        } catch (const FileError&) {
            // Nothing is lost with it, and nothing by it: the next start tries again.
        }
    }
    std::ranges::stable_sort(offers, {}, [](const RecoveryOffer& offer) { return offer.copy.time; });
    return offers;
}

RecoveryOffer Recovery::OfferOf(const LeftCopy& left) const
{
    RecoveryOffer offer;
    offer.id = left.id;
    if (!left.error.empty()) {
        offer.damage = RecoveryDamage::Unreadable;
        offer.error = left.error;
        return offer;
    }
    auto copy = ReadRecoveryCopy(left.text);
    auto document = copy ? TryReadSetup(copy->setup) : std::nullopt;
    if (!document) {
        offer.damage = RecoveryDamage::Content;
        return offer;
    }
    offer.copy = *std::move(copy);
    offer.document = *std::move(document);
    LookAtFile(offer);
    offer.differences = CompareSetups(offer.base, offer.document);
    return offer;
}

void Recovery::LookAtFile(RecoveryOffer& offer) const
{
    const std::string& path = offer.copy.path;
    if (path.empty())
        return;
    offer.base = TryReadSetup(offer.copy.saved).value_or(SetupDocument());
    offer.file = files_.Exists(path) ? FileSince::Unreadable : FileSince::Gone;
    try {
        if (auto now = TryReadSetup(files_.Read(path))) {
            offer.file = WriteSetup(now->Modules) == offer.copy.saved ? FileSince::Same : FileSince::Changed;
            offer.base = *std::move(now);
        }
    } catch (const FileError&) {
        // Told by `file`; what it held serves.
    }
}

void Recovery::Take(const RecoveryOffer& offer, int window)
{
    store_.Adopt(offer.id, window);
    RecoveryCopy copy = offer.copy;
    copy.time.clear();
    kept_.insert_or_assign(window, std::move(copy));
}

}  // namespace kelvora
