// What the journal keeps of one operation on a device: when, who, where, what, and what came of it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kelvora {

/// All texts are UTF-8; what is not known is empty.
struct JournalEntry {
    enum class Result {
        Done,
        Same,       ///< the device held what was wanted: nothing was written
        Different,  ///< a verify has found differences
        Declined,   ///< the question was answered No
        Stopped,    ///< by the user
        Failed,
        Last = Failed,
    };

    std::string time;  ///< of its beginning, as ZonedTimeText
    std::string who;   ///< the user's account
    std::string program;
    std::string version;
    std::string operation;                   ///< one of JournalOperation
    int line = 0;                            ///< 1 to 4
    std::string device;                      ///< behind the line
    std::string terminal;                    ///< what it calls itself
    std::string modules;                     ///< names of their kinds, in line order: "KM096, MCR"
    std::string file;                        ///< the setup, or the dump
    std::string sha256;                      ///< of that file's content
    std::optional<std::uint32_t> crcBefore;  ///< CRC-32 of the device's image
    std::optional<std::uint32_t> crcAfter;
    Result result = Result::Failed;
    std::string message;  ///< what happened, in English
    std::string backup;   ///< path of what was kept
    double seconds = 0;

    /// Whether somebody should look at it: what the user did not want is none.
    bool IsFailure() const
    {
        return result == Result::Failed || result == Result::Different || result == Result::Stopped;
    }

    friend bool operator==(const JournalEntry&, const JournalEntry&) = default;
};

/// What is done with a device, as the journal calls it.
namespace JournalOperation {
inline constexpr const char* Scan = "scan";
inline constexpr const char* Download = "download";
inline constexpr const char* Verify = "verify";
inline constexpr const char* Dump = "dump";
inline constexpr const char* Restore = "restore";
inline constexpr const char* ReadIdentities = "identity read";
inline constexpr const char* WriteIdentities = "identity write";
inline constexpr const char* RestoreIdentities = "identity restore";
}  // namespace JournalOperation

}  // namespace kelvora
