// What a start does with a message file: load it and look up the captions of every window.

#include <benchmark/benchmark.h>

#include "catalogue/MessageCatalogue.h"
#include "platform/posix/PosixFiles.h"

namespace {

using namespace kelvora;

constexpr int Lookups = 200;

void LoadCatalogueAndLookUp(benchmark::State& state)
{
    const std::string text = PosixFiles().Read(KELVORA_PROGRAM_FOLDER "/ZelENG.mes");
    for ([[maybe_unused]] const auto pass : state) {
        const MessageCatalogue catalogue(text, "ENG");
        for (int lookup = 0; lookup < Lookups; ++lookup)
            benchmark::DoNotOptimize(catalogue.Lookup(static_cast<std::int16_t>(300 + lookup * 2)));
    }
    state.SetItemsProcessed(state.iterations() * Lookups);
}
BENCHMARK(LoadCatalogueAndLookUp);

}  // namespace
