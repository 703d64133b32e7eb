// A run of kelvora-cli beside the windows. Its person is asked on the terminal.
#pragma once

#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "cli/LineAccess.h"
#include "simulation/Session.h"

namespace kelvora::simulation {

struct Session::CommandLine final : LineAccess {
    explicit CommandLine(Session& given)
        : session(given),
          port(static_cast<int>(given.world_.random.Below(2)) + 1),
          work(given.BeginWork(port)),
          program(given.world_, [&given](const auto& saving) { given.rules_.NoteSaving(saving); })
    {
    }

    Comms& Prepare(const LineOptions& /*options*/) override
    {
        session.WaitIn(work, program.program.operation);
        return program.program.lines.Terminals();
    }
    bool StopRequested() override { return StopCount() > 0; }
    // Nobody waits for a till that does not come.
    int StopCount() override
    {
        if (onLook && !session.world_.IsDead())
            onLook();
        return program.program.operation.IsStopAsked() || session.world_.IsDead() || session.IsLong(work) ? 2
                                                                                                          : 0;
    }
    bool ShowsProgress() const override { return false; }
    bool CanAsk() const override { return true; }
    bool Ask(const std::string& /*question*/) override
    {
        work.isAllowed = session.world_.Moment() && !session.world_.random.Once(6);
        return work.isAllowed;
    }
    SerialPort& Port(int line) override { return line == 1 ? program.port1 : program.port2; }
    std::string DataFolder() const override { return simulation::DataFolder; }
    const Journal* OperationJournal() const override { return &program.journal; }

    /// Returns the exit code.
    int Run(const std::vector<std::string>& arguments);
    /// The same with the line.
    int RunOnLine(std::vector<std::string> arguments);
    /// At its end.
    void JudgeLine() const;

    Session& session;
    int port;
    Rules::Work work;
    Copy program;
    std::ostringstream out;
    std::string said;              ///< all of it, once it has run
    std::function<void()> onLook;  ///< as it looks whether it is to stop; may be empty
};

}  // namespace kelvora::simulation
