// Text files that keep what they held before.
#pragma once

#include <string>

#include "platform/Files.h"

namespace kelvora {

/// Where the previous content of `path` is kept: the path up to the last "." of its file name, and ".bak".
std::string BackupName(const std::string& path);

/// Copies an existing file to its backup name, then makes `text` and a CR LF its content. Throws FileError;
/// the file is then as it was. The error names the path that is wrong, and tells when that is the backup's.
void SaveTextFile(Files& files, const std::string& path, const std::string& text);

}  // namespace kelvora
