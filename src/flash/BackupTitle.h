// The title of a dump's device map dump: where and when its image was read or made.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace kelvora {

/// Where and when a dump was made.
struct BackupOrigin {
    int port = 1;  ///< COM1 = 1; 0 for none
    std::chrono::local_seconds time{};

    friend bool operator==(const BackupOrigin&, const BackupOrigin&) = default;
};

/// The title of that dump: "COM1, 2026-03-09 07:05:00", the time alone without a port.
std::string BackupTitle(const BackupOrigin& origin);

/// What a dump's title says; nothing for a title of another form.
std::optional<BackupOrigin> OriginOf(std::string_view title);

}  // namespace kelvora
