#include "bench/posix/PtyLine.h"

#include <fcntl.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <termios.h>

#include <algorithm>
#include <array>
#include <optional>
#include <tuple>
#include <utility>

namespace kelvora::bench {

namespace {

struct Speed {
    speed_t code;
    int baud;
};

constexpr std::array Speeds{
    Speed{B150, 150},     Speed{B300, 300},     Speed{B600, 600},       Speed{B1200, 1200},
    Speed{B2400, 2400},   Speed{B4800, 4800},   Speed{B9600, 9600},     Speed{B19200, 19200},
    Speed{B38400, 38400}, Speed{B57600, 57600}, Speed{B115200, 115200},
};

char ParityOf(tcflag_t flags)
{
    if ((flags & PARENB) == 0)
        return 'n';
    return (flags & PARODD) != 0 ? 'o' : 'e';
}

/// Nothing for a speed that no line here has.
std::optional<SerialSettings> SettingsOf(const termios& attributes)
{
    const auto* const speed = std::ranges::find(Speeds, cfgetospeed(&attributes), &Speed::code);
    if (speed == Speeds.end())
        return std::nullopt;
    const tcflag_t flags = attributes.c_cflag;
    return SerialSettings{.baud = speed->baud,
                          .parity = ParityOf(flags),
                          .dataBits = (flags & CSIZE) == CS7 ? 7 : 8,
                          .stopBits = (flags & CSTOPB) != 0 ? 2 : 1};
}

std::pair<Descriptor, Descriptor> OpenPair()
{
    termios attributes{};
    cfmakeraw(&attributes);
    attributes.c_cflag |= CREAD | CLOCAL;
    cfsetspeed(&attributes, B9600);
    int master = -1;
    int slave = -1;
    const int result = openpty(&master, &slave, nullptr, &attributes, nullptr);
    std::pair<Descriptor, Descriptor> ends{Descriptor(result < 0 ? -1 : master, "openpty"),
                                           Descriptor(result < 0 ? -1 : slave, "openpty")};
    fcntl(master, F_SETFL, O_NONBLOCK);
    fcntl(master, F_SETFD, FD_CLOEXEC);
    fcntl(slave, F_SETFD, FD_CLOEXEC);
    return ends;
}

}  // namespace

PtyLine::PtyLine(PollLoop& loop, CloseWatch& closes, SimulatedLine& line)
    : loop_(loop), closes_(closes), line_(line)
{
    std::tie(master_, slave_) = OpenPair();
    path_ = ttyname(slave_.Number());
    closeNumber_ = closes_.Add(path_, [this] { ProgramClosed(); });
    line_.onBytes = [this](std::string_view bytes) { Write(bytes); };
    line_.onAway = [this] { Vanish(); };
    loop_.Watch(master_.Number(), [this] { Read(); });
}

PtyLine::~PtyLine()
{
    line_.onBytes = nullptr;
    line_.onAway = nullptr;
    Vanish();
}

// The pseudo-terminal does not tell when a program changes its settings.
bool PtyLine::TakeSettings()
{
    termios attributes{};
    const auto settings =
        tcgetattr(master_.Number(), &attributes) == 0 ? SettingsOf(attributes) : std::nullopt;
    if (settings)
        line_.SetHostSettings(*settings);
    return settings.has_value();
}

void PtyLine::Read()
{
    std::array<char, 4096> bytes{};
    const ssize_t length = read(master_.Number(), bytes.data(), bytes.size());
    if (length > 0 && TakeSettings())
        line_.Send({bytes.data(), static_cast<std::size_t>(length)});
    else if (length < 0 && errno != EAGAIN && errno != EINTR)
        Vanish();
}

// What a program that does not read has no room for is lost, as on a serial port.
void PtyLine::Write(std::string_view bytes)
{
    if (!TakeSettings())
        return;
    while (!bytes.empty()) {
        const ssize_t length = write(master_.Number(), bytes.data(), bytes.size());
        if (length <= 0)
            return;
        bytes.remove_prefix(static_cast<std::size_t>(length));
    }
}

// The next program must not find what this one left: bytes that it has not read, and its exclusive use.
void PtyLine::ProgramClosed()
{
    line_.HostClosed();
    ioctl(slave_.Number(), TIOCNXCL);
    tcflush(slave_.Number(), TCIFLUSH);
}

void PtyLine::Vanish()
{
    closes_.Remove(closeNumber_);
    loop_.Unwatch(master_.Number());
    master_.Close();
    slave_.Close();
}

}  // namespace kelvora::bench
