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
    int count = 0;
    while (descriptor_ >= 0 && read(descriptor_, &signal, sizeof signal) == sizeof signal)
        ++count;
    if (count > 0 && !std::exchange(requested_, true))
        Unblock();
    // The second of two that came before anybody asked.
    if (count > 1)
        raise(static_cast<int>(signal.ssi_signo));
    return requested_;
}

}  // namespace kelvora
