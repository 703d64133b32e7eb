// The title of a backup's device map dump: where and when the image was read.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace kelvora {

/// Where and when a backup was made.
struct BackupOrigin {
    int port = 1;  ///< COM1 = 1
    std::chrono::local_seconds time{};

    friend bool operator==(const BackupOrigin&, const BackupOrigin&) = default;
};

/// The title of that backup: "COM1, 2026-03-09 07:05:00".
std::string BackupTitle(const BackupOrigin& origin);

/// What a backup's title says; nothing for a title of another form.
std::optional<BackupOrigin> OriginOf(std::string_view title);

}  // namespace kelvora
