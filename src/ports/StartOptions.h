// The options with which the program is started, beside help and version: its command line is read by this
// table, and its manual page and completions are made from it.
#pragma once

#include <array>
#include <string_view>

namespace kelvora {

struct StartOption {
    std::string_view name;   ///< without its dashes
    std::string_view value;  ///< what stands for the value in the help; empty for an option without one
    std::string_view help;   ///< a sentence without its full stop
};

/// What the program says of itself and of its arguments.
inline constexpr std::string_view StartSummary = "Sets up the keyboard devices of a point-of-sale terminal";
inline constexpr std::string_view StartFilesHelp = "Setup files to open";

namespace StartOptions {
inline constexpr StartOption Line{
    "line", "N=PORT",
    "What stands behind a line: a device, such as 1=/dev/ttyUSB0, a device server, such as 1=tcp:HOST:PORT, "
    "or a bridge, such as 1=bridge:HOST:PORT"};
inline constexpr StartOption Bench{"bench", "", "Talk to simulated devices on COM1 and COM2"};
inline constexpr StartOption BenchState{
    "bench-state", "FILE", "File in which the simulated devices keep their memory; brings --bench along"};

inline constexpr std::array All{Line, Bench, BenchState};
}  // namespace StartOptions

}  // namespace kelvora
