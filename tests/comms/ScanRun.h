// A scan of a simulated line, and what came of it.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "comms/LineCommands.h"
#include "comms/LineDrivers.h"
#include "comms/LinkFrame.h"
#include "fakes/BenchLine.h"

namespace kelvora {

using Preparation = std::function<void(FakeEventLoop&, BenchLine&)>;

struct ScanRun {
    LineResult result;
    bool isHeld = false;               ///< by the terminal, at the end
    EventLoop::Time::duration time{};  ///< of all the work
    std::string sent;                  ///< each command as often as it was sent, a blank before each
    std::string flash;                 ///< of the device
};

/// Leaves the line in POS mode. `prepare` may be empty; it makes the line its own.
inline ScanRun Scan(const bench::LineOptions& options, const Preparation& prepare,
                    const LineTarget& target = {1, "9600,n,8,1", 0}, const LineHooks& hooks = {})
{
    constexpr std::size_t BodyAt = 5;
    FakeEventLoop loop;
    BenchLine bench(loop, options);
    ScanRun run;
    bench.link.watcher = [&](const LineTraffic& traffic) {
        if (traffic.direction == LineTraffic::Direction::Sent)
            run.sent += " " + std::string(traffic.bytes.substr(BodyAt, traffic.bytes.size() - FrameOverhead));
    };
    Comms comms(loop, {&bench.link, nullptr, nullptr, nullptr});
    if (prepare)
        prepare(loop, bench);
    run.result = ScanWithUpload(comms, target, hooks, LineMode::Pos);
    run.time = loop.Now() - EventLoop::Time();
    run.flash = bench.Flash();
    // What is still under way when the port is closed reaches nobody.
    run.isHeld = bench.line.IsHeld();
    EXPECT_FALSE(bench.port.IsOpen());
    return run;
}

inline Preparation Answers(const char* name, const std::string& body)
{
    return [=](FakeEventLoop&, BenchLine& bench) { bench.line.Terminal().AnswerNext(name, body); };
}

}  // namespace kelvora
