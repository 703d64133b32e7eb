// How the "Y" cable joins a keyboard, a PC and the power supply while identities are rewritten, and which
// cable is unplugged for that.
#pragma once

#include <string>
#include <string_view>

#include "catalogue/MessageCatalogue.h"

namespace kelvora {

/// In twips: how wide it is, and how large its words are.
inline constexpr int CablePictureWidth = 8100;
inline constexpr int CableWordSize = 240;

/// The drawing as an SVG document. `ink` is the SVG colour of lines and words, which stands out from what the
/// drawing is shown on.
std::string CablePicture(const MessageCatalogue& catalogue, std::string_view ink);

}  // namespace kelvora
