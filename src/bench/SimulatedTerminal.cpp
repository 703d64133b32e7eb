#include "bench/SimulatedTerminal.h"

#include <algorithm>
#include <utility>

namespace kelvora::bench {

SimulatedTerminal::SimulatedTerminal(LineClock& clock, LineState& memory, LineFaults& faults)
    : faults_(faults), clock_(clock), commands_(memory), running_(clock)
{
    commands_.onStored = [this] {
        if (onStored)
            onStored();
    };
}

void SimulatedTerminal::Hear(char byte)
{
    const FrameReceiver::Heard heard = receiver_.Take(byte);
    if (heard == FrameReceiver::Heard::Nothing)
        return;
    if (heard == FrameReceiver::Heard::Damage || faults_.TakeNak())
        onSend({Nak});
    else
        HearCommand();
}

void SimulatedTerminal::HearCommand()
{
    if (receiver_.Exchange() == exchange_) {
        if (!running_.IsSet())
            onSend(lastAnswer_);
        return;
    }
    exchange_ = receiver_.Exchange();
    lastAnswer_.clear();
    if (faults_.Delay().count() == 0) {
        running_.Cancel();
        Answer(receiver_.Body());
        return;
    }
    running_.Set(clock_.Now() + faults_.Delay(),
                 [this, command = std::string(receiver_.Body())] { Answer(command); });
}

void SimulatedTerminal::Answer(std::string_view command)
{
    lastAnswer_ = MakeFrame(exchange_, BodyFor(command));
    onSend(lastAnswer_);
}

std::string SimulatedTerminal::BodyFor(std::string_view command)
{
    const auto scripted =
        std::ranges::find_if(scripted_, [&](const auto& entry) { return command.starts_with(entry.first); });
    if (scripted != scripted_.end())
        return scripted_.extract(scripted).mapped();
    return "M" + commands_.Run(command);
}

void SimulatedTerminal::AnswerNext(std::string name, std::string body)
{
    scripted_[std::move(name)] = std::move(body);
}

void SimulatedTerminal::Restart()
{
    running_.Cancel();
    receiver_.Forget();
    commands_.Restart();
    exchange_.clear();
    lastAnswer_.clear();
}

}  // namespace kelvora::bench
