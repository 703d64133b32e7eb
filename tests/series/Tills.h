// Tills that are put on one line and taken away from it, on virtual time.
#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "fakes/BenchLine.h"
#include "flash/FlashImage.h"

namespace kelvora {

/// A terminal of that name with its modules, which nothing is connected to.
struct Till {
    Till(std::string tillName, const std::vector<bench::Module>& modules, bench::FaultPlan itsFaults = {})
        : name(std::move(tillName)), memory(bench::FreshLine(modules)), faults(std::move(itsFaults))
    {
    }

    FlashImage Flash() const
    {
        const bench::LineState& now = line ? line->Memory() : memory;
        FlashImage image{};
        std::copy(now.flash.begin(), now.flash.end(), image.begin());
        return image;
    }

    std::string name;
    bench::LineState memory;
    bench::FaultPlan faults;
    const bench::SimulatedLine* line = nullptr;  ///< what has the memory while it is connected
};

/// The cable of a line, and the adapter that it hangs on: what is there can change while the port is open.
class Cable {
public:
    explicit Cable(BenchLine& bench) : bench_(bench) { bench_.line.TakeAway(); }

    /// Null for nothing.
    void Connect(Till* till)
    {
        if (till_) {
            till_->memory = bench_.line.Memory();
            till_->line = nullptr;
        }
        bench_.line.TakeAway();
        till_ = till;
        if (!till_)
            return;
        till_->line = &bench_.line;
        bench_.line.Put(till_->memory, till_->name, till_->faults);
    }

    /// The adapter is taken out of the machine, and comes back.
    void PullOut()
    {
        bench_.port.refusal = PortFailure::Missing;
        if (bench_.port.IsOpen())
            bench_.line.onAway();
    }
    void PutIn() { bench_.port.refusal = PortFailure::None; }

private:
    BenchLine& bench_;
    Till* till_ = nullptr;
};

}  // namespace kelvora
