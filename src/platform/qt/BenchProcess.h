// The simulated devices as a child of this program: kelvora-bench, which stands beside it. It ends with the
// program, also when that is killed.
#pragma once

#include <QProcess>
#include <functional>
#include <string>
#include <vector>

namespace kelvora {

class BenchProcess {
public:
    /// Starts the bench and waits until it plays. `stateFile` is where its devices keep their memory; empty
    /// for none. False when that fails; LastError says why.
    bool Start(const std::string& stateFile);
    ~BenchProcess();
    BenchProcess() = default;
    BenchProcess(const BenchProcess&) = delete;
    BenchProcess& operator=(const BenchProcess&) = delete;

    /// The devices of the simulated lines, COM1 first.
    const std::vector<std::string>& Devices() const { return devices_; }

    const std::string& LastError() const { return lastError_; }

    /// Called when the bench has ended by itself.
    std::function<void()> onEnded;

private:
    bool ReadDevices();

    QProcess process_;
    std::vector<std::string> devices_;
    std::string lastError_;
};

}  // namespace kelvora
