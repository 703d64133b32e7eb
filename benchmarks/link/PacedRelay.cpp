// Joins two programs by a line of 9600 baud in real time, with the noise of a simulated line: what the one
// writes to its standard output comes to the other's standard input, at the line's speed.
//   paced_relay DAMAGE SEED LIMIT SENDER RECEIVER
// DAMAGE is the share of bytes that are lost, changed or doubled; SENDER and RECEIVER are shell commands,
// which are ended after LIMIT seconds. Prints the seconds from the first byte that the sender sent to the
// last one that arrived anywhere, and the exit codes of both.
#include <fcntl.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <functional>
#include <optional>
#include <string>

#include "bench/ByteChannel.h"
#include "bench/LineFaults.h"
#include "bench/posix/PollLoop.h"
#include "platform/posix/Descriptor.h"

namespace kelvora::bench {

namespace {

/// Bytes that are taken from a program ahead of the line, as a serial port's own buffer does.
constexpr std::size_t Ahead = 32;

/// What a pipe holds besides, in bytes: as much as the system keeps for a serial port.
constexpr int PipeSize = 4096;

struct Pipe {
    Pipe()
    {
        std::array<int, 2> ends{-1, -1};
        const int result = pipe2(ends.data(), O_CLOEXEC);
        reading = Descriptor(result < 0 ? -1 : ends[0], "pipe2");
        writing = Descriptor(result < 0 ? -1 : ends[1], "pipe2");
        fcntl(ends[1], F_SETPIPE_SZ, PipeSize);
    }

    Descriptor reading;
    Descriptor writing;
};

/// A program with pipes at its standard input and output.
class Talker {
public:
    explicit Talker(const char* command)
    {
        Pipe input;
        Pipe output;
        process_ = fork();
        if (process_ < 0)
            throw std::system_error(errno, std::generic_category(), "fork");
        if (process_ == 0) {
            setpgid(0, 0);
            dup2(input.reading.Number(), STDIN_FILENO);
            dup2(output.writing.Number(), STDOUT_FILENO);
            execl("/bin/sh", "sh", "-c", command, nullptr);
            _exit(127);
        }
        // Also here, lest it is ended before it has come so far.
        setpgid(process_, process_);
        input_ = std::move(input.writing);
        output_ = std::move(output.reading);
        fcntl(input_.Number(), F_SETFL, O_NONBLOCK);
    }

    int Output() const { return output_.Number(); }

    // What it does not take is lost, as on a serial port.
    void Write(std::string_view bytes) const
    {
        if (write(input_.Number(), bytes.data(), bytes.size()) < 0)
            return;
    }

    void End() const { kill(-process_, SIGTERM); }

    /// Waits for its end.
    int ExitCode() const
    {
        constexpr int SignalBase = 128;
        int status = 0;
        waitpid(process_, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : SignalBase + WTERMSIG(status);
    }

private:
    pid_t process_ = -1;
    Descriptor input_;
    Descriptor output_;
};

/// One direction.
class Way {
public:
    Way(PollLoop& loop, LineFaults& faults, Direction direction, const Talker& from, const Talker& to)
        : loop_(loop), faults_(faults), direction_(direction), from_(from), channel_(loop, true)
    {
        channel_.onRun = [this, &to](const ByteRun& run) {
            ahead_ -= run.bytes.size();
            last = loop_.Now();
            to.Write(run.bytes);
            Listen();
        };
        Listen();
    }
    Way(const Way&) = delete;
    Way& operator=(const Way&) = delete;
    ~Way() { loop_.Unwatch(from_.Output()); }

    std::optional<LineClock::Time> first;  ///< when the first byte was sent
    std::optional<LineClock::Time> last;   ///< when the last one arrived
    std::function<void()> onClosed;        ///< called when no more bytes will come
    bool isClosed = false;

private:
    void Listen()
    {
        if (!isClosed && ahead_ < Ahead)
            loop_.Watch(from_.Output(), [this] { Read(); });
        else
            loop_.Unwatch(from_.Output());
    }

    void Read()
    {
        std::array<char, Ahead> bytes{};
        const ssize_t length = read(from_.Output(), bytes.data(), bytes.size());
        if (length > 0) {
            first = first.value_or(loop_.Now());
            std::string heard = faults_.Distort(direction_, {bytes.data(), static_cast<std::size_t>(length)});
            ahead_ += heard.size();
            channel_.Send(std::move(heard), SerialSettings(), true);
        }
        isClosed = length == 0;
        Listen();
        if (isClosed)
            onClosed();
    }

    PollLoop& loop_;
    LineFaults& faults_;
    Direction direction_;
    const Talker& from_;
    ByteChannel channel_;
    std::size_t ahead_ = 0;
};

void Relay(double damage, std::uint64_t seed, std::chrono::seconds limit, const char* senderCommand,
           const char* receiverCommand)
{
    PollLoop loop;
    LineFaults faults({.seed = seed, .drop = damage / 3, .flip = damage / 3, .duplicate = damage / 3});
    const Talker receiver(receiverCommand);
    const Talker sender(senderCommand);
    Way there(loop, faults, Direction::ToDevice, sender, receiver);
    Way back(loop, faults, Direction::ToHost, receiver, sender);
    there.onClosed = back.onClosed = [&] {
        if (there.isClosed && back.isClosed)
            loop.Stop();
    };
    loop.At(loop.Now() + limit, [&] {
        sender.End();
        receiver.End();
        loop.Stop();
    });
    loop.Run();
    const LineClock::Time start = there.first.value_or(LineClock::Time());
    const LineClock::Time end = std::max(there.last.value_or(start), back.last.value_or(start));
    std::printf("%.3f %d %d\n", std::chrono::duration<double>(end - start).count(), sender.ExitCode(),
                receiver.ExitCode());
}

}  // namespace

}  // namespace kelvora::bench

int main(int argc, char* argv[])
{
    if (argc != 6) {
        std::fputs("usage: paced_relay DAMAGE SEED LIMIT SENDER RECEIVER\n", stderr);
        return 2;
    }
    // A program that has ended is written to no more.
    std::signal(SIGPIPE, SIG_IGN);
    kelvora::bench::Relay(std::stod(argv[1]), std::stoull(argv[2]), std::chrono::seconds(std::stoi(argv[3])),
                          argv[4], argv[5]);
    return 0;
}
