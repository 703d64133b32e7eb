#include "bench/TillChanges.h"

#include <utility>

namespace kelvora::bench {

TillChanges::TillChanges(LineClock& clock, std::vector<TillEvent> events,
                         std::function<void(const TillEvent&)> happen)
    : clock_(clock),
      events_(std::move(events)),
      happen_(std::move(happen)),
      start_(clock.Now()),
      appointment_(clock)
{
    Expect();
}

void TillChanges::Expect()
{
    if (next_ == events_.size() || events_[next_].from == TillEvent::From::LastCommand)
        return;
    const TillEvent& event = events_[next_];
    const bool isFromStart = event.from == TillEvent::From::Start;
    appointment_.Set((isFromStart ? start_ : clock_.Now()) + event.time, [this] {
        happen_(events_[next_++]);
        Expect();
    });
}

// A program that only asks whether a terminal is there does nothing with it.
void TillChanges::Hear(std::string_view command)
{
    if (next_ == events_.size() || events_[next_].from != TillEvent::From::LastCommand ||
        command.starts_with("$9900"))
        return;
    appointment_.Set(clock_.Now() + events_[next_].time, [this] {
        happen_(events_[next_++]);
        Expect();
    });
}

}  // namespace kelvora::bench
