// The real program, spoken to through its pseudo-terminals.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <sstream>

#include "bench/StateText.h"
#include "bench/TerminalFrame.h"
#include "bench/posix/BenchOptions.h"
#include "fakes/ChildProgram.h"
#include "fakes/TestFolder.h"

using namespace kelvora::bench;
using kelvora::ChildProgram;
using kelvora::Descriptor;
using kelvora::Hear;
using kelvora::TestFolder;
using namespace std::string_literals;
namespace fs = std::filesystem;

namespace {

Descriptor OpenPort(const std::string& path, speed_t speed)
{
    Descriptor port(open(path.c_str(), O_RDWR | O_NOCTTY), "open");
    termios attributes{};
    tcgetattr(port.Number(), &attributes);
    cfsetspeed(&attributes, speed);
    tcsetattr(port.Number(), TCSANOW, &attributes);
    ioctl(port.Number(), TIOCEXCL);
    return port;
}

std::string Ask(const Descriptor& port, std::string_view bytes, std::string_view end)
{
    EXPECT_EQ(write(port.Number(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    return Hear(port.Number(), end);
}

char ModeIn(const std::string& state)
{
    return ReadState((std::stringstream() << std::ifstream(state).rdbuf()).str()).mode;
}

class RunningBench : public ChildProgram {
public:
    explicit RunningBench(std::vector<std::string> arguments, int heard = STDOUT_FILENO)
        : ChildProgram(KELVORA_BENCH, std::move(arguments), heard)
    {
    }

    /// The port of the line that the program names next, at 9600 baud.
    Descriptor Port() const
    {
        const std::string line = Output("\n");
        EXPECT_GT(line.size(), 3U);
        return OpenPort(line.substr(line.rfind(' ') + 1, line.size() - line.rfind(' ') - 2), B9600);
    }
};

}  // namespace

TEST(BenchProgram, PlaysEachLineAtItsSpeedUntilItsParentEnds)
{
    RunningBench bench({"--modules", "iccr", "--modules", "none", "--terminal-speed", "1200", "--until-eof"});
    std::istringstream lines(bench.Output("\n"));
    std::string number;
    std::string path;
    lines >> number >> path;
    EXPECT_EQ(number, "1");

    const std::string ask = MakeFrame("0001", "$9900");
    const std::string name = MakeFrame("0001", "M$9900!0.BENCH TERMINAL");
    Descriptor port = OpenPort(path, B1200);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(Ask(port, ask, "C586"), name);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds((15 + 33) * 25 / 3));

    // A program that is killed leaves neither its exclusive use nor an answer to the next one.
    EXPECT_EQ(write(port.Number(), ask.data(), ask.size()), 15);
    EXPECT_LT(Hear(port.Number(), "\1").size(), name.size());
    port.Close();
    poll(nullptr, 0, 200);
    port = OpenPort(path, B9600);
    EXPECT_EQ(Ask(port, "\5", "\x11"), "\x11") << "the modules work at 9600";
    EXPECT_EQ(Ask(port, "\2\2\0\xF7\xF7\3"s, "\3"), "\6\6\2\6\0\3671.00\xE8\3"s);

    bench.CloseInput();
    EXPECT_EQ(bench.Wait(), Done);
}

TEST(BenchProgram, KeepsItsStateAndLeavesABrokenOneAlone)
{
    const TestFolder own;
    const fs::path folder = own.Path();
    const std::string state = folder / "state";
    const auto check = [&](const char* modules, const std::string& sent, const std::string& heard) {
        RunningBench bench({"--modules", modules, "--state", state});
        const Descriptor port = bench.Port();
        EXPECT_EQ(Ask(port, "\5", "\x11"), "\x11");
        EXPECT_EQ(Ask(port, sent, heard), heard);
        bench.Signal(SIGTERM);
        EXPECT_EQ(bench.Wait(), Done);
    };
    check("iccr", "\2\14\0\xFA\0\xAA\xAA\x55\xBF\0\0\0\0\0\x10\3"s, "\6\6");
    check("none", "\2\5\0\xF9\0\xAA\10\x5B\3"s, "\6\6\2\12\0\xF9\xAA\x55\xBF\0\0\0\0\0\xB9\3"s);

    fs::resize_file(state, fs::file_size(state) - 1);
    const auto size = fs::file_size(state);
    RunningBench bench({"--state", state});
    EXPECT_EQ(bench.Wait(), Failed);
    EXPECT_EQ(fs::file_size(state), size);
}

TEST(BenchProgram, KeepsItsWordAndItsStateToItself)
{
    const TestFolder own;
    const fs::path folder = own.Path();
    const std::string state = folder / "state";
    RunningBench bench({"--modules", "none", "--state", state, "--unpaced"});
    const Descriptor port = bench.Port();
    Ask(port, MakeFrame("0001", "$9904!3"), "$9904!0!3");
    EXPECT_EQ(ModeIn(state), '3') << "kept before it was answered";

    fs::create_symlink(state, folder / "link");
    RunningBench second({"--state", folder / "link"}, STDERR_FILENO);
    EXPECT_EQ(second.Output("\n"), "kelvora-bench: " + (folder / "link").string() +
                                       " is played by kelvora-bench (PID " + std::to_string(bench.Process()) +
                                       ")\n");
    EXPECT_EQ(second.Wait(), Failed);

    const fs::path elsewhere = folder.string() + "-moved";
    fs::rename(folder, elsewhere);
    Ask(port, MakeFrame("0002", "$9904!1"), "$9904!1");
    fs::rename(elsewhere, folder);
    Ask(port, MakeFrame("0003", "$9904"), "$9904!0!3");
    EXPECT_EQ(ModeIn(state), '3') << "what cannot be kept is refused and undone";

    bench.Signal(SIGKILL);
    bench.Wait();
    EXPECT_TRUE(fs::exists(state + ".lock"));
    RunningBench next({"--state", state});
    EXPECT_EQ(next.Output("\n").substr(0, 2), "1 ") << "the dead hold nothing";
    next.Signal(SIGTERM);
    EXPECT_EQ(next.Wait(), Done);
    EXPECT_FALSE(fs::exists(state + ".lock"));
}

TEST(BenchProgram, LetsTillsComeAndGo)
{
    const TestFolder own;
    const fs::path folder = own.Path();
    const std::string state = folder / "till02";
    std::ofstream(folder / "tills") << "# two tills on the second of two lines\n\n"
                                       "0 2 till --modules km096 --name 'TILL 01'\n"
                                       "idle+0.05 2 till --name TILL02 --modules none --state "
                                    << state << "\nidle+0.3 2 gone\n";
    RunningBench bench({"--tills", folder / "tills", "--log", "--unpaced"});
    std::istringstream lines(bench.Output("there TILL 01\n"));
    std::string word;
    std::string path;
    lines >> word >> word >> word >> path;
    const Descriptor port = OpenPort(path, B9600);
    Ask(port, MakeFrame("0001", "$9900"), "$9900!0'TILL 01");
    Ask(port, MakeFrame("0002", "$9902"), "$9902!0!3(214,23,4");
    EXPECT_EQ(bench.Output("\n"), "2 there TILL02\n");
    EXPECT_TRUE(fs::exists(state + ".lock"));
    Ask(port, MakeFrame("0003", "$9904!3"), "$9904!0!3");
    Ask(port, MakeFrame("0004", "$9918"), "$9918!0");
    EXPECT_EQ(bench.Output("\n"), "2 held\n");
    Ask(port, MakeFrame("0005", "$9911"), "$9911!0");
    EXPECT_EQ(bench.Output("\n"), "2 released\n");
    EXPECT_EQ(bench.Output("\n"), "2 gone\n");
    EXPECT_FALSE(fs::exists(state + ".lock"));
    EXPECT_EQ(ModeIn(state), '3');
}

// More of them than a user may have inotify instances.
TEST(BenchProgram, PlaysHundredsOfLines)
{
    RunningBench bench({"--modules", "none", "--modules", "iccr", "--lines", "256", "--unpaced"});
    std::string lines = bench.Output("\n256 ");
    if (!lines.ends_with('\n'))
        lines += bench.Output("\n");
    const std::size_t last = lines.rfind(' ') + 1;
    const Descriptor port = OpenPort(lines.substr(last, lines.size() - last - 1), B9600);
    EXPECT_EQ(Ask(port, "\5", "\x11"), "\x11") << "the chip card unit";
}

TEST(BenchProgram, TakesTheDeviceAway)
{
    RunningBench bench({"--modules", "iccr", "--away-after", "5", "--unpaced"});
    const Descriptor port = bench.Port();
    EXPECT_TRUE(Ask(port, MakeFrame("0001", "$9900"), "(gone)").ends_with("(gone)"));
}

TEST(BenchProgram, RefusesWrongUsage)
{
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
        {{"--modules", "km096,km09"}, "no module is named \"km09\""},
        {{"--modules", "km096,km096,km064,iccr"}, "more than seven"},
        {{"--speed", "19200"}, "--speed"},
        {{"--drop", "1.5"}, "--drop"},
        {{"--lines", "257"}, "--lines"},
        {{"--drop", "0.5", "--flip", "0.4", "--duplicate", "0.2"}, "over 1 together"},
        {{"--late", "$9902"}, "is not COMMAND=VALUE"},
        {{"--late", "$9902#0=5"}, "belongs behind #"},
        {{"--late", "02=5"}, "no command of the terminal is named \"02\""},
        {{"--status", "$9904=0"}, "other than 0"},
        {{"--wrong-reply", "$9902=1"}, "is not COMMAND"},
        {{"--name", "TILL\n1"}, "printable"},
        {{"--tills", "/none"}, "/none: "},
    };
    for (const auto& [arguments, complaint] : cases) {
        std::ostringstream out;
        std::ostringstream err;
        int exitCode = Done;
        EXPECT_FALSE(ParseBenchOptions(arguments, out, err, exitCode));
        EXPECT_EQ(exitCode, WrongUsage) << complaint;
        EXPECT_NE(err.str().find(complaint), std::string::npos) << err.str();
        EXPECT_EQ(out.str(), "");
    }
    std::ostringstream ignored;
    int exitCode = Done;
    const auto options = ParseBenchOptions(
        {"--modules", "mcr12", "--modules", "none", "--drop", "0.1", "--flip", "0.2", "--duplicate", "0.7",
         "--lines", "3", "--late", "$9902#2=1100", "--status", "0FB3+=9"},
        ignored, ignored, exitCode);
    ASSERT_TRUE(options);
    ASSERT_EQ(options->line.faults.commands.size(), 2U);
    EXPECT_EQ(options->line.faults.commands[0].late, std::chrono::milliseconds(1100));
    EXPECT_EQ(options->line.faults.commands[0].number, 2U);
    EXPECT_EQ(options->line.faults.commands[1].command, "0FB3+");
    EXPECT_EQ(options->lines, (std::vector<std::vector<Module>>{{Module::MCR12}, {}, {Module::MCR12}}));
}

TEST(TillScript, NamesTheLineThatIsWrong)
{
    for (const auto& [line, complaint] : std::vector<std::pair<std::string, std::string>>{
             {"soon 1 gone", "a number of seconds expected"},
             {"1 0 gone", "the number of a line"},
             {"1 1 gone now", "\"gone\", or \"till\""},
             {"0.5 1 gone", "an earlier time"},
             {"2 1 till --modules km09", "no module is named"},
             {"2 1 till --speed 1200", "--speed"},
         })
        EXPECT_THAT([text = "1 1 gone\n" + line] { ParseTillScript(text); },
                    testing::ThrowsMessage<TillScriptError>(
                        testing::AllOf(testing::StartsWith("line 2: "), testing::HasSubstr(complaint))));
    const TillScript script = ParseTillScript("\n1.25 3 till --name A --silent-at '0FB1+#20'\r\n0 1 gone");
    const TillEvent& event = script.at(3).at(0);
    EXPECT_EQ(event.time, std::chrono::milliseconds(1250));
    EXPECT_EQ(event.till.value().name, "A");
    EXPECT_EQ(event.till.value().faults.commands.at(0).number, 20U);
}
