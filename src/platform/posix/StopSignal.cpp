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
    // One that has come late must not end the program before it has told what it did.
    Requested();
    close(descriptor_);
    Unblock();
}

bool StopSignal::Requested()
{
    const int taken = Take();
    if (count_ > 0)
        Unblock();
    // The second of two that came before anybody asked.
    if (taken > 1)
        raise(last_);
    return count_ > 0;
}

int StopSignal::Count()
{
    Take();
    if (count_ > 1)
        Unblock();
    return count_;
}

int StopSignal::Take()
{
    signalfd_siginfo signal{};
    int taken = 0;
    while (read(descriptor_, &signal, sizeof signal) == sizeof signal) {
        last_ = static_cast<int>(signal.ssi_signo);
        count_ += last_ == SIGINT ? 1 : 2;
        ++taken;
    }
    return taken;
}

}  // namespace kelvora
