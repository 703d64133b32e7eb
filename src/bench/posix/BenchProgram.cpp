#include "bench/posix/BenchProgram.h"

#include <sys/signalfd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <memory>

#include "bench/posix/PlayedLine.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora::bench {

namespace {

std::string StatePath(const std::string& path, std::size_t number)
{
    return number == 1 ? path : path + "." + std::to_string(number);
}

/// The till that hangs on a line at the start.
Till FirstTill(const BenchOptions& options, std::size_t index)
{
    Till till{.modules = options.lines[index], .faults = options.line.faults};
    till.faults.seed += index;
    if (index < options.names.size())
        till.name = options.names[index];
    if (!options.statePath.empty())
        till.statePath = StatePath(options.statePath, index + 1);
    return till;
}

void TellOn(std::ostream& out, PlayedLine& line, std::size_t number)
{
    line.onEvent = [&out, number](std::string_view event) {
        out << number << ' ' << event << '\n' << std::flush;
    };
}

Descriptor WatchSignals(PollLoop& loop)
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    Descriptor descriptor(signalfd(-1, &signals, SFD_CLOEXEC), "signalfd");
    loop.Watch(descriptor.Number(), [&loop] { loop.Stop(); });
    return descriptor;
}

void WatchInput(PollLoop& loop)
{
    loop.Watch(STDIN_FILENO, [&loop] {
        std::array<char, 256> bytes{};
        if (const ssize_t length = read(STDIN_FILENO, bytes.data(), bytes.size());
            length == 0 || (length < 0 && errno != EAGAIN && errno != EINTR))
            loop.Stop();
    });
}

}  // namespace

void RunBench(const BenchOptions& options, std::ostream& out, std::ostream& err)
{
    PollLoop loop;
    CloseWatch closes(loop);
    PosixFiles files;
    const Descriptor signals = WatchSignals(loop);
    std::vector<std::unique_ptr<PlayedLine>> lines;
    const std::size_t scripted = options.tills.empty() ? 0 : options.tills.rbegin()->first;
    for (std::size_t index = 0; index < std::max(options.lines.size(), scripted); ++index) {
        lines.push_back(std::make_unique<PlayedLine>(loop, closes, options.line, files, err));
        if (index < options.lines.size())
            lines.back()->Put(FirstTill(options, index));
    }
    for (std::size_t index = 0; index < lines.size(); ++index)
        out << index + 1 << ' ' << lines[index]->Path() << '\n';
    out << std::flush;
    if (options.tells)
        for (std::size_t index = 0; index < lines.size(); ++index)
            TellOn(out, *lines[index], index + 1);
    for (const auto& [number, events] : options.tills)
        lines[number - 1]->Follow(events);
    if (options.untilEof)
        WatchInput(loop);
    loop.Run();
}

}  // namespace kelvora::bench
