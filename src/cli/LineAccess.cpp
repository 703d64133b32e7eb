#include "cli/LineAccess.h"

#include <CLI/CLI.hpp>

#include "platform/SerialSettings.h"
#include "ports/PortNames.h"

namespace kelvora {

namespace {

constexpr int LongestTimeout = 3600;

std::string CheckSettings(const std::string& text)
{
    const auto settings = ParseSerialSettings(text);
    return settings && settings->dataBits == 8 ? std::string()
                                               : "expected settings with 8 data bits, such as 9600,n,8,1";
}

std::string CheckLine(const std::string& text)
{
    try {
        ParseLineArgument(text);
        return {};
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
}

}  // namespace

LineTarget LineOptions::Target() const
{
    return {port, settings, timeout * 1000};
}

void AddLineOptions(CLI::App& command, LineOptions& options)
{
    command.add_option("--port", options.port, "Number of the line, 1 to 4 for COM1 to COM4; 1 unless told")
        ->type_name("N")
        ->check(CLI::Range(1, LineCount));
    command
        .add_option("--settings", options.settings,
                    "Speed, parity, data bits and stop bits of the line; 9600,n,8,1 unless told")
        ->type_name("TEXT")
        ->check(CheckSettings);
    command
        .add_option("--line", options.lines,
                    "What stands behind a line: a device, such as 1=/dev/ttyUSB0, a device server, such as "
                    "1=tcp:HOST:PORT, or a bridge, such as 1=bridge:HOST:PORT")
        ->type_name("N=PORT")
        ->allow_extra_args(false)
        ->check(CheckLine);
    command.add_flag("--bench", options.bench, "Talk to simulated devices on COM1 and COM2");
    command
        .add_option("--bench-state", options.benchState,
                    "File in which the simulated devices keep their memory; brings --bench along")
        ->type_name("FILE");
    command
        .add_option("--timeout", options.timeout,
                    "Seconds that one answer may take; as long as the line needs unless told")
        ->type_name("S")
        ->check(CLI::Range(1, LongestTimeout));
    command.add_flag("--json", options.json, "Print the result as an object on one line");
}

}  // namespace kelvora
