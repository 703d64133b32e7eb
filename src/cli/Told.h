// What a command tells of one file among many. The files are worked at on all cores and told of in order.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Console.h"
#include "cli/OrderedWork.h"
#include "cli/Verdict.h"

namespace kelvora {

struct Told {
    std::string out{}, err{};
    int exitCode = ExitCode::Done;
};

/// Of a file by its verdict: why nothing comes of it, and that as an object where `json` is set.
Told ToldOf(const std::string& path, const Verdict& verdict, bool json);

/// Prints what `work` tells of each of `items`, in their order, with `between` where something was printed
/// before. Returns the greatest exit code. Throws OutputError.
template <class Item, class Work>
int TellInOrder(const std::vector<Item>& items, Work work, Console& console, std::string_view between = {})
{
    int exitCode = ExitCode::Done;
    bool isFirst = true;
    RunOrderedOn<Told>(items, work, [&](const Told& told) {
        console.err << told.err;
        exitCode = std::max(exitCode, told.exitCode);
        if (told.out.empty())
            return;
        Emit(console, std::string(isFirst ? "" : between) + told.out);
        isFirst = false;
    });
    return exitCode;
}

}  // namespace kelvora
