#include "bench/posix/FaultOptions.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <chrono>
#include <utility>

namespace kelvora::bench {

namespace {

/// The longest that an answer can be late, and the longest between two stray bytes.
constexpr int LongestTimeMs = 60'000;

constexpr std::size_t LongestStatus = 3;

[[noreturn]] void RefuseFault(const std::string& option, const std::string& complaint)
{
    throw CLI::ValidationError(option, complaint);
}

/// A fault from "COMMAND#N=VALUE"; the value is given back.
std::string ParseFault(const std::string& option, const std::string& text, CommandFault& fault)
{
    const std::size_t equals = text.find('=');
    const bool hasValue = equals != std::string::npos;
    const bool wantsValue =
        fault.kind == CommandFault::Kind::Late || fault.kind == CommandFault::Kind::Status;
    if (hasValue != wantsValue)
        RefuseFault(option, "\"" + text + "\" is not " + (hasValue ? "COMMAND" : "COMMAND=VALUE"));
    fault.command = text.substr(0, equals);
    if (const std::size_t mark = fault.command.find('#'); mark != std::string::npos) {
        if (!CLI::detail::lexical_cast(fault.command.substr(mark + 1), fault.number) || fault.number == 0)
            RefuseFault(option, "\"" + text + "\": a number from 1 on belongs behind #");
        fault.command.resize(mark);
    }
    if (!IsCommandName(fault.command))
        RefuseFault(option, "no command of the terminal is named \"" + fault.command + "\"");
    return hasValue ? text.substr(equals + 1) : std::string();
}

void TakeTime(const std::string& option, const std::string& value, CommandFault& fault)
{
    int time = 0;
    if (!CLI::detail::lexical_cast(value, time) || time < 0 || time > LongestTimeMs)
        RefuseFault(option, "\"" + value + "\" is not a time from 0 to 60000 ms");
    fault.late = std::chrono::milliseconds(time);
}

void TakeStatus(const std::string& option, const std::string& value, CommandFault& fault)
{
    const bool isStatus = !value.empty() && value.size() <= LongestStatus &&
                          std::ranges::all_of(value, [](unsigned char c) { return std::isdigit(c) != 0; });
    if (!isStatus || value == "0")
        RefuseFault(option, "\"" + value + "\" is not a status other than 0, such as 2 or 999");
    fault.status = value;
}

void TakeNothing(const std::string& /*option*/, const std::string& /*value*/, CommandFault& /*fault*/) {}

/// An option that may be given many times, for a command each; `take` puts its value into the fault.
void AddCommandOption(CLI::App& app, FaultPlan& faults, CommandFault::Kind kind, const std::string& name,
                      const std::string& value,
                      void (*take)(const std::string& option, const std::string& value, CommandFault& fault),
                      const std::string& description)
{
    app.add_option_function<std::vector<std::string>>(
           name,
           [=, &faults](const std::vector<std::string>& texts) {
               for (const std::string& text : texts) {
                   CommandFault fault{.kind = kind, .command = {}};
                   take(name, ParseFault(name, text, fault), fault);
                   faults.commands.push_back(std::move(fault));
               }
           },
           description)
        ->allow_extra_args(false)
        ->type_name(value);
}

}  // namespace

void AddFaultOptions(CLI::App& app, FaultPlan& faults)
{
    using Kind = CommandFault::Kind;
    const CLI::Range chance(0.0, 1.0);
    app.add_option("--seed", faults.seed, "What noise and fresh flash images are made from")->type_name("N");
    app.add_option("--drop", faults.drop, "Chance that a byte is lost")->check(chance)->type_name("P");
    app.add_option("--flip", faults.flip, "Chance that one bit of a byte is wrong")
        ->check(chance)
        ->type_name("P");
    app.add_option("--duplicate", faults.duplicate, "Chance that a byte comes twice")
        ->check(chance)
        ->type_name("P");
    app.add_option_function<int>(
           "--delay", [&faults](int time) { faults.delay = std::chrono::milliseconds(time); },
           "How late every answer begins")
        ->check(CLI::Range(0, LongestTimeMs))
        ->type_name("MS");
    AddCommandOption(app, faults, Kind::Late, "--late", "COMMAND=MS", TakeTime,
                     "How late the answer to a command begins");
    AddCommandOption(app, faults, Kind::WrongReply, "--wrong-reply", "COMMAND", TakeNothing,
                     "Answer a command with the reply to another");
    AddCommandOption(app, faults, Kind::Status, "--status", "COMMAND=STATUS", TakeStatus,
                     "Refuse a command with a status, such as 2");
    app.add_option_function<int>(
           "--stray", [&faults](int time) { faults.stray = std::chrono::milliseconds(time); },
           "One stray byte to the program every so long, once it has spoken")
        ->check(CLI::Range(1, LongestTimeMs))
        ->type_name("MS");
    app.add_option("--nak", faults.naks, "How many frames are refused at first")->type_name("N");
    app.add_option("--wrong-lrc", faults.wrongLrcs, "How many replies of modules bear a wrong LRC at first")
        ->type_name("N");
    app.add_option("--wrong-length", faults.wrongLengths, "How many, after those, bear a wrong length")
        ->type_name("N");
    app.add_option("--silent-after", faults.silentAfter.toHost, "Go silent when N bytes have been answered")
        ->type_name("N");
    AddCommandOption(app, faults, Kind::Silent, "--silent-at", "COMMAND", TakeNothing,
                     "Go silent when a command comes, which is not run");
    app.add_option("--away-after", faults.awayAfter.toHost,
                   "Take the device away when N bytes have been answered")
        ->type_name("N");
}

void CheckFaults(const FaultPlan& faults)
{
    // Three thirds are not quite 1.
    constexpr double Slack = 1e-9;
    if (faults.drop + faults.flip + faults.duplicate > 1 + Slack)
        throw CLI::ValidationError("--drop, --flip, --duplicate", "the chances are over 1 together");
}

}  // namespace kelvora::bench
