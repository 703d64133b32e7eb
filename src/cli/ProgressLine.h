// A progress bar on one line of a terminal, drawn anew as the work goes on and wiped at its end.
#pragma once

#include <ostream>
#include <string>

#include "comms/LineWork.h"

namespace kelvora {

class ProgressLine {
public:
    /// `out` is a terminal and outlives the line; null shows nothing.
    explicit ProgressLine(std::ostream* out) : out_(out) {}
    ~ProgressLine() { Wipe(); }
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void Show(const LineProgress& progress);

    /// Wipes the line: something else is to stand there.
    void Wipe();

private:
    std::ostream* out_;
    std::string shown_;
};

}  // namespace kelvora
