#include "comms/CountdownTimer.h"

namespace kelvora {

void CountdownTimer::Enable(int milliseconds)
{
    tag_ = milliseconds;
    timer_->Start(Interval, [this] {
        tag_ -= static_cast<int>(Interval.count());
        if (tag_ <= 0)
            timer_->Stop();
        if (onTick)
            onTick();
    });
}

}  // namespace kelvora
