// Setups and dumps bear the same backup names: "till.dat" and "till.mem" share "till.bak".
#pragma once

#include <string>

#include "platform/Files.h"

namespace kelvora {

/// Whether saving under that name would put a setup's backup in the place of a dump's, or the other way
/// round.
bool ReplacesOtherBackup(const Files& files, const std::string& path);

/// For where nobody can be asked: throws FileError when it does.
void RequireOwnBackup(const Files& files, const std::string& path);

/// RequireOwnBackup, then SaveTextFile of platform/TextFiles.h.
void SaveTextFileUnasked(Files& files, const std::string& path, const std::string& text);

}  // namespace kelvora
