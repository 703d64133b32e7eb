// Text files that keep what they held before.
#pragma once

#include <string>
#include <string_view>

#include "platform/Files.h"

namespace kelvora {

/// Where the previous content of `path` is kept: the path up to the last "." of its file name, and ".bak".
std::string BackupName(const std::string& path);

/// What stands after the text of a saved file.
inline constexpr std::string_view SavedFileEnd = "\r\n";

/// Copies an existing file to its backup name, then makes `text` and SavedFileEnd its content. Throws
/// FileError; the file is then as it was. The error names the path that is wrong, and tells when that is the
/// backup's.
void SaveTextFile(Files& files, const std::string& path, const std::string& text);

}  // namespace kelvora
