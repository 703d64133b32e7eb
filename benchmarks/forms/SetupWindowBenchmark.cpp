// How long a technician waits for a setup window to open, and for another one to come to the front.
#include "Workplace.h"
#include "layout/forms/StripView.h"

namespace kelvora {

namespace {

constexpr int ManyWindows = 200;

void OpenSetupWindow(benchmark::State& state)
{
    Workplace place;
    place.Open(static_cast<int>(state.range(0)));
    Times times(state);
    for ([[maybe_unused]] auto iteration : state) {
        Stopwatch watch;
        const AfterPainting<StripView> painted([&watch](StripView& /*strip*/) { watch.Stop(); });
        place.OpenAnother();
        Workplace::Settle();
        times.Take(watch);
        place.window->Actions()[Command::FileMenuClose].trigger();
        Workplace::Settle();
    }
}
BENCHMARK(OpenSetupWindow)->Arg(0)->Arg(ManyWindows)->UseManualTime()->Unit(benchmark::kMillisecond);

enum Arrangement { Maximized, Cascade };

void SwitchSetupWindow(benchmark::State& state)
{
    Workplace place;
    place.Open(static_cast<int>(state.range(1)));
    const bool cascade = state.range(0) == Cascade;
    if (cascade)
        place.window->Actions()[Command::WindowMenuCascade].trigger();
    Workplace::Settle();
    state.SetLabel(cascade ? "cascade" : "maximized");
    Times times(state);
    for ([[maybe_unused]] auto iteration : state) {
        Stopwatch watch;
        const AfterPainting<StripView> painted([&watch](StripView& /*strip*/) { watch.Stop(); });
        place.window->Actions()[Command::WindowMenuNext].trigger();
        Workplace::Settle();
        times.Take(watch);
    }
}
BENCHMARK(SwitchSetupWindow)
    ->ArgsProduct({{Maximized, Cascade}, {2, ManyWindows}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace kelvora
