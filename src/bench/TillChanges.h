// Tills that come to a line and go again while it is played.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/FreshLine.h"
#include "bench/LineClock.h"
#include "bench/LineFaults.h"
#include "bench/TerminalCommands.h"

namespace kelvora::bench {

/// One till: a terminal and what hangs on it.
struct Till {
    std::vector<Module> modules{Module::KM096, Module::KM064, Module::MCR123, Module::ICCR};
    std::string name{DefaultTerminalName};
    std::string statePath{};  ///< of the file that keeps its memory; empty for none
    FaultPlan faults{};       ///< its seed also makes the fresh flash image
};

struct TillEvent {
    enum class From {
        Start,        ///< of the bench
        EventBefore,  ///< on the same line; the start where there is none
        LastCommand,  ///< after that event, but for `$9900`; never without one
    };

    From from = From::Start;
    std::chrono::milliseconds time{0};  ///< since then
    std::optional<Till> till{};         ///< that comes; nothing when the one that is there goes
};

/// Lets the events of one line happen, one after another.
class TillChanges {
public:
    /// `clock` outlives this. `happen` may throw nothing.
    TillChanges(LineClock& clock, std::vector<TillEvent> events,
                std::function<void(const TillEvent&)> happen);

    /// The terminal has heard a command.
    void Hear(std::string_view command);

private:
    void Expect();

    LineClock& clock_;
    std::vector<TillEvent> events_;
    std::function<void(const TillEvent&)> happen_;
    LineClock::Time start_;
    std::size_t next_ = 0;
    Appointment appointment_;
};

}  // namespace kelvora::bench
