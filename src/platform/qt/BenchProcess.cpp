#include "platform/qt/BenchProcess.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <csignal>
#include <iostream>

#include "platform/qt/Text.h"

namespace kelvora {

namespace {

/// Lines that the bench plays unless told otherwise.
constexpr std::size_t BenchLines = 2;

constexpr std::chrono::seconds StartTime{5};
constexpr std::chrono::seconds EndTime{2};

}  // namespace

bool BenchProcess::Start(const std::string& stateFile)
{
    QStringList arguments{QStringLiteral("--until-eof")};
    if (!stateFile.empty())
        arguments << QStringLiteral("--state") << PathToQString(stateFile);
    process_.setProgram(QCoreApplication::applicationDirPath() + QStringLiteral("/kelvora-bench"));
    process_.setArguments(arguments);
    // Ctrl+C is meant for this program alone; the bench ends after it. What this program does not hear for a
    // while is still for the bench to hear.
    process_.setChildProcessModifier([] {
        ::setpgid(0, 0);
        sigset_t none;
        sigemptyset(&none);
        pthread_sigmask(SIG_SETMASK, &none, nullptr);
    });
    process_.start();
    if (!ReadDevices()) {
        const QByteArray words = process_.readAllStandardError().trimmed();
        lastError_ = words.isEmpty() ? FromQString(process_.errorString()) : words.toStdString();
        process_.kill();
        return false;
    }
    // What it says from now on is for whoever reads what this program says.
    QObject::connect(&process_, &QProcess::readyReadStandardError, &process_,
                     [this] { std::cerr << process_.readAllStandardError().toStdString() << std::flush; });
    QObject::connect(&process_, &QProcess::finished, &process_, [this] {
        if (onEnded)
            onEnded();
    });
    return true;
}

// "1 /dev/pts/5", a line each.
bool BenchProcess::ReadDevices()
{
    const QDeadlineTimer deadline(StartTime);
    while (devices_.size() < BenchLines) {
        if (!process_.canReadLine() && !process_.waitForReadyRead(static_cast<int>(deadline.remainingTime())))
            return false;
        while (process_.canReadLine()) {
            const QString line = QString::fromLocal8Bit(process_.readLine()).trimmed();
            devices_.push_back(PathFromQString(line.section(QLatin1Char(' '), 1)));
        }
    }
    return true;
}

BenchProcess::~BenchProcess()
{
    onEnded = nullptr;
    // Its end of input is its end.
    process_.closeWriteChannel();
    if (process_.state() != QProcess::NotRunning &&
        !process_.waitForFinished(EndTime / std::chrono::milliseconds(1)))
        process_.kill();
}

}  // namespace kelvora
