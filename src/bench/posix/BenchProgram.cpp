#include "bench/posix/BenchProgram.h"

#include <sys/signalfd.h>

#include <array>
#include <csignal>
#include <memory>
#include <utility>

#include "bench/StateText.h"
#include "bench/posix/PlayedLine.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora::bench {

namespace {

std::string StatePath(const std::string& path, std::size_t number)
{
    return number == 1 ? path : path + "." + std::to_string(number);
}

/// What the file says; without a file `fresh`, which is then written: a file that cannot be kept is told at
/// once. What is wrong with one names it.
LineState LoadState(StateFile& file, const LineState& fresh)
{
    try {
        if (auto kept = file.Load())
            return *std::move(kept);
        file.Save(fresh);
        return fresh;
    } catch (const StateError& error) {
        throw StateError(file.Path() + ", " + error.what());
    } catch (const FileError& error) {
        throw StateError(file.Path() + ": " + error.what());
    }
}

std::unique_ptr<PlayedLine> Play(PollLoop& loop, const BenchOptions& options, std::size_t index, Files& files,
                                 std::ostream& err)
{
    LineOptions line = options.line;
    line.faults.seed += index;
    const LineState fresh = FreshLine(options.lines[index], line.faults.seed);
    if (options.statePath.empty())
        return std::make_unique<PlayedLine>(loop, fresh, line);
    const std::string path = StatePath(options.statePath, index + 1);
    StateLock lock(path);
    StateFile file(files, path);
    auto played = std::make_unique<PlayedLine>(loop, LoadState(file, fresh), line);
    played->KeepIn(std::move(file), std::move(lock), err);
    return played;
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
    PosixFiles files;
    const Descriptor signals = WatchSignals(loop);
    std::vector<std::unique_ptr<PlayedLine>> lines;
    for (std::size_t index = 0; index < options.lines.size(); ++index)
        lines.push_back(Play(loop, options, index, files, err));
    for (std::size_t index = 0; index < lines.size(); ++index)
        out << index + 1 << ' ' << lines[index]->Path() << '\n';
    out << std::flush;
    if (options.tells)
        for (std::size_t index = 0; index < lines.size(); ++index)
            lines[index]->TellOn(out, index + 1);
    if (options.untilEof)
        WatchInput(loop);
    loop.Run();
}

}  // namespace kelvora::bench
