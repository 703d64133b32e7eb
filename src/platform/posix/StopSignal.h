// Ctrl+C as a wish that is asked for, in place of the end of the program. A second one ends it at once, as
// soon as the first one has been asked for.
#pragma once

namespace kelvora {

class StopSignal {
public:
    /// From now on the first SIGINT, SIGTERM or SIGHUP ends nothing any more; threads begun later follow.
    StopSignal();
    ~StopSignal();
    StopSignal(const StopSignal&) = delete;
    StopSignal& operator=(const StopSignal&) = delete;

    /// Whether one of them has come.
    bool Requested();

    /// Readable when one has come that was not asked for yet.
    int Descriptor() const { return descriptor_; }

private:
    int descriptor_ = -1;
    bool requested_ = false;
};

}  // namespace kelvora
