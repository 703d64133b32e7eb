// Ctrl+C as a wish that is asked for, in place of the end of the program.
#pragma once

namespace kelvora {

class StopSignal {
public:
    /// From now on SIGINT, SIGTERM and SIGHUP end nothing any more; threads begun later follow.
    StopSignal();
    ~StopSignal();
    StopSignal(const StopSignal&) = delete;
    StopSignal& operator=(const StopSignal&) = delete;

    /// Whether one of them has come.
    bool Requested();

private:
    int descriptor_ = -1;
    bool requested_ = false;
};

}  // namespace kelvora
