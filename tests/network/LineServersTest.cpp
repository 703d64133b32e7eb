// The real command line over real servers on this machine, with the simulated devices behind them.

#include <netinet/in.h>
#include <sys/socket.h>

#include <chrono>
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>

#include "fakes/ChildProgram.h"

namespace kelvora {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

// A socket of this machine: one that has no number yet gets a free one.
Descriptor Socket(std::uint16_t& number, bool connects)
{
    Descriptor made(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0), "socket");
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(number);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto* const where = reinterpret_cast<sockaddr*>(&address);
    socklen_t length = sizeof address;
    EXPECT_EQ(connects ? connect(made.Number(), where, length) : bind(made.Number(), where, length), 0);
    if (!connects)
        getsockname(made.Number(), where, &length);
    number = ntohs(address.sin_port);
    return made;
}

constexpr const char* Ser2netPath = "/usr/sbin/ser2net";

class LineServersTest : public testing::Test {
protected:
    LineServersTest()
    {
        Socket(number, false);
        const std::string line = bench.Output("\n");
        if (line.size() > 3)
            device = line.substr(2, line.size() - 3);
    }
    void SetUp() override
    {
        for (const char* program : {Ser2netPath, "/usr/bin/socat"})
            ASSERT_EQ(access(program, X_OK), 0) << program << " is missing, see packaging/packages.txt";
    }
    ~LineServersTest() override { std::filesystem::remove(file); }

    std::string Port() const { return std::to_string(number); }

    ChildProgram Ser2net(const std::string& accepter) const
    {
        std::ofstream(file) << "connection: &line\n  accepter: " << accepter << ",tcp,127.0.0.1," << Port()
                            << "\n  connector: serialdev," << device << ",9600n81,local\n";
        return ChildProgram(Ser2netPath, {"-n", "-u", "-c", file});
    }

    // What the command says on both its outputs, once the server listens and is done with the last one.
    std::string Cli(const std::vector<std::string>& command, const std::string& protocol,
                    bool isInUse = false) const
    {
        std::vector<std::string> arguments{"-c", "exec \"$@\" 2>&1", "sh", KELVORA_CLI};
        arguments.insert(arguments.end(), command.begin(), command.end());
        arguments.insert(arguments.end(), {"--line", "1=" + protocol + ":localhost:" + Port()});
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (true) {
            const std::string said = ChildProgram("sh", arguments).Output("(gone)", 30'000);
            const bool tooEarly = said.find("refuses the connection") != std::string::npos ||
                                  (!isInUse && said.find("Port already in use") != std::string::npos);
            if (!tooEarly || std::chrono::steady_clock::now() > deadline)
                return said;
        }
    }

    const std::string file = testing::TempDir() + "kelvora-ser2net-" + std::to_string(getpid()) + ".yaml";
    std::uint16_t number = 0;
    ChildProgram bench{KELVORA_BENCH, {"--modules", "km064,iccr", "--speed", "2400", "--unpaced"}};
    std::string device;
};

const std::vector<std::string> Scan{"scan"};
const std::vector<std::string> Identity{"identity", "read"};

TEST_F(LineServersTest, AnRfc2217ServerCarriesAllThatAWireDoes)
{
    const ChildProgram server = Ser2net("telnet(rfc2217)");
    const std::string scanned = Cli(Scan, "tcp");
    EXPECT_THAT(scanned, StartsWith("KM064 "));
    EXPECT_EQ(Cli(Scan, "rfc2217"), scanned);
    EXPECT_THAT(Cli(Identity, "tcp"), StartsWith("0: AA 55 BF")) << "at the third speed that was tried";
    const Descriptor other = Socket(number, true);
    EXPECT_THAT(Hear(other.Number(), "\x2C"), HasSubstr("\x2C")) << "it has the line now";
    EXPECT_THAT(Cli(Scan, "tcp", true), HasSubstr("Another program holds the port"));
}

TEST_F(LineServersTest, ARawServerCarriesCommandsAlone)
{
    const ChildProgram server("socat",
                              {"TCP-LISTEN:" + Port() + ",bind=127.0.0.1,reuseaddr,fork,max-children=1",
                               "FILE:" + device + ",raw,echo=0,b9600"});
    const std::string scanned = Cli(Scan, "tcp");
    EXPECT_THAT(scanned, StartsWith("KM064 "));
    EXPECT_EQ(Cli(Scan, "raw"), scanned);
    EXPECT_THAT(Cli(Identity, "raw"), HasSubstr("has fixed this line's speed"));
    EXPECT_THAT(Cli(Scan, "rfc2217"), HasSubstr("takes no settings by RFC 2217"));
}

TEST_F(LineServersTest, TelnetAloneKeepsItsSettings)
{
    const ChildProgram server = Ser2net("telnet");
    EXPECT_THAT(Cli(Scan, "tcp"), StartsWith("KM064 "));
    EXPECT_THAT(Cli(Identity, "tcp"), HasSubstr("has fixed this line's speed"));
}

TEST_F(LineServersTest, TheExampleBridgeCarriesCommands)
{
    const ChildProgram bridge("/usr/bin/python3", {KELVORA_BRIDGE, device, Port()});
    EXPECT_THAT(Cli(Scan, "bridge"), StartsWith("KM064 "));
    EXPECT_THAT(Cli(Identity, "bridge"), HasSubstr("carries commands alone"));
    const Descriptor other = Socket(number, true);
    EXPECT_EQ(write(other.Number(), "$9900\n", 6), 6);
    EXPECT_THAT(Hear(other.Number(), "\n"), StartsWith("\xA7m$9900!0"));
    EXPECT_THAT(Cli(Scan, "bridge"), HasSubstr("hung up at once. Its line may be in use"));
}

}  // namespace
}  // namespace kelvora
