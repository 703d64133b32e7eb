// Reading and writing a whole setup in memory, beside two readers of INI files, and reading input that was
// made to take long.

#include <SimpleIni.h>
#include <benchmark/benchmark.h>
#include <ini.h>

#include <array>

#include "Allocations.h"
#include "Samples.h"
#include "setup/SetupError.h"
#include "setup/SetupReader.h"
#include "setup/SetupWriter.h"

namespace {

using namespace kelvora;

void ReportSpeed(benchmark::State& state, std::string_view text, std::size_t allocationsBefore)
{
    const double lines = static_cast<double>(state.iterations()) * static_cast<double>(CountLines(text));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    state.counters["allocations/line"] = static_cast<double>(Allocations() - allocationsBefore) / lines;
}

void ReadSetupFromMemory(benchmark::State& state)
{
    const std::string text = FullSetup();
    const std::size_t before = Allocations();
    for ([[maybe_unused]] const auto pass : state) {
        SetupDocument document = ReadSetup(text);
        benchmark::DoNotOptimize(document);
    }
    ReportSpeed(state, text, before);
    if (state.counters["allocations/line"] > 1)
        state.SkipWithError("more than one allocation a line");
}
BENCHMARK(ReadSetupFromMemory);

void ReadWithSimpleIni(benchmark::State& state)
{
    const std::string text = FullSetupAsIni();
    const std::size_t before = Allocations();
    for ([[maybe_unused]] const auto pass : state) {
        CSimpleIniA ini;
        if (ini.LoadData(text) != SI_OK || ini.GetSectionSize("KM064") != 8)
            state.SkipWithError("not read");
    }
    ReportSpeed(state, text, before);
}
BENCHMARK(ReadWithSimpleIni);

// A handler that keeps nothing: what the lines mean is left to its user.
int CountValue(void* count, const char* section, const char* name, const char* value)
{
    benchmark::DoNotOptimize(section);
    benchmark::DoNotOptimize(name);
    benchmark::DoNotOptimize(value);
    ++*static_cast<std::size_t*>(count);
    return 1;
}

void ReadWithInih(benchmark::State& state)
{
    const std::string text = FullSetupAsIni();
    const std::size_t before = Allocations();
    const std::size_t values = CountIniValues();
    for ([[maybe_unused]] const auto pass : state) {
        std::size_t count = 0;
        if (ini_parse_string(text.c_str(), CountValue, &count) != 0 || count != values)
            state.SkipWithError("not read");
    }
    ReportSpeed(state, text, before);
}
BENCHMARK(ReadWithInih);

void WriteSetupToMemory(benchmark::State& state)
{
    const std::string text = FullSetup();
    const SetupDocument document = ReadSetup(text);
    const std::size_t before = Allocations();
    for ([[maybe_unused]] const auto pass : state)
        benchmark::DoNotOptimize(WriteSetup(document.Modules));
    ReportSpeed(state, text, before);
}
BENCHMARK(WriteSetupToMemory);

struct Endless {
    const char* name;
    std::string_view unit;
};

constexpr std::array EndlessInputs{
    Endless{"one line", "A"},        Endless{"blanks", " "},
    Endless{"heads opened", "["},    Endless{"equals", "="},
    Endless{"tabs", "\t"},           Endless{"empty lines", "\r\n"},
    Endless{"comments", "'\n"},      Endless{"continued letters", "S _\n"},
    Endless{"other heads", "[x]\n"}, Endless{"general keys", "VERSION=\n"},
};

void ReadEndlessInput(benchmark::State& state)
{
    const Endless& input = EndlessInputs.at(static_cast<std::size_t>(state.range(0)));
    const auto size = static_cast<std::size_t>(state.range(1)) << 20U;
    std::string text;
    while (text.size() < size)
        text += input.unit;
    for ([[maybe_unused]] const auto pass : state) {
        try {
            benchmark::DoNotOptimize(ReadSetup(text));
        } catch (const SetupError& error) {
            benchmark::DoNotOptimize(error.Line());
        }
    }
    state.SetLabel(input.name);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
    state.SetComplexityN(state.range(1));
}

// One family of sizes for each kind of input, so that each gets its own complexity.
const bool registered = [] {
    for (std::size_t input = 0; input < EndlessInputs.size(); ++input)
        benchmark::RegisterBenchmark(
            (std::string("ReadEndlessInput ") + EndlessInputs.at(input).name).c_str(), ReadEndlessInput)
            ->Args({static_cast<std::int64_t>(input), 8})
            ->Args({static_cast<std::int64_t>(input), 16})
            ->Args({static_cast<std::int64_t>(input), 32})
            ->Unit(benchmark::kMillisecond)
            ->Complexity(benchmark::oN);
    return true;
}();

}  // namespace
