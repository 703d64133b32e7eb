// What goes wrong on a simulated line. Noise comes from a seed, which means the same on every machine; cuts
// come after an exact number of bytes.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "bench/CommandFaults.h"

namespace kelvora::bench {

enum class Direction { ToDevice, ToHost };

/// After how many bytes, from the plan's begin on, that byte being the last one heard.
struct LineCut {
    std::optional<std::uint64_t> toDevice{};
    std::optional<std::uint64_t> toHost{};
};

struct FaultPlan {
    std::uint64_t seed = 1;
    // Chances per byte, 0 to 1, their sum at most 1; in either direction.
    double drop = 0;
    double flip = 0;  ///< one bit of the byte
    double duplicate = 0;
    std::chrono::milliseconds delay{0};  ///< how late every answer of a device begins
    std::chrono::milliseconds stray{0};  ///< how often a stray byte reaches the host; 0 for never
    std::vector<CommandFault> commands{};
    unsigned naks = 0;          ///< how many frames are refused, whatever they hold
    unsigned wrongLrcs = 0;     ///< how many replies of modules bear a wrong LRC
    unsigned wrongLengths = 0;  ///< how many, after those, a wrong length
    LineCut silentAfter{};      ///< from then on nothing passes in either direction
    LineCut awayAfter{};        ///< from then on the port is gone
};

class LineFaults {
public:
    explicit LineFaults(const FaultPlan& plan);

    /// The bytes as noise leaves them.
    std::string Distort(Direction direction, std::string_view bytes);

    /// Counts bytes that arrive and returns how many of them still do before the line is cut.
    std::size_t Pass(Direction direction, std::size_t bytes);
    /// Bytes that have arrived.
    std::uint64_t Passed(Direction direction) const { return WayOf(direction).passed; }

    bool IsAway() const { return isAway_; }

    /// Whether the frame at hand is one of those to refuse; counts it.
    bool TakeNak();
    /// A module's reply, spoilt when it is one of those to spoil; counts it.
    std::string Spoil(std::string frame);
    std::chrono::milliseconds Delay() const { return plan_.delay; }
    /// How late the answer to a command of the terminal begins; counts it.
    std::chrono::milliseconds TakeDelay(std::string_view command);
    /// Whether the answer to a command is that to another one; counts it.
    bool TakeWrongReply(std::string_view command);
    /// The status that a command is refused with, empty where it is run; counts it.
    std::string TakeStatus(std::string_view command);

    /// Whether the line goes silent at a command; counts it.
    bool TakeSilence(std::string_view command);

    std::chrono::milliseconds StrayInterval() const { return plan_.stray; }
    /// The next stray byte.
    char Stray() { return static_cast<char>(stray_() & 0xFFU); }

private:
    struct Way {
        std::mt19937_64 noise;
        std::uint64_t passed = 0;
        std::optional<std::uint64_t> silentAfter;
        std::optional<std::uint64_t> awayAfter;
    };

    Way& WayOf(Direction direction) { return ways_[direction == Direction::ToHost ? 1 : 0]; }
    const Way& WayOf(Direction direction) const { return ways_[direction == Direction::ToHost ? 1 : 0]; }

    FaultPlan plan_;
    CommandFaults commands_;
    std::mt19937_64 stray_;
    std::array<Way, 2> ways_;
    bool isSilent_ = false;
    bool isAway_ = false;
};

}  // namespace kelvora::bench
