#include "ports/PortNames.h"

#include <gmock/gmock.h>

#include "comms/PortTrial.h"
#include "fakes/FakeEventLoop.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakeSerialDevices.h"
#include "ports/Lines.h"

using namespace kelvora;
using testing::HasSubstr;

const std::string Path = "/home/ada/.config/Kelvora/ports.ini";

TEST(PortNames, ReadsAFile)
{
    const PortDevices defaults{"/dev/ttyS0", "/dev/ttyS1", "/dev/ttyS2", "/dev/ttyS3"};
    EXPECT_EQ(ReadPorts(""), defaults);
    EXPECT_EQ(ReadPorts("[PORTS]"), defaults);
    EXPECT_EQ(ReadPorts("' a\r\n; b\n# c\n: d\n\n [ports] \r\n\tcom4=/dev/ttyUSB0 \r\nCOM2 =  /dev/Line\xE8 "
                        "2\ncom3=bridge:a:1"),
              (PortDevices{"/dev/ttyS0", "/dev/Line\xE8 2", "bridge:a:1", "/dev/ttyUSB0"}));

    const auto check = [&](const std::string& reason, const std::string& text, std::size_t line,
                           int expected) {
        const auto id = [](const PortsFileError& error) { return error.ExpectedHere().id; };
        EXPECT_THAT([&] { ReadPorts(text); },
                    testing::Throws<PortsFileError>(testing::AllOf(
                        testing::Property(&PortsFileError::Line, line), testing::ResultOf(id, expected))))
            << reason;
    };
    check("no section", "COM1=/dev/a", 1, 721);
    check("another section", "[PORTS]\n\n[PORT]\n", 3, 721);
    check("no value", "[PORTS]\nCOM1", 2, 722);
    check("no such port", "[PORTS]\nCOM5=/dev/a", 2, 722);
    check("more than a digit", "[PORTS]\nCOM12=/dev/a", 2, 722);
    check("no path", "[PORTS]\r\nCOM1=\r\n", 2, 724);
    check("a carriage return in the path", "[PORTS]\nCOM1=/dev/a\rCOM2=/dev/b", 2, 724);
    check("a zero in the path", std::string("[PORTS]\nCOM1=/dev/a\0b", 21), 2, 724);
    check("a path without end", "[PORTS]\nCOM1=/" + std::string(4096, 'a'), 2, 724);
    check("a port twice", "[PORTS]\nCOM1=/dev/a\nCOM2=/dev/b\nCOM1=/dev/a", 4, 723);
}

TEST(PortNames, ParsesTheLineArgument)
{
    EXPECT_EQ(ParseLineArgument("1=/dev/ttyUSB0"), (LineArgument{1, "/dev/ttyUSB0"}));
    EXPECT_EQ(ParseLineArgument("4=/dev/a=b"), (LineArgument{4, "/dev/a=b"}));
    EXPECT_EQ(ParseLineArgument("2=tcp:[::1]:4000"), (LineArgument{2, "tcp:[::1]:4000"}));
    const auto refused = [](const std::string& argument, const char* words) {
        EXPECT_THAT([&] { ParseLineArgument(argument); },
                    testing::ThrowsMessage<std::invalid_argument>(HasSubstr(words)))
            << argument;
    };
    refused("/dev/ttyUSB0", "\"/dev/ttyUSB0\" has no \"=\"");
    for (const char* const argument : {"0=/dev/a", "5=/dev/a", "=/dev/a", "COM1=/dev/a", "11=/dev/a"})
        refused(argument, "names no line");
    for (const char* const argument : {"1=", "1=ttyUSB0", "1=/", "1=/dev/a\n", "1=tcp:a"})
        refused(argument, "names no port");
    EXPECT_TRUE(IsLineDevice("/d") && IsLineDevice("/" + std::string(4095, 'a')));
}

TEST(PortNames, CommandLineCountsBeforeTheFileAndIsNotKept)
{
    FakeFiles files;
    files.content[Path] = "[PORTS]\nCOM1=/dev/one\nCOM2=/dev/two\n";
    PortNames names(files, Path, {{1, "/dev/first"}, {1, "/dev/last"}});
    EXPECT_EQ(names.Devices(), (PortDevices{"/dev/last", "/dev/two", "/dev/ttyS2", "/dev/ttyS3"}));

    names.Take(names.Devices());
    EXPECT_FALSE(names.IsChanged());
    names.Take({"/dev/x", "/dev/y", "/dev/ttyS2", "/dev/ttyS3"});
    EXPECT_EQ(names.Devices(), (PortDevices{"/dev/last", "/dev/y", "/dev/ttyS2", "/dev/ttyS3"}));
    EXPECT_TRUE(names.IsChanged());
    names.Save();
    EXPECT_EQ(files.content[Path],
              "' The devices behind COM1 to COM4.\r\n[PORTS]\r\nCOM1 = /dev/one\r\nCOM2 = /dev/y\r\n"
              "COM3 = /dev/ttyS2\r\nCOM4 = /dev/ttyS3\r\n");

    FakeSerialDevices devices;
    devices.condition["/dev/busy"] = PortFailure::None;
    SilentPort first(devices, "/dev/a");
    SilentPort open(devices, "/dev/busy");
    SilentPort fourth(devices, "/dev/a");
    open.Open();
    names.ApplyTo({&first, &open, nullptr, &fourth});
    EXPECT_EQ(first.Device(), "/dev/last");
    EXPECT_EQ(fourth.Device(), "/dev/ttyS3");
    EXPECT_EQ(open.Device(), "/dev/busy") << "nobody takes a line away under its operation";

    PortNames free(files, Path, {});
    free.Take({"/dev/x", "/dev/y", "/dev/ttyS2", "/dev/ttyS3"});
    EXPECT_EQ(free.Devices().front(), "/dev/x");
}

TEST(Lines, EachHasItsPort)
{
    FakeEventLoop loop;
    FakeSerialDevices devices;
    std::array<SilentPort, 4> ports{SilentPort(devices, "1"), SilentPort(devices, "2"),
                                    SilentPort(devices, "3"), SilentPort(devices, "4")};
    Lines lines({&ports[0], &ports[1], &ports[2], &ports[3]}, loop);
    for (int line = 1; line <= LineCount; ++line) {
        EXPECT_EQ(lines.Port(line)->Device(), std::to_string(line));
        EXPECT_EQ(lines.Terminals().Channel(line)->Device(), std::to_string(line));
    }
}

TEST(PortNames, BrokenFileLeavesTheDefaultsAndIsExplained)
{
    FakeFiles files;
    EXPECT_FALSE(PortNames(files, Path, {}).HasProblem()) << "no file is no problem";
    files.content[Path] = "[PORTS]\nCOM1=/dev/one\nCOM2\n";
    const PortNames broken(files, Path, {});
    EXPECT_EQ(broken.Devices(), DefaultPortDevices());
    EXPECT_EQ(broken.Problem({}), "The port names could not be read. The built-in ports are used.\r\n" +
                                      Path + "\r\nLine 3: Expected here: COM1 to COM4, \"=\" and a device");
    files.unreadable.insert(Path);
    EXPECT_THAT(PortNames(files, Path, {}).Problem({}), HasSubstr(Path + "\r\nPermission denied"));
}

TEST(PortTrial, SaysWhyAPortDoesNotOpenAndLeavesItAsItWas)
{
    FakeSerialDevices devices;
    devices.condition = {{"/dev/free", PortFailure::None},
                         {"/dev/known", PortFailure::InUse},
                         {"/dev/closed", PortFailure::NotAllowed},
                         {"/dev/root", PortFailure::NotAllowed},
                         {"/dev/slow", PortFailure::BadSettings},
                         {"/dev/odd", PortFailure::Other},
                         {"/dev/pts/9", PortFailure::PseudoTerminal},
                         {"bridge:a:5", PortFailure::None}};
    devices.groups["/dev/closed"] = "dialout";
    devices.holders["/dev/known"] = "minicom (PID 1234)";
    SilentPort port(devices, "/dev/own");
    const char* const closed =
        "Your account may not use this port.\r\nThe group that may: dialout.\r\n"
        "This command adds you to it; afterwards log out and in again:\r\nsudo usermod -aG dialout $USER";
    for (const auto& [device, text] : std::vector<std::pair<std::string, const char*>>{
             {"/dev/free", "The port opens."},
             {"/dev/gone", "There is no such device."},
             {"/dev/known", "try again.\r\nThe program that holds it: minicom (PID 1234)"},
             {"/dev/closed", closed},
             {"/dev/root", "No group may use it"},
             {"/dev/slow", "does not take these settings: 9600,n,8,1"},
             {"/dev/pts/9", "8 data bits without parity only, not these settings: 9600,n,8,1"},
             {"/dev/odd", "The port does not open: the system's words"},
             {"bridge:a:5", "A scan shows whether a bridge answers."}}) {
        EXPECT_THAT(DescribeTrial({}, TryDevice(port, device)), HasSubstr(text)) << device;
        EXPECT_EQ(port.Device(), "/dev/own");
        EXPECT_FALSE(port.IsOpen());
    }
    port.fixedSettings = true;
    EXPECT_EQ(DescribeTrial({}, TryDevice(port, "/dev/free")),
              "The server answers. Speed and parity of the line are what is set in the server.");
    devices.condition["/dev/own"] = PortFailure::None;
    port.Open();
    EXPECT_EQ(TryDevice(port, "/dev/free").failure, PortFailure::InUse);
    EXPECT_TRUE(port.IsOpen());
}
