#include "bench/SimulatedTerminal.h"

#include <algorithm>
#include <utility>

namespace kelvora::bench {

SimulatedTerminal::SimulatedTerminal(LineClock& clock, LineState& memory, LineFaults& faults)
    : faults_(faults), commands_(memory), answering_(clock), refusing_(clock)
{
    commands_.onStored = [this] { return !onStored || onStored(); };
    commands_.onHeld = [this] {
        if (onHeld)
            onHeld();
    };
}

void SimulatedTerminal::Hear(char byte)
{
    const FrameReceiver::Heard heard = receiver_.Take(byte);
    if (heard == FrameReceiver::Heard::Nothing)
        return;
    if (heard == FrameReceiver::Heard::Damage || faults_.TakeNak())
        Refuse();
    else
        HearCommand();
}

void SimulatedTerminal::Refuse()
{
    refusing_.SetAfter(faults_.Delay(), [this] { onSend({Nak}); });
}

void SimulatedTerminal::HearCommand()
{
    const bool isRepeated = receiver_.Exchange() == exchange_;
    if (isRepeated && answering_.IsSet())
        return;
    if (!isRepeated) {
        if (onCommand)
            onCommand(receiver_.Body());
        if (faults_.TakeSilence(receiver_.Body()))
            return;
        exchange_ = receiver_.Exchange();
        command_ = receiver_.Body();
        lastAnswer_.clear();
    }
    answering_.SetAfter(faults_.TakeDelay(command_), [this] { SendAnswer(); });
}

void SimulatedTerminal::SendAnswer()
{
    if (lastAnswer_.empty())
        lastAnswer_ = MakeFrame(exchange_, BodyFor(command_));
    refusing_.Cancel();
    onSend(faults_.TakeWrongReply(command_) ? WrongReply() : lastAnswer_);
}

std::string SimulatedTerminal::BodyFor(std::string_view command)
{
    const auto scripted =
        std::ranges::find_if(scripted_, [&](const auto& entry) { return command.starts_with(entry.first); });
    if (scripted != scripted_.end())
        return scripted_.extract(scripted).mapped();
    const std::string status = faults_.TakeStatus(command);
    return "M" + (status.empty() ? commands_.Run(command) : TerminalCommands::Refuse(command, status));
}

// That of a command that changes nothing.
std::string SimulatedTerminal::WrongReply()
{
    constexpr std::string_view Attention = "$9900";
    const bool isAttention = command_.starts_with(Attention);
    return MakeFrame(exchange_, "M" + commands_.Run(isAttention ? "$9902" : Attention));
}

void SimulatedTerminal::AnswerNext(std::string name, std::string body)
{
    scripted_[std::move(name)] = std::move(body);
}

void SimulatedTerminal::Restart()
{
    answering_.Cancel();
    refusing_.Cancel();
    receiver_.Forget();
    commands_.Restart();
    exchange_.clear();
    lastAnswer_.clear();
}

}  // namespace kelvora::bench
