// Ctrl+C as a wish that is asked for, in place of the end of the program. Another one ends it at once: the
// second for those who ask whether there is a wish, the third for those who count them.
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

    /// How many have come. SIGTERM and SIGHUP leave no time to ask twice and count as two; those of a kind
    /// that come faster than it is asked count once.
    int Count();

    /// Readable when one has come that was not asked for yet.
    int Descriptor() const { return descriptor_; }

private:
    /// How many came since it was last asked.
    int Take();

    int descriptor_ = -1;
    int count_ = 0;
    int last_ = 0;
};

}  // namespace kelvora
