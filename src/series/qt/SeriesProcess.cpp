#include "series/qt/SeriesProcess.h"

#include <sys/prctl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <chrono>
#include <utility>

#include "platform/qt/Text.h"

namespace kelvora {

namespace {

/// Longer than the command that must not be interrupted may take, its repeats included.
constexpr std::chrono::seconds EndTime{30};

}  // namespace

SeriesProcess::SeriesProcess()
{
    QObject::connect(&process_, &QProcess::readyReadStandardOutput, &process_, [this] { ReadLines(); });
    QObject::connect(&process_, &QProcess::finished, &process_, [this] {
        ReadLines();
        Finish(Failure());
    });
    QObject::connect(&process_, &QProcess::errorOccurred, &process_, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            Finish(FromQString(process_.errorString()));
    });
    // Ctrl+C is meant for this program alone. Should it be killed, the series ends, and the till at hand is
    // left in order.
    process_.setChildProcessModifier([] {
        ::setpgid(0, 0);
        ::prctl(PR_SET_PDEATHSIG, SIGINT);
    });
}

SeriesProcess::~SeriesProcess()
{
    process_.disconnect();
    if (process_.state() == QProcess::NotRunning)
        return;
    StopNow();
    if (!process_.waitForFinished(EndTime / std::chrono::milliseconds(1)))
        process_.kill();
}

void SeriesProcess::Start(const QStringList& arguments)
{
    isRunning_ = true;
    process_.setProgram(QCoreApplication::applicationDirPath() + QStringLiteral("/kelvora-cli"));
    process_.setArguments(arguments);
    process_.start();
}

void SeriesProcess::Signal(int number) const
{
    if (process_.state() == QProcess::Running)
        ::kill(static_cast<pid_t>(process_.processId()), number);
}

void SeriesProcess::ReadLines()
{
    while (process_.canReadLine()) {
        const std::string line = process_.readLine().trimmed().toStdString();
        if (onLine)
            onLine(line);
    }
}

// The program tells of tills that failed; anything else that ends it is for its user.
std::string SeriesProcess::Failure()
{
    const std::string words = process_.readAllStandardError().trimmed().toStdString();
    if (process_.exitStatus() == QProcess::CrashExit)
        return process_.errorString().toStdString();
    return process_.exitCode() == 0 ? std::string() : words;
}

void SeriesProcess::Finish(const std::string& failure)
{
    if (std::exchange(isRunning_, false) && onEnd)
        onEnd(failure);
}

}  // namespace kelvora
