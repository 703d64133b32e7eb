// The two sounds of a verdict, which cannot be taken for each other: two short rising tones, three long deep
// ones.
#pragma once

#include <string>

namespace kelvora {

/// A WAV file's content.
std::string VerdictSound(bool passed);

}  // namespace kelvora
