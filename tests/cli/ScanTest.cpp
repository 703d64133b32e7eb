#include "cli/CliFixture.h"

namespace kelvora {

namespace {

class ScanTest : public CliTest {};

TEST_F(ScanTest, PrintsTheSetupOfTheLineOrWritesIt)
{
    CliResult result = Run({"scan"});
    EXPECT_EQ(result.exitCode, ExitCode::Done);
    EXPECT_THAT(result.out, StartsWith("KM096 main keyboard (214)"));
    EXPECT_EQ(result.err, "");
    access.showsProgress = true;
    result = Run({"scan"});
    EXPECT_THAT(result.err, HasSubstr("[####################"));
    EXPECT_TRUE(result.err.ends_with('\r'));
    access.showsProgress = false;

    const std::string path = Write("till.dat", "old");
    result = Run({"scan", "-o", path, "--json", "--settings", "9600,n,8,1", "--timeout", "5", "--line",
                  "1=/dev/x", "--line", "2=/dev/y"});
    EXPECT_EQ(result.exitCode, ExitCode::Done);
    const auto json = nlohmann::json::parse(result.out);
    EXPECT_EQ(json["file"], "COM1");
    EXPECT_EQ(json["deviceMap"], nlohmann::json({214, 23, 4, 191, 3, 8}));
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
    bench::FaultPlan dead;
    dead.silentAfter.toHost = 600;
    access.bench.line.SetFaults(dead);
    fails({}, "The terminal does not answer.");
    EXPECT_FALSE(access.bench.port.IsOpen());
}

TEST_F(ScanTest, AMapThatMakesNoSetupIsToldByItsPosition)
{
    access.bench.line.Terminal().AnswerNext("$9902", "M$9902!0!4+214,3,8,214");
    const CliResult result = Run({"scan", "--json"});
    EXPECT_EQ(result.exitCode, ExitCode::Line);
    const auto json = nlohmann::json::parse(result.out);
    EXPECT_EQ(json["deviceMap"], nlohmann::json({214, 3, 8, 214}));
    EXPECT_THAT(json["message"].get<std::string>(),
                HasSubstr("Position 4: code 214, a second main keyboard"));
}

TEST_F(ScanTest, RefusesOptionsThatMakeNoSense)
{
    ExpectUsage({"scan --port 5", "scan --port 0", "scan --settings 9600,n,7,1", "scan --settings fast",
                 "scan --timeout 0", "scan --timeout x", "scan file.dat"});
}

}  // namespace

}  // namespace kelvora
