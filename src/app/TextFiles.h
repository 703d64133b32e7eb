// Whole text files, read and written with a message when that fails.
#pragma once

#include <optional>
#include <string>

#include "app/Program.h"
#include "platform/Files.h"

namespace kelvora {

/// Where the previous content of `path` is kept: the path up to the last "." of its file name, and ".bak".
std::string BackupName(const std::string& path);

/// The whole text of a file; nothing, after a message box, when it cannot be read.
std::optional<std::string> ReadTextFile(const Program& program, const std::string& path);

/// Whether saving under that name would put a setup's backup in the place of a dump's, or the other way
/// round: "till.dat" and "till.mem" share the name "till.bak".
bool ReplacesOtherBackup(const Files& files, const std::string& path);

/// For where nobody can be asked: throws FileError when it does.
void RequireOwnBackup(const Files& files, const std::string& path);

/// Copies an existing file to its backup name, then makes `text` and a CR LF its content. Throws FileError;
/// the file is then as it was. The error names the path that is wrong, and tells when that is the backup's.
void SaveTextFile(Files& files, const std::string& path, const std::string& text);

/// RequireOwnBackup, then SaveTextFile.
void SaveTextFileUnasked(Files& files, const std::string& path, const std::string& text);

/// SaveTextFile, with a message box when it fails. Returns whether the file was written.
bool WriteTextFileWithBackup(Program& program, const std::string& path, const std::string& text);

}  // namespace kelvora
