#include "cli/CliFixture.h"

namespace kelvora {

class ScanTest : public CliTest {};

TEST_F(ScanTest, PrintsTheSetupOfTheLineOrWritesIt)
{
    EXPECT_THAT(Run({"scan"}), Gives(ExitCode::Done, StartsWith("KM096 main keyboard (214)"), ""));
    access.showsProgress = true;
    EXPECT_THAT(Run({"scan"}).err, AllOf(HasSubstr("[####################"), EndsWith("\r")));
    access.showsProgress = false;

    const std::string path = Write("till.dat", "old");
    EXPECT_THAT(Run({"scan", "-o", path, "--json", "--settings", "9600,n,8,1", "--timeout", "5", "--line",
                     "1=/dev/x", "--line", "2=/dev/y"}),
                Gives(ExitCode::Done, JsonWith({{"file", "COM1"}, {"deviceMap", {214, 23, 4, 191, 3, 8}}})));
    EXPECT_EQ(access.asked.timeout, 5);
    EXPECT_EQ(access.asked.lines, (std::vector<std::string>{"1=/dev/x", "2=/dev/y"}));
    EXPECT_EQ(files.Read(folder + "/till.bak"), "old");
    EXPECT_EQ(Run({"check", path}).exitCode, ExitCode::Done);
}

TEST_F(ScanTest, AFailureWritesNothingAndExitsWithThree)
{
    const std::string path = Write("till.dat", "old");
    const auto fails = [&](const std::vector<std::string>& arguments, const char* says) {
        std::vector<std::string> all{"scan", "-o", path};
        all.insert(all.end(), arguments.begin(), arguments.end());
        EXPECT_THAT(Run(all), Gives(ExitCode::Line, "", HasSubstr(says))) << says;
        EXPECT_EQ(files.Read(path), "old");
    };
    fails({"--port", "2"}, "There is no such device.");
    access.stopAfter = 7;
    fails({}, "stopped");
    access.bench.port.refusal = PortFailure::InUse;
    fails({}, "Another program holds the port.");
    access.bench.port.refusal = PortFailure::None;
    access.bench.line.SetFaults({.silentAfter = {.toHost = 600}});
    fails({}, "The terminal does not answer.");
    EXPECT_FALSE(access.bench.port.IsOpen());
}

TEST_F(ScanTest, AMapThatMakesNoSetupIsToldByItsPosition)
{
    access.bench.line.Terminal().AnswerNext("$9902", "M$9902!0!4+214,3,8,214");
    EXPECT_THAT(Run({"scan", "--json"}),
                Gives(ExitCode::Line, AllOf(JsonWith({{"deviceMap", {214, 3, 8, 214}}}),
                                            HasSubstr("Position 4: code 214, a second main keyboard"))));
}

TEST_F(ScanTest, RefusesOptionsThatMakeNoSense)
{
    ExpectUsage({"scan --port 5", "scan --port 0", "scan --settings 9600,n,7,1", "scan --settings fast",
                 "scan --timeout 0", "scan --timeout x", "scan file.dat"});
}

}  // namespace kelvora
