#include "cli/qt/QtLineAccess.h"

#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QStandardPaths>
#include <array>
#include <csignal>
#include <iostream>
#include <optional>

#include "cli/LineReport.h"
#include "cli/YesAnswer.h"
#include "comms/LineLink.h"
#include "journal/posix/JournalFolder.h"
#include "journal/qt/Sha256.h"
#include "network/qt/QtLinePort.h"
#include "platform/posix/PosixFiles.h"
#include "platform/posix/StopSignal.h"
#include "platform/qt/BenchProcess.h"
#include "platform/qt/QtEventLoop.h"
#include "platform/qt/Text.h"
#include "ports/PortNames.h"

namespace kelvora {

namespace {

PortNames NamesOf(const LineOptions& options, Files& files)
{
    std::vector<LineArgument> arguments;
    for (const std::string& line : options.lines)
        arguments.push_back(ParseLineArgument(line));
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return {files, PathFromQString(folder) + "/Kelvora/ports.ini", arguments};
}

class QtLineAccess final : public LineAccess {
public:
    QtLineAccess(int& argc, char** argv) : argc_(argc), argv_(argv) {}

    Comms& Prepare(const LineOptions& options) override
    {
        HearStops();
        // Whoever reads the results may leave: the work on the line must not end in its middle by that.
        std::signal(SIGPIPE, SIG_IGN);
        application_.emplace(argc_, argv_);
        PosixFiles files;
        const PortNames names = NamesOf(options, files);
        PortDevices devices = names.Devices();
        bool isNamed = names.IsFixed(options.port);
        if (options.bench || !options.benchState.empty()) {
            StartBench(options, names, devices);
            isNamed = isNamed || static_cast<std::size_t>(options.port) <= bench_->Devices().size();
        }
        // A damaged file matters only to the ports that it might have named.
        if (names.HasProblem() && !isNamed)
            throw LineAccessError(OneLineText(names.Problem(MessageCatalogue())));
        std::array<LnkControl*, LineCount> channels{};
        for (std::size_t i = 0; i < channels.size(); ++i) {
            ports_.at(i) = MakeLinePort(loop_, devices.at(i));
            links_.at(i) = std::make_unique<LineLink>(*ports_.at(i), loop_);
            channels.at(i) = links_.at(i).get();
        }
        return comms_.emplace(loop_, channels);
    }

    bool StopRequested() override { return stop_ && stop_->Requested(); }
    int StopCount() override { return stop_ ? stop_->Count() : 0; }
    bool ShowsProgress() const override { return isatty(STDERR_FILENO) == 1; }
    bool CanAsk() const override { return isatty(STDIN_FILENO) == 1 && isatty(STDERR_FILENO) == 1; }
    bool Ask(const std::string& question) override;
    SerialPort& Port(int line) override { return *ports_.at(static_cast<std::size_t>(line) - 1); }
    std::string DataFolder() const override
    {
        return PathFromQString(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)) +
               "/Kelvora";
    }
    const Journal* OperationJournal() const override { return &journal_; }

private:
    void HearStops()
    {
        if (!stop_)
            stop_.emplace();
    }

    void StartBench(const LineOptions& options, const PortNames& names, PortDevices& devices)
    {
        if (!bench_.emplace().Start(options.benchState))
            throw LineAccessError("the simulated line could not be started: " + bench_->LastError());
        for (std::size_t i = 0; i < bench_->Devices().size(); ++i)
            if (!names.IsFixed(static_cast<int>(i) + 1))
                devices.at(i) = bench_->Devices()[i];
    }

    int& argc_;
    char** argv_;
    std::optional<StopSignal> stop_;
    std::optional<QCoreApplication> application_;
    std::optional<BenchProcess> bench_;
    QtEventLoop loop_;
    PosixFiles files_;
    JournalFolder journalFolder_{files_, DataFolder()};
    Journal journal_{journalFolder_, {AccountName(), std::string(CommandName), KELVORA_VERSION}, Sha256};
    std::array<std::unique_ptr<SerialPort>, LineCount> ports_;
    std::array<std::unique_ptr<LineLink>, LineCount> links_;
    std::optional<Comms> comms_;
};

// Ctrl+C is only a wish here, so the wait for the answer asks for it now and then.
bool QtLineAccess::Ask(const std::string& question)
{
    constexpr int LookMs = 100;
    HearStops();
    // What was typed ahead answers another question.
    tcflush(STDIN_FILENO, TCIFLUSH);
    std::cerr << question << " [y/N] " << std::flush;
    std::string answer;
    while (!answer.ends_with('\n')) {
        pollfd input{STDIN_FILENO, POLLIN, 0};
        if (StopRequested()) {
            std::cerr << std::endl;
            return false;
        }
        if (poll(&input, 1, LookMs) <= 0)
            continue;
        char byte = 0;
        if (read(STDIN_FILENO, &byte, 1) != 1)
            return false;
        answer += byte;
    }
    return IsYes(answer, PersonsLocale());
}

}  // namespace

std::unique_ptr<LineAccess> MakeQtLineAccess(int& argc, char** argv)
{
    return std::make_unique<QtLineAccess>(argc, argv);
}

}  // namespace kelvora
