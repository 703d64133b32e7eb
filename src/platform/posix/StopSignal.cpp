#include "platform/posix/StopSignal.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>

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
    const sigset_t signals = StopSignals();
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

bool StopSignal::Requested()
{
    signalfd_siginfo signal{};
    while (descriptor_ >= 0 && read(descriptor_, &signal, sizeof signal) == sizeof signal)
        requested_ = true;
    return requested_;
}

}  // namespace kelvora
