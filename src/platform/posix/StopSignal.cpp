#include "platform/posix/StopSignal.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>
#include <utility>

namespace kelvora {

namespace {

sigset_t StopSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGHUP);
    return signals;
}

void Unblock()
{
    const sigset_t signals = StopSignals();
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

}  // namespace

StopSignal::StopSignal()
{
    const sigset_t signals = StopSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    descriptor_ = signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC);
}

StopSignal::~StopSignal()
{
    if (descriptor_ < 0)
        return;
    // One that has come late must not end the program before it has told what it did.
    Requested();
    close(descriptor_);
    Unblock();
}

bool StopSignal::Requested()
{
    signalfd_siginfo signal{};
    bool isFirst = false;
    while (descriptor_ >= 0 && read(descriptor_, &signal, sizeof signal) == sizeof signal)
        isFirst = !std::exchange(requested_, true) || isFirst;
    if (isFirst)
        Unblock();
    return requested_;
}

}  // namespace kelvora
