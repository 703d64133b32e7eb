#include "cli/qt/QtLineAccess.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QStandardPaths>
#include <array>
#include <optional>

#include "comms/PortNames.h"
#include "comms/SerialLink.h"
#include "platform/posix/PosixFiles.h"
#include "platform/posix/StopSignal.h"
#include "platform/qt/BenchProcess.h"
#include "platform/qt/QtEventLoop.h"
#include "platform/qt/QtSerialPort.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

PortDevices DevicesOf(const LineOptions& options)
{
    std::vector<LineArgument> arguments;
    for (const std::string& line : options.lines) {
        try {
            arguments.push_back(ParseLineArgument(line));
        } catch (const std::invalid_argument& error) {
            throw LineAccessError("--line " + line + ": " + error.what());
        }
    }
    PosixFiles files;
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    const PortNames names(files, PathFromQString(folder) + "/Kelvora/ports.ini", arguments);
    if (names.HasProblem())
        throw LineAccessError(names.Problem(MessageCatalogue()));
    return names.Devices();
}

class QtLineAccess final : public LineAccess {
public:
    QtLineAccess(int& argc, char** argv) : argc_(argc), argv_(argv) {}

    Comms& Prepare(const LineOptions& options) override
    {
        stop_.emplace();
        application_.emplace(argc_, argv_);
        PortDevices devices = DevicesOf(options);
        if (options.bench || !options.benchState.empty())
            StartBench(options, devices);
        std::array<LnkControl*, LineCount> channels{};
        for (std::size_t i = 0; i < channels.size(); ++i) {
            ports_.at(i) = std::make_unique<QtSerialPort>(devices.at(i));
            links_.at(i) = std::make_unique<SerialLink>(*ports_.at(i), loop_);
            channels.at(i) = links_.at(i).get();
        }
        return comms_.emplace(loop_, channels);
    }

    bool StopRequested() override { return stop_ && stop_->Requested(); }
    bool ShowsProgress() const override { return isatty(STDERR_FILENO) == 1; }

private:
    void StartBench(const LineOptions& options, PortDevices& devices)
    {
        if (!bench_.emplace().Start(options.benchState))
            throw LineAccessError("the simulated line could not be started: " + bench_->LastError());
        for (std::size_t i = 0; i < bench_->Devices().size(); ++i)
            devices.at(i) = bench_->Devices()[i];
    }

    int& argc_;
    char** argv_;
    std::optional<StopSignal> stop_;
    std::optional<QCoreApplication> application_;
    std::optional<BenchProcess> bench_;
    QtEventLoop loop_;
    std::array<std::unique_ptr<QtSerialPort>, LineCount> ports_;
    std::array<std::unique_ptr<SerialLink>, LineCount> links_;
    std::optional<Comms> comms_;
};

}  // namespace

std::unique_ptr<LineAccess> MakeQtLineAccess(int& argc, char** argv)
{
    return std::make_unique<QtLineAccess>(argc, argv);
}

}  // namespace kelvora
