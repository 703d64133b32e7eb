// The terminal on its line: stop and wait over frames. It answers damage with NAK, repeats its last answer
// for its last exchange number without running the command again, ignores a repeat while the command still
// runs or its answer is late, and calls off a command in flight when a new one comes.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "bench/LineClock.h"
#include "bench/LineFaults.h"
#include "bench/TerminalCommands.h"
#include "bench/TerminalFrame.h"

namespace kelvora::bench {

class SimulatedTerminal {
public:
    /// All three outlive this.
    SimulatedTerminal(LineClock& clock, LineState& memory, LineFaults& faults);

    /// A byte that the terminal hears.
    void Hear(char byte);

    bool InFrame() const { return receiver_.InFrame(); }
    void SetName(std::string name) { commands_.SetName(std::move(name)); }
    bool IsHeld() const { return commands_.IsHeld(); }
    /// The line was quiet for so long that a frame begun is not going on.
    void Forget() { receiver_.Forget(); }

    /// As after a cut of the power: only the memory stays.
    void Restart();

    /// The next command that begins with `name` is not run but answered with this body: 'M' and a reply, 'E'
    /// or 'R' and a text.
    void AnswerNext(std::string name, std::string body);

    /// Called with what the terminal sends; it sends nothing else from then on, whatever was on its way.
    std::function<void(const std::string&)> onSend;
    /// Called with each new command that is heard, before it is run.
    std::function<void(std::string_view)> onCommand;
    /// As TerminalCommands has it.
    std::function<bool()> onStored;
    /// Called when the line is held or released.
    std::function<void()> onHeld;

private:
    void HearCommand();
    void Refuse();
    void SendAnswer();
    std::string BodyFor(std::string_view command);
    std::string WrongReply();

    LineFaults& faults_;
    FrameReceiver receiver_;
    TerminalCommands commands_;
    std::string exchange_;    ///< of the last command; empty before the first
    std::string command_;     ///< that came with it
    std::string lastAnswer_;  ///< empty while the command runs
    Appointment answering_;
    Appointment refusing_;
    std::map<std::string, std::string> scripted_;
};

}  // namespace kelvora::bench
