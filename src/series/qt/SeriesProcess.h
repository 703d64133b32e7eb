// The program that works on one line of a series, as a child of this one: kelvora-cli, which stands beside
// it.
#pragma once

#include <QProcess>
#include <QStringList>
#include <csignal>
#include <functional>
#include <string>

namespace kelvora {

class SeriesRunner {
public:
    virtual ~SeriesRunner() = default;

    virtual void Start(const QStringList& arguments) = 0;
    /// It ends after the present till.
    virtual void StopAfter() = 0;
    /// It stops the work on the present till.
    virtual void StopNow() = 0;

    /// Called with each line that the program prints, without its end.
    std::function<void(const std::string& line)> onLine;
    /// Called when it has ended; `failure` is why, when it did not come to what it was started for.
    std::function<void(const std::string& failure)> onEnd;
};

class SeriesProcess final : public SeriesRunner {
public:
    SeriesProcess();
    /// Stops the work at once, and waits until the till has been left in order.
    ~SeriesProcess() override;
    SeriesProcess(const SeriesProcess&) = delete;
    SeriesProcess& operator=(const SeriesProcess&) = delete;

    void Start(const QStringList& arguments) override;
    void StopAfter() override { Signal(SIGINT); }
    void StopNow() override { Signal(SIGTERM); }

private:
    void Signal(int number) const;
    void ReadLines();
    void Finish(const std::string& failure);
    std::string Failure();

    QProcess process_;
    bool isRunning_ = false;
};

}  // namespace kelvora
