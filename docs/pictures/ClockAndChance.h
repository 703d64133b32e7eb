// The machine's clock and chance as the program finds them in the pictures: the same windows give the same
// pictures.
#pragma once

#include <chrono>

namespace kelvora {

/// From now on the clock shows 2026-03-09 07:05:00 UTC and the time that has passed since. At the start none
/// has.
void SetPictureClock(std::chrono::steady_clock::duration passed);

}  // namespace kelvora
