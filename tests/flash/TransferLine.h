// A simulated line to download into, with what the user answers and what was kept.
#pragma once

#include <functional>
#include <vector>

#include "fakes/BenchLine.h"
#include "fakes/FakeFiles.h"
#include "flash/Backups.h"
#include "flash/FlashTransfer.h"
#include "flash/Images.h"
#include "flash/TakeFromImage.h"

namespace kelvora {

inline bench::LineOptions Unpaced()
{
    bench::LineOptions options;
    options.isPaced = false;
    return options;
}

struct TransferLine {
    explicit TransferLine(const bench::LineOptions& options = Unpaced()) : bench(loop, options)
    {
        bench.link.watcher = [this](const LineTraffic& traffic) {
            if (traffic.direction != LineTraffic::Direction::Sent)
                return;
            sent.push_back(std::string(traffic.bytes.substr(5, traffic.bytes.size() - 10)));
            if (onSent)
                onSent(sent.back());
        };
    }

    FlashImage Flash() const { return *ImageFrom(bench.Flash()); }

    /// The setup of the line as it is.
    SetupDocument Setup() const
    {
        return TakeFromImage(ReadDeviceMap(std::string(WholeChain)), Flash()).document;
    }

    /// That setup with two keys in blocks of their own, and an option, as they are not in the device.
    SetupDocument OtherSetup() const
    {
        SetupDocument document = Setup();
        Module(document, ModuleKind::KM096).KeyMap[1] = '0';
        Module(document, ModuleKind::KM064).KeyMap[7] = '0';
        Module(document, ModuleKind::MCR).Options[5] = ';';
        return document;
    }

    TransferResult Run(const WantedContent& wanted)
    {
        const TransferSteps steps{[this](const TransferPlan& plan) {
                                      return backups.Keep({1, plan.deviceMap, plan.terminal, plan.held});
                                  },
                                  [this](const TransferPlan& plan, const std::string& /*backup*/) {
                                      asked.push_back(plan);
                                      sent.push_back("?");
                                      EXPECT_FALSE(bench.port.IsOpen())
                                          << "the line is held while the user thinks";
                                      if (whileAsked)
                                          whileAsked();
                                      return answer;
                                  }};
        TransferResult result = Download(comms, {1, "9600,n,8,1", 0}, hooks, wanted, steps);
        EXPECT_FALSE(bench.port.IsOpen());
        return result;
    }

    FakeEventLoop loop;
    BenchLine bench;
    Comms comms{loop, {&bench.link, nullptr, nullptr, nullptr}};
    LineHooks hooks;
    FakeFiles files;
    Backups backups{files, "/backups", [] { return std::chrono::local_seconds(std::chrono::seconds(0)); }};
    TransferAnswer answer = TransferAnswer::Yes;
    std::function<void()> whileAsked;
    std::vector<TransferPlan> asked;
    std::vector<std::string> sent;  ///< commands, repeated ones again
    std::function<void(const std::string& command)> onSent;
};

}  // namespace kelvora
