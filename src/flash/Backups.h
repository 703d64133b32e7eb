// The dated backups of device images: one dump text a file in one folder, led by a device map dump with port
// and time, as flash/DumpText.h and flash/BackupTitle.h tell it.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "flash/BackupTitle.h"
#include "flash/DumpText.h"
#include "platform/Files.h"
#include "platform/LocalTime.h"

namespace kelvora {

/// One file of the folder. Damaged ones are told of, never removed.
struct BackupEntry {
    std::string path;
    std::string name;                    ///< of the file alone
    std::optional<BackupOrigin> origin;  ///< nothing for a dump without a backup's title
    std::string modules;                 ///< device codes of the line that it is for; empty when not told
    std::optional<DumpError> damage;     ///< why the text is no dump
    std::string readError;               ///< why it cannot be read: the system's words

    /// Whether it is an image.
    bool IsWhole() const { return !damage && readError.empty(); }
    /// Whether it can be restored: a dump that names no modules is for no line.
    bool IsForALine() const { return IsWhole() && !modules.empty(); }
};

class Backups {
public:
    using Clock = std::function<std::chrono::local_seconds()>;

    /// `folder` need not exist yet. `files` outlives the object; `clock` gives the local time.
    Backups(Files& files, std::string folder, Clock clock = LocalTime);

    /// Writes a new file and returns its path; nothing that is there is written over. Throws FileError.
    std::string Save(int port, std::string_view deviceMap, const FlashImage& image);

    /// The folder's dumps (".mem"), the newest first, those without a date last; empty when there is no
    /// folder. Throws FileError when the folder cannot be read.
    std::vector<BackupEntry> List() const;

    /// Throws FileError, DumpError.
    FlashDump Read(const std::string& path) const;

    const std::string& Folder() const { return folder_; }

private:
    Files& files_;
    std::string folder_;
    Clock clock_;
};

}  // namespace kelvora
