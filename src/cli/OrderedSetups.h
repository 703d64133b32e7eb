// Setup files worked at on all cores while they are still being found.
#pragma once

#include <cstddef>
#include <istream>
#include <span>
#include <string>
#include <utility>

#include "cli/OrderedWork.h"
#include "cli/SetupNames.h"

namespace kelvora {

/// Puts the files that FindSetups finds into batches of `most` with `add`, and has them worked at as
/// RunOrdered does. A batch is passed on as it is when the next name may be long in coming.
template <class Batch, class Add, class Work, class Take>
void RunOrderedSetups(std::span<const std::string> names, std::istream& in, char separator, std::size_t most,
                      Add add, Work work, Take take)
{
    const auto make = [&](OrderedBatches<Batch>& batches) {
        Batch* batch = nullptr;
        std::size_t count = 0;
        const auto pass = [&] {
            if (std::exchange(batch, nullptr))
                batches.Pass();
            count = 0;
        };
        const auto takeName = [&](FoundName name) {
            if (!batch) {
                batch = batches.Fill();
                if (!batch)
                    return false;
                batch->clear();
            }
            add(*batch, std::move(name));
            if (++count == most)
                pass();
            return true;
        };
        FindSetups(names, in, separator, {takeName, pass});
        pass();
    };
    RunOrdered<Batch>(make, work, take);
}

}  // namespace kelvora
