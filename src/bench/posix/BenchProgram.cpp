#include "bench/posix/BenchProgram.h"

#include <sys/signalfd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <functional>
#include <memory>
#include <utility>

#include "bench/StateText.h"
#include "bench/posix/PtyLine.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora::bench {

namespace {

std::string StatePath(const std::string& path, std::size_t number)
{
    return number == 1 ? path : path + "." + std::to_string(number);
}

/// A file that is synced takes longer than a module may take to acknowledge: the memory is kept a little
/// later.
constexpr std::chrono::milliseconds SaveDelay{250};

/// One line that is played.
class PlayedLine {
public:
    PlayedLine(PollLoop& loop, LineState memory, const LineOptions& options)
        : loop_(loop), saving_(loop), line_(loop, std::move(memory), options), pty_(loop, line_)
    {
    }
    PlayedLine(const PlayedLine&) = delete;
    PlayedLine& operator=(const PlayedLine&) = delete;
    ~PlayedLine()
    {
        if (saving_.IsSet())
            save_();
    }

    const std::string& Path() const { return pty_.Path(); }

    /// Says on `out` what happens at the line of that number.
    void TellOn(std::ostream& out, std::size_t number)
    {
        line_.onHeld = [this, &out, number] {
            out << number << (line_.IsHeld() ? " held\n" : " released\n") << std::flush;
        };
    }

    void KeepIn(StateFile file, std::ostream& err)
    {
        save_ = [this, file = std::move(file), &err]() mutable {
            try {
                file.Save(line_.Memory());
            } catch (const FileError& error) {
                err << "kelvora-bench: " << error.Path() << ": " << error.what() << '\n' << std::flush;
            }
        };
        line_.onStored = [this] { saving_.Set(loop_.Now() + SaveDelay, [this] { save_(); }); };
    }

private:
    PollLoop& loop_;
    std::function<void()> save_;
    Appointment saving_;
    SimulatedLine line_;
    PtyLine pty_;
};

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
    StateFile file(files, StatePath(options.statePath, index + 1));
    auto played = std::make_unique<PlayedLine>(loop, LoadState(file, fresh), line);
    played->KeepIn(std::move(file), err);
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
