#include "network/NetworkPort.h"

#include <gmock/gmock.h>

#include "fakes/FakeConnection.h"
#include "fakes/FakeSerialDevices.h"
#include "network/LinePort.h"

namespace kelvora {

using std::chrono::milliseconds;

const std::string Wishes = FromHex("FF FB 00 FF FD 00 FF FB 03 FF FD 03 FF FB 2C");
const std::string Agreed = FromHex("FF FD 00 FF FB 00 FF FD 03 FF FB 03 FF FD 2C");
const std::string WithoutSettings = FromHex("FF FD 00 FF FB 00 FF FD 03 FF FB 03 FF FE 2C");
const std::string NotBinary = FromHex("FF FE 00 FF FB 00 FF FD 03 FF FB 03 FF FD 2C");
/// No flow control, DTR, RTS; then throwing away what was received.
const std::string Lines = FromHex("FF FA 2C 05 01 FF F0 FF FA 2C 05 08 FF F0 FF FA 2C 05 0B FF F0");
const std::string Discard = FromHex("FF FA 2C 0C 01 FF F0");
const std::string Tail = FromHex("FF FA 2C 02 08 FF F0 FF FA 2C 03 01 FF F0 FF FA 2C 04 01 FF F0");
const std::string TailAnswer = FromHex("FF FA 2C 66 08 FF F0 FF FA 2C 67 01 FF F0 FF FA 2C 68 01 FF F0");
const std::string Ask9600 = FromHex("FF FA 2C 01 00 00 25 80 FF F0") + Tail;
const std::string Is9600 = FromHex("FF FA 2C 65 00 00 25 80 FF F0") + TailAnswer;
const std::string Ask2400 = FromHex("FF FA 2C 01 00 00 09 60 FF F0") + Tail;
const std::string Is2400 = FromHex("FF FA 2C 65 00 00 09 60 FF F0") + TailAnswer;

class NetworkPortTest : public testing::Test {
protected:
    // A server that speaks telnet, and sets its port.
    void ServeRfc2217()
    {
        connection.says = {{20, FromHex("FF FB 03 FF FD 2C")}};
        connection.answers = {{Wishes, Agreed}, {Ask9600 + Lines + Discard, Is9600}};
    }

    int OpenMs(bool& opened)
    {
        const auto start = loop.Now();
        opened = port.Open();
        return static_cast<int>((loop.Now() - start) / milliseconds(1));
    }

    FakeEventLoop loop;
    std::unique_ptr<FakeConnection> made = std::make_unique<FakeConnection>(loop);
    FakeConnection& connection = *made;
    NetworkPort port{std::move(made), loop};
};

TEST_F(NetworkPortTest, FindsOutHowTheServerSpeaks)
{
    using enum PortFailure;
    using Says = std::vector<std::pair<int, std::string>>;
    using Answers = std::map<std::string, std::string>;
    const std::string greeting = FromHex("FF FB 03 FF FD 2C");
    const Says greets{{9, greeting}};
    const Says refuses{{9, greeting}, {12, "Port already in use\r\n"}};
    const Answers whole{{Wishes, Agreed}, {Ask9600 + Lines + Discard, Is9600}};
    const Answers otherSpeed{{Wishes, Agreed}, {Ask9600 + Lines + Discard, Is2400}};
    const Answers deaf{{Wishes, Agreed}};
    const Answers noSettings{{Wishes, WithoutSettings}};
    const Answers notBinary{{Wishes, NotBinary}};
    const auto check = [&](const char* why, const char* device, const Says& says, const Answers& answers,
                           int hangsUpMs, PortFailure failure, const char* words, bool fixed, int withinMs) {
        connection.says = says;
        connection.answers = answers;
        connection.hangsUpMs = hangsUpMs;
        connection.written.clear();
        port.SetDevice(device);
        bool opened = false;
        EXPECT_LE(OpenMs(opened), withinMs) << why;
        EXPECT_EQ(opened, failure == None) << why << port.LastError();
        EXPECT_EQ(port.Failure(), failure) << why;
        EXPECT_THAT(port.LastError(), testing::HasSubstr(words)) << why;
        EXPECT_EQ(port.HasFixedSettings(), fixed) << why;
        EXPECT_EQ(connection.isOpen, opened) << why;
        // Telnet bytes to a raw server would go out to the devices.
        if (answers.empty() && std::string_view(device).substr(0, 3) == "raw") {
            EXPECT_TRUE(connection.written.empty()) << why;
        }
    };
    check("RFC 2217", "tcp:a:1", {{300, greeting}}, whole, -1, None, "", false, 330);
    check("in pieces", "tcp:a:1", {{9, "\xFF"}, {20, "\xFB\3"}}, whole, -1, None, "", false, 50);
    check("at once", "rfc2217:a:1", {}, whole, -1, None, "", false, 30);
    check("raw and silent", "tcp:a:1", {}, {}, -1, None, "", true, 520);
    check("raw, with a lone 255", "tcp:a:1", {{9, "\xFF\xFF"}}, {}, -1, None, "", true, 520);
    check("told to be raw", "raw:a:1", greets, {}, -1, None, "", true, 120);
    check("telnet alone", "tcp:a:1", greets, noSettings, -1, None, "", true, 50);
    check("must set", "rfc2217:a:1", {}, noSettings, -1, NoSettings, "no RFC 2217", false, 30);
    check("raw, and must set", "rfc2217:a:1", {}, {}, -1, NoSettings, "no RFC 2217", false, 2020);
    check("not binary", "tcp:a:1", greets, notBinary, -1, Other, "does not pass all bytes", false, 50);
    check("other speed", "tcp:a:1", greets, otherSpeed, -1, BadSettings, "2400,n,8,1", false, 50);
    check("deaf", "tcp:a:1", greets, deaf, -1, NoAnswer, "does not answer to settings", false, 2050);
    check("in use", "tcp:a:1", refuses, {}, 14, InUse, "Port already in use", false, 50);
    check("raw, in use", "raw:a:1", {{9, "busy~\n"}}, {}, 9, InUse, "busy~", false, 50);
    check("raw, without a word", "raw:a:1", {{9, "\1"}}, {}, 9, HungUp, "hung up at once", false, 50);
    check("in use, without a word", "bridge:a:1", {}, {}, 9, HungUp, "hung up at once", false, 50);
}

TEST_F(NetworkPortTest, SaysWhyThereIsNoConnection)
{
    port.SetDevice("tcp:[::1]:4000");
    connection.refusal = PortFailure::Refused;
    EXPECT_FALSE(port.Open());
    EXPECT_EQ(connection.asked, "::1 4000");
    EXPECT_EQ(port.Failure(), PortFailure::Refused);
    EXPECT_EQ(port.LastError(), "the system's words");
    connection.connectMs = 60'000;
    bool opened = false;
    EXPECT_EQ(OpenMs(opened), 5000);
    EXPECT_EQ(port.Failure(), PortFailure::NoAnswer);
    EXPECT_EQ(port.LastError(), "no connection");
    port.SetDevice("/dev/ttyS0");
    EXPECT_FALSE(port.Open());
    EXPECT_EQ(port.Failure(), PortFailure::Missing);
}

TEST_F(NetworkPortTest, CarriesTheLinesBytesAndSettings)
{
    ServeRfc2217();
    port.SetDevice("tcp:a:1");
    ASSERT_TRUE(port.Open());
    int told = 0;
    port.onBytes = [&] { ++told; };
    connection.written.clear();
    port.Write("a\xFFz");
    EXPECT_EQ(connection.written.back(), "a\xFF\xFFz");
    connection.onBytes("b\xFF\xFF\xFF\xFA\x2C\x6B\x10\xFF\xF0yz");
    EXPECT_EQ(port.BytesWaiting(), 4U);
    EXPECT_EQ(port.Read(1), "b");
    EXPECT_EQ(port.Read(1), "\xFF");
    connection.onBytes(FromHex("FF FA 2C 6B 10 FF F0"));
    EXPECT_EQ(told, 1);
    port.DiscardInput();
    EXPECT_EQ(port.Read(), "");
    EXPECT_EQ(connection.written.back(), Discard);

    connection.answers = {{Ask2400, Is2400}};
    EXPECT_TRUE(port.SetSettings("2400,n,8,1"));
    // Half of what was asked is in force: the former is put back.
    const std::string ask1200 = FromHex("FF FA 2C 01 00 00 04 B0 FF F0") + Tail;
    connection.answers = {{ask1200, Is9600}, {Ask2400, Is2400}};
    EXPECT_FALSE(port.SetSettings("1200,n,8,1"));
    EXPECT_EQ(port.Settings(), "2400,n,8,1");
    EXPECT_EQ(connection.written.back(), Ask2400);
    EXPECT_TRUE(port.IsOpen());
    connection.onBytes(std::string(NetworkPort::MaximumInput + 9, 'n'));
    EXPECT_EQ(port.BytesWaiting(), NetworkPort::MaximumInput);
}

TEST_F(NetworkPortTest, ALostConnectionIsAPortThatWentAway)
{
    port.SetDevice("tcp:a:1");
    const auto check = [&](const char* why, const char* words, const std::function<void()>& lose) {
        ServeRfc2217();
        int lost = 0;
        port.onLost = [&] { ++lost; };
        ASSERT_TRUE(port.Open()) << why;
        lose();
        EXPECT_EQ(lost, 1) << why;
        EXPECT_FALSE(port.IsOpen() || connection.isOpen) << why;
        EXPECT_EQ(port.Failure(), PortFailure::Disconnected) << why;
        EXPECT_EQ(port.LastError(), words) << why;
    };
    const auto refuses = [&](const char* settings) { EXPECT_FALSE(port.SetSettings(settings)); };
    check("hung up", "the server has closed the connection", [&] { connection.HangUp(); });
    check("no more settings", "the server does not answer to settings", [&] { refuses("4800,n,8,1"); });
    check("keeps neither", "the server keeps 2400,n,8,1", [&] {
        connection.answers = {{Ask2400, Is9600}, {Ask9600, Is2400}};
        refuses("2400,n,8,1");
    });
    check("not binary any more", "the server does not pass all bytes any more",
          [&] { connection.onBytes(FromHex("FF FE 00")); });
    // What the last one left behind is not heard in the next.
    ServeRfc2217();
    ASSERT_TRUE(port.Open());
    EXPECT_EQ(port.Read(), "");
}

TEST(LinePort, FollowsTheDevicesName)
{
    FakeEventLoop loop;
    FakeSerialDevices devices;
    devices.condition["/dev/ttyS0"] = PortFailure::None;
    auto made = std::make_unique<FakeConnection>(loop);
    FakeConnection& connection = *made;
    LinePort port(std::make_unique<SilentPort>(devices, "/dev/ttyS0"),
                  std::make_unique<NetworkPort>(std::move(made), loop));
    port.SetSettings("1200,n,8,1");
    EXPECT_TRUE(port.Open());
    port.SetDevice("raw:a:1");
    EXPECT_FALSE(port.IsOpen());
    EXPECT_EQ(port.Settings(), "1200,n,8,1");
    std::string heard;
    int lost = 0;
    port.onBytes = [&] { heard += port.Read(); };
    port.onLost = [&] { ++lost; };
    ASSERT_TRUE(port.Open());
    connection.onBytes("x");
    connection.HangUp();
    EXPECT_EQ(heard, "x");
    EXPECT_EQ(lost, 1);
    port.SetDevice("/dev/ttyS0");
    EXPECT_TRUE(port.Open() && !connection.isOpen);
}

}  // namespace kelvora
