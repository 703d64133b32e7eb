// How texts and files go to the program that makes pictures, and come back: records of one or more parts.
//   "<length>[ <length>...]" LF, then the parts, one after the other          lengths in decimal
// To it go drawings, the pages of one picture in a record; from it come pictures, each a record of one part,
// empty where it could not be made.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kelvora {

std::string PictureRecord(std::span<const std::string> parts);

/// The first record of `rest`, which loses it; nothing for what is not a whole record.
std::optional<std::vector<std::string>> TakePictureRecord(std::string_view& rest);

}  // namespace kelvora
