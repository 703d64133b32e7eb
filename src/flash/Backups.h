// The dated backups of device images: one dump text a file in one folder, which says at its head what it is,
// as flash/DumpHead.h and flash/BackupTitle.h tell it.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "flash/BackupTitle.h"
#include "flash/DumpSource.h"
#include "platform/Files.h"
#include "platform/LocalTime.h"

namespace kelvora {

/// One file of the folder. Damaged ones are told of, never removed.
struct BackupEntry {
    std::string path;
    std::string name;                    ///< of the file alone
    std::optional<BackupOrigin> origin;  ///< nothing for a dump without such a title
    std::optional<DumpKind> kind;        ///< nothing when not told
    std::string modules;                 ///< device codes of the line that it is for; empty when not told
    std::string terminal;                ///< the name of that line's terminal; empty when not told
    std::optional<DumpError> damage;     ///< why the text is no dump
    std::string readError;               ///< why it cannot be read: the system's words

    /// Whether it is an image.
    bool IsWhole() const { return !damage && readError.empty(); }
};

/// Where they are, in the folder of the person's data.
std::string BackupFolder(const std::string& dataFolder);

class Backups {
public:
    using Clock = std::function<std::chrono::local_seconds()>;

    /// `folder` need not exist yet. `files` outlives the object; `clock` gives the local time.
    Backups(Files& files, std::string folder, Clock clock = LocalTime);

    /// A device's image, and the line that it was read from.
    struct Held {
        int port = 1;  ///< COM1 = 1
        std::string_view deviceMap;
        std::string_view terminal;
        const FlashImage& image;
    };

    /// The path of the file that keeps that image: the port's newest backup where that is the same image of
    /// the same line, else a new one. Nothing that is there is written over. Throws FileError.
    std::string Keep(const Held& held);

    /// The folder's dumps (".mem"), the newest first, those without a date last; empty when there is no
    /// folder. Throws FileError when the folder cannot be read.
    std::vector<BackupEntry> List() const;

    /// Throws FileError, DumpError.
    FlashDump Read(const std::string& path) const;

    const std::string& Folder() const { return folder_; }

private:
    std::optional<std::string> Kept(const Held& held) const;

    Files& files_;
    std::string folder_;
    Clock clock_;
};

}  // namespace kelvora
