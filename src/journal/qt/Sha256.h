// The SHA-256 of a file's content, as `sha256sum` prints it.
#pragma once

#include <string>
#include <string_view>

namespace kelvora {

std::string Sha256(std::string_view content);

}  // namespace kelvora
