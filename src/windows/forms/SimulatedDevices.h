// The simulated devices behind COM1 and COM2, to try the program on: begun and ended.
#pragma once

#include <QObject>
#include <memory>
#include <string>

#include "platform/qt/BenchProcess.h"
#include "ports/PortNames.h"
#include "windows/Program.h"

namespace kelvora {

class SimulatedDevices final : public QObject {
    Q_OBJECT

public:
    /// Both outlive the object.
    SimulatedDevices(Program& program, const PortNames& names);
    ~SimulatedDevices() override;

    /// Puts them in the place of the ports that were not named at the start; the next window's port is one of
    /// them then. `stateFile` is where they keep their memory; empty for none. A message says what failed.
    void Begin(const std::string& stateFile);

    /// The ports are again what they are named.
    void End();

signals:
    /// They have begun, or ended.
    void changed();

private:
    void TellEnded();
    void GivePortsBack();

    Program& program_;
    const PortNames& names_;
    std::unique_ptr<BenchProcess> bench_;
    std::int16_t portBefore_ = 0;  ///< of the next window; 0 for the one that it is
};

}  // namespace kelvora
