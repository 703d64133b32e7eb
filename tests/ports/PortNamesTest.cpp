#include "ports/PortNames.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "comms/PortTrial.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakeSerialDevices.h"

using namespace kelvora;
using testing::HasSubstr;

namespace {

const std::string Path = "/home/ada/.config/Kelvora/ports.ini";

std::string ArgumentError(const std::string& argument)
{
    try {
        ParseLineArgument(argument);
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    return {};
}

}  // namespace

TEST(PortNames, ReadsAFile)
{
    const PortDevices defaults{"/dev/ttyS0", "/dev/ttyS1", "/dev/ttyS2", "/dev/ttyS3"};
    EXPECT_EQ(ReadPorts(""), defaults);
    EXPECT_EQ(ReadPorts("[PORTS]"), defaults);
    EXPECT_EQ(ReadPorts("' a\r\n; b\n# c\n: d\n\n [ports] \r\n\tcom4=/dev/ttyUSB0 \r\nCOM2 =  /dev/Line\xE8 "
                        "2\ncom3=bridge:a:1"),
              (PortDevices{"/dev/ttyS0", "/dev/Line\xE8 2", "bridge:a:1", "/dev/ttyUSB0"}));

    struct Row {
        std::string reason, text;
        std::size_t line;
        int expected;
    };
    const std::vector<Row> rows{
        {"no section", "COM1=/dev/a", 1, 721},
        {"another section", "[PORTS]\n\n[PORT]\n", 3, 721},
        {"no value", "[PORTS]\nCOM1", 2, 722},
        {"no such port", "[PORTS]\nCOM5=/dev/a", 2, 722},
        {"more than a digit", "[PORTS]\nCOM12=/dev/a", 2, 722},
        {"no path", "[PORTS]\r\nCOM1=\r\n", 2, 724},
        {"a carriage return in the path", "[PORTS]\nCOM1=/dev/a\rCOM2=/dev/b", 2, 724},
        {"a zero in the path", std::string("[PORTS]\nCOM1=/dev/a\0b", 21), 2, 724},
        {"a path without end", "[PORTS]\nCOM1=/" + std::string(4096, 'a'), 2, 724},
        {"a port twice", "[PORTS]\nCOM1=/dev/a\nCOM2=/dev/b\nCOM1=/dev/a", 4, 723},
    };
    for (const Row& row : rows) {
        try {
            ReadPorts(row.text);
            ADD_FAILURE() << row.reason;
        } catch (const PortsFileError& error) {
            EXPECT_EQ(error.Line(), row.line) << row.reason;
            EXPECT_EQ(error.ExpectedHere().id, row.expected) << row.reason;
        }
    }
}

TEST(PortNames, WhatIsWrittenReadsBackWhateverThePaths)
{
    std::mt19937 random(1);
    const std::string bytes = std::string("[]='; \t\r\n:#\0/_", 15) + "com1\xE8\xFF\x7F";
    const auto any = [&](std::size_t size) {
        std::string text;
        while (text.size() < size)
            text += bytes.at(random() % bytes.size());
        return text;
    };
    int carried = 0;
    for (std::size_t i = 0; i < 20'000; ++i) {
        const PortDevices devices{"/" + any(1 + i % 7), "/dev/ttyUSB0", "/dev/" + any(3), "/dev/a b"};
        if (IsLineDevice(devices[0]) && IsLineDevice(devices[2])) {
            ++carried;
            EXPECT_EQ(ReadPorts(PortsText(devices)), devices);
        }
        try {
            ReadPorts("[PORTS]\n" + any(24));
        } catch (const PortsFileError& error) {
            EXPECT_GE(error.Line(), 2U);
        }
    }
    EXPECT_GT(carried, 100);
}

TEST(PortNames, ParsesTheLineArgument)
{
    EXPECT_EQ(ParseLineArgument("1=/dev/ttyUSB0"), (LineArgument{1, "/dev/ttyUSB0"}));
    EXPECT_EQ(ParseLineArgument("4=/dev/a=b"), (LineArgument{4, "/dev/a=b"}));
    EXPECT_EQ(ParseLineArgument("2=tcp:[::1]:4000"), (LineArgument{2, "tcp:[::1]:4000"}));
    EXPECT_THAT(ArgumentError("/dev/ttyUSB0"), HasSubstr("\"/dev/ttyUSB0\" has no \"=\""));
    for (const std::string argument : {"0=/dev/a", "5=/dev/a", "=/dev/a", "COM1=/dev/a", "11=/dev/a"})
        EXPECT_THAT(ArgumentError(argument), HasSubstr("names no line")) << argument;
    for (const std::string argument : {"1=", "1=ttyUSB0", "1=/", "1=/dev/a\n", "1=tcp:a"})
        EXPECT_THAT(ArgumentError(argument), HasSubstr("names no port")) << argument;
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
    open.Open();
    names.ApplyTo({&first, &open, nullptr, nullptr});
    EXPECT_EQ(first.Device(), "/dev/last");
    EXPECT_EQ(open.Device(), "/dev/busy") << "nobody takes a line away under its operation";
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
    devices.condition = {
        {"/dev/free", PortFailure::None},         {"/dev/held", PortFailure::InUse},
        {"/dev/closed", PortFailure::NotAllowed}, {"/dev/root", PortFailure::NotAllowed},
        {"/dev/slow", PortFailure::BadSettings},  {"/dev/odd", PortFailure::Other},
        {"/dev/null", PortFailure::NotSerial},    {"/dev/pts/9", PortFailure::PseudoTerminal},
        {"tcp:a:1", PortFailure::HostNotFound},   {"tcp:a:2", PortFailure::Refused},
        {"tcp:a:3", PortFailure::NoAnswer},       {"rfc2217:a:4", PortFailure::NoSettings},
        {"bridge:a:5", PortFailure::None},        {"tcp:a:6", PortFailure::HungUp}};
    devices.groups["/dev/closed"] = "dialout";
    devices.condition["/dev/known"] = PortFailure::InUse;
    devices.holders["/dev/known"] = "minicom (PID 1234)";
    SilentPort port(devices, "/dev/own");
    struct Row {
        std::string device, text;
    };
    for (const Row& row :
         {Row{"/dev/free", "The port opens."},
          Row{"/dev/gone", "There is no such device. Check that the adapter is plugged in."},
          Row{"/dev/held", "Another program holds the port. Close that program, then try again."},
          Row{"/dev/known",
              "Another program holds the port. Close that program, then try again.\r\n"
              "The program that holds it: minicom (PID 1234)"},
          Row{"/dev/closed",
              "Your account may not use this port.\r\nThe group that may: dialout.\r\n"
              "This command adds you to it; afterwards log out and in again:\r\n"
              "sudo usermod -aG dialout $USER"},
          Row{"/dev/root",
              "Your account may not use this port.\r\n"
              "No group may use it: ask who administers this machine."},
          Row{"/dev/slow", "The port does not take these settings: 9600,n,8,1"},
          Row{"/dev/pts/9",
              "A pseudo-terminal takes 8 data bits without parity only, not these settings: 9600,n,8,1"},
          Row{"/dev/null", "This is not a serial port. Choose the device of one."},
          Row{"/dev/odd", "The port does not open: the system's words"},
          Row{"tcp:a:1", "There is no machine of that name. Check the name, and the network."},
          Row{"tcp:a:2",
              "The machine refuses the connection. Check the number behind its name, and that its server "
              "runs."},
          Row{"tcp:a:3", "The server does not answer. Check its address, the network and the firewall."},
          Row{"rfc2217:a:4",
              "The server takes no settings by RFC 2217. Write tcp: or raw:, and set the speed in the "
              "server."},
          Row{"tcp:a:6", "The server hung up at once. Its line may be in use, or the server cannot open it."},
          Row{"bridge:a:5", "The connection is made. A scan shows whether a bridge answers."}}) {
        EXPECT_EQ(DescribeTrial({}, TryDevice(port, row.device)), row.text) << row.device;
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
