// A copy of a setup with unsaved changes, kept for the case that the program dies, and the text of its file:
//
//   Kelvora recovery 1
//   time 19:2026-03-09 07:05:00      when it was made, on this machine's clock
//   name 4:till                      what the window is called
//   path 12:/t/Till.dat              of the setup's file; empty where it has none yet
//   saved 41:...                     the setup as that file held it, as the program writes it
//   setup 63:...                     the setup with its changes, in the same way
//   crc 8:1F2E3D4C                   CRC-32 of all before this line
//
// In front of each value stands its length in bytes: it may hold anything. Lines end in a line feed.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kelvora {

struct RecoveryCopy {
    std::string time;
    std::string name;
    std::string path;
    std::string saved;
    std::string setup;

    friend bool operator==(const RecoveryCopy&, const RecoveryCopy&) = default;
};

std::string RecoveryText(const RecoveryCopy& copy);

/// Nothing for a text that is damaged, or no copy at all.
std::optional<RecoveryCopy> ReadRecoveryCopy(std::string_view text);

}  // namespace kelvora
