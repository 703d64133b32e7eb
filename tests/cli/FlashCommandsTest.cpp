#include <algorithm>
#include <csignal>
#include <tuple>

#include "cli/CliFixture.h"
#include "cli/YesAnswer.h"
#include "flash/DumpText.h"
#include "flash/Images.h"
#include "platform/posix/StopSignal.h"

namespace kelvora {

// Takes the user's wish to stop from the system, as the program does.
class SignalledLineAccess final : public FakeLineAccess {
public:
    bool StopRequested() override { return stop.Requested(); }
    StopSignal stop;
};

class FlashCommandsTest : public CliTest {
protected:
    FlashCommandsTest()
    {
        access.data = folder + "/data";
        WriteTills();
        before = access.bench.Flash();
    }

    std::string BackupFolder() const { return access.data + "/backups"; }
    std::size_t BackupCount() const { return files.List(BackupFolder()).size(); }

    std::string before;
};

TEST_F(FlashCommandsTest, DownloadShowsWhatChangesAndAsks)
{
    access.answer = false;
    const auto change =
        StartsWith("This will change in the device:\n  0006: Composite Keyboard, fiscal keyboard: ");
    EXPECT_THAT(Run({"download", At("other.dat")}),
                Gives(ExitCode::Rejected, _, HasSubstr("It holds what it held before. The answer was no.")));
    EXPECT_THAT(access.questions, ElementsAre(AllOf(change, HasSubstr(BackupFolder()))));
    EXPECT_TRUE(access.bench.Flash() == before);

    access.answer = true;
    EXPECT_THAT(Run({"download", At("other.dat")}),
                Gives(ExitCode::Done, StartsWith("COM1: The download is done.")));
    EXPECT_FALSE(access.bench.Flash() == before);
    EXPECT_EQ(BackupCount(), 1U) << "what was kept at the first try is not kept once more";

    access.answer.reset();
    const auto json = Json::parse(Run({"download", At("till.dat"), "--yes", "--json"}).out);
    EXPECT_EQ(json["device"], "new");
    EXPECT_EQ(json["changes"].size(), 1U);
    EXPECT_THAT(Run({"download", At("other.dat"), "--yes"}).out, change);
    EXPECT_THAT(Run({"download", At("other.dat"), "--yes", "--json"}).out,
                JsonWith({{"device", "same"}, {"backup", nullptr}}));
    EXPECT_EQ(access.questions.size(), 2U);
}

TEST_F(FlashCommandsTest, ADumpIsRestoredAsItIs)
{
    ASSERT_EQ(Run({"dump", "-o", At("till.mem")}).exitCode, ExitCode::Done);
    ASSERT_EQ(Run({"download", "--yes", At("other.dat")}).exitCode, ExitCode::Done);
    const CliResult verify = Run({"verify", At("till.dat"), "--json"});
    EXPECT_THAT(verify,
                Gives(ExitCode::Rejected, JsonWith({{"outcome", "different"}, {"firstDifference", "0006"}})));
    EXPECT_EQ(Json::parse(verify.out)["differences"].size(), 1U);
    EXPECT_THAT(Run({"verify", At("till.dat")}).out,
                HasSubstr("first difference is at address 0006 (hex)\n  options, 0006: Composite Keyboard"));

    EXPECT_EQ(Run({"restore", "--yes", At("till.mem")}).exitCode, ExitCode::Done);
    EXPECT_TRUE(access.bench.Flash() == before);
    EXPECT_EQ(Run({"verify", At("till.dat")}).exitCode, ExitCode::Done);
    // What the device holds was kept each time, as a dump of its own.
    EXPECT_EQ(BackupCount(), 2U);
    EXPECT_EQ(Run({"restore", "--yes", BackupFolder() + "/" + files.List(BackupFolder())[1]}).exitCode,
              ExitCode::Done);
    EXPECT_FALSE(access.bench.Flash() == before);
}

TEST_F(FlashCommandsTest, ADumpOfASetupTakesKeyContentsOnlyOnASecondYes)
{
    ASSERT_EQ(Run({"image", At("till.dat"), "-o", At("setup.mem")}).exitCode, ExitCode::Done);
    const auto lost = std::count_if(before.begin() + 1027, before.end(), [](char c) { return c != '\xFF'; });
    const std::string first =
        "This dump was made from a setup. Bytes of key contents that the device loses: " +
        std::to_string(lost);
    EXPECT_THAT(
        Run({"restore", "--yes", At("setup.mem")}),
        Gives(ExitCode::Rejected, StartsWith(first + "\nThis will change"), HasSubstr("--erase-content")));
    EXPECT_THAT(Run({"restore", "--yes", "--json", At("setup.mem")}).out,
                JsonWith({{"reason", "contents"}, {"contentsLost", lost}}));

    access.answers = {true, false};
    EXPECT_EQ(Run({"restore", At("setup.mem")}).exitCode, ExitCode::Rejected);
    EXPECT_THAT(access.questions,
                ElementsAre(StartsWith(first), HasSubstr("Take this from the device all the same?")));
    EXPECT_TRUE(access.bench.Flash() == before);

    EXPECT_EQ(Run({"restore", "--yes", "--erase-content", At("setup.mem")}).exitCode, ExitCode::Done);
    EXPECT_FALSE(access.bench.Flash() == before);
    // The copy of what the device held asks for no second yes.
    ASSERT_EQ(BackupCount(), 1U);
    const std::string backup = BackupFolder() + "/" + files.List(BackupFolder())[0];
    EXPECT_EQ(Run({"restore", "--yes", backup}).exitCode, ExitCode::Done);
    EXPECT_TRUE(access.bench.Flash() == before);
    // One that names no modules is for this line on the user's word.
    Write("bare.mem", FormatDump(0, Filled(0xFF)));
    EXPECT_EQ(Run({"restore", "--yes", "--this-line", "--erase-content", At("bare.mem")}).exitCode,
              ExitCode::Done);
    EXPECT_EQ(access.bench.Flash(), std::string(8192, '\xFF'));
}

TEST(YesAnswer, KnowsTheWords)
{
    for (const char* const yes : {"y\n", "Y\n", "yes\r\n", "YES", " Yes "})
        EXPECT_TRUE(IsYes(yes, "") && IsYes(yes, "it_IT.UTF-8")) << yes;
    for (const char* const yes : {"s\n", "S", "si", "s\xC3\xAC\n", "S\xC3\x8C\n", "S\xEC"})
        EXPECT_TRUE(IsYes(yes, "it") && !IsYes(yes, "C.UTF-8") && !IsYes(yes, "de_DE")) << yes;
    for (const char* const yes : {"j\n", "Ja"})
        EXPECT_TRUE(IsYes(yes, "de_AT") && !IsYes(yes, "en_GB") && !IsYes(yes, "it_CH")) << yes;
    for (const char* const no : {"", "\n", "n", "ye", "yess", "y n", "no"})
        EXPECT_FALSE(IsYes(no, "it_IT") || IsYes(no, "de_DE")) << no;
}

TEST_F(FlashCommandsTest, WhatWasReadIsUsedThoughTheLineFailsAfterIt)
{
    access.bench.line.Terminal().AnswerNext("$9904", "E$9904 broken");
    const CliResult result = Run({"verify", At("other.dat"), "--json"});
    EXPECT_THAT(result,
                Gives(ExitCode::Rejected, JsonWith({{"outcome", "different"}, {"lineFailure", nullptr}}),
                      HasSubstr("broken")));
    EXPECT_THAT(Json::parse(result.out)["warnings"][0], HasSubstr("broken"));
}

TEST_F(FlashCommandsTest, AnImageOfASetupNeedsNoDevice)
{
    const std::string pairs = "\r\n0000:80 D6 FF 17 FF 04 FF BF FF 03 ";
    const std::string head = "\r\n'Kind: setup\r\n'Setup: " + At("till.dat") + "\r\n'CRC: ";
    const CliResult result = Run({"image", At("till.dat")});
    EXPECT_THAT(result, Gives(ExitCode::Done, AllOf(HasSubstr(head), HasSubstr(pairs))));
    Write("till.mem", "old");
    EXPECT_EQ(Run({"image", At("till.dat"), "-o", At("till.mem")}).exitCode, ExitCode::Done);
    // All but the time at its head.
    const auto behindTitle = [](const std::string& dump) { return dump.substr(dump.find('\n')); };
    EXPECT_EQ(behindTitle(files.Read(At("till.mem"))), behindTitle(result.out) + "\r\n");
    EXPECT_EQ(files.Read(At("till.bak")), "old");

    const std::string object = Run({"image", At("till.dat"), "--json"}).out;
    EXPECT_EQ(behindTitle(Json::parse(object)["dump"]), behindTitle(result.out));
    EXPECT_THAT(object, JsonWith({{"output", nullptr}, {"unheld", Json::array()}}));
    EXPECT_THAT(Run({"image", At("till.dat"), "--json", "-o", At("till.mem")}).out,
                JsonWith({{"dump", nullptr}, {"output", At("till.mem")}}));

    Write("shop/n/till.dat", files.Read(At("till.dat")));
    Write("shop/bad.dat", Rejected);
    Write("images/n/till.mem", "old");
    Write("images/n/till.bak", "a setup's");
    EXPECT_THAT(Run({"image", At("shop"), "--output-folder", At("images")}),
                Gives(ExitCode::Rejected, _, At("shop/bad.dat") + RejectedSays));
    EXPECT_THAT(files.Read(At("images/n/till.mem")),
                AllOf(HasSubstr("'Setup: " + At("shop/n/till.dat") + "\r\n'CRC: "), HasSubstr(pairs)));
    EXPECT_EQ(files.Read(At("images/n/till.mem.bak")), "old");
    EXPECT_EQ(files.Read(At("images/n/till.bak")), "a setup's");
    EXPECT_EQ(Run({"image", At("shop")}).exitCode, ExitCode::Usage);
}

TEST_F(FlashCommandsTest, EveryFailureHasItsExitCodeAndLeavesTheDevice)
{
    const std::string lone = Write("lone.dat", Accepted);
    const std::string broken = Write("broken.mem", "0000:00 oops\r\n");
    const std::string kept = Write("kept.dat", Accepted);
    Write("kept.bak", FormatDump(0, Filled(0)));
    const std::string empty = Write("empty.dat", "[Kelvora]\n");
    const std::string nameless = Write("nameless.mem", FormatDump(0, Filled(0xFF)));
    const std::string other = At("other.dat");
    const std::string none = At("none.dat");
    for (const auto& [command, exitCode, says] : std::vector<std::tuple<std::string, int, const char*>>{
             {"download --yes " + lone, ExitCode::Rejected,
              "On the line: Composite Keyboard, Slave Keyboard, "},
             {"download --yes " + none, ExitCode::Rejected, "No such file"},
             {"restore --yes " + broken, ExitCode::Rejected, "Line 1: "},
             {"restore --yes " + none, ExitCode::Rejected, "No such file"},
             {"verify " + none, ExitCode::Rejected, "No such file"},
             {"image " + none, ExitCode::Rejected, "No such file"},
             {"dump -o " + folder, ExitCode::Rejected, "Is a directory"},
             {"format " + lone + " -o " + folder, ExitCode::Rejected, "Is a directory"},
             {"download --yes --port 2 " + other, ExitCode::Line, "There is no such device."},
             {"verify --port 2 " + other, ExitCode::Line, "There is no such device."},
             {"dump --port 2", ExitCode::Line, "There is no such device."},
             {"download --yes", ExitCode::Usage, "FILE"},
             {"download " + other, ExitCode::Usage, "--yes"},
             {"restore " + other, ExitCode::Usage, "--yes"},
             {"image " + empty, ExitCode::Rejected, "no modules are named"},
             {"restore --yes " + nameless, ExitCode::Rejected, "--this-line"},
             {"format " + lone + " -o " + kept, ExitCode::Rejected, "kept.bak: move that away"},
             {"dump --port 2 -o " + kept, ExitCode::Rejected, "kept.bak: move that away"},
         }) {
        EXPECT_THAT(Run(Words(command)), Gives(exitCode, "", HasSubstr(says))) << command;
    }
    for (const std::string& command :
         {std::string("dump"), std::string("scan"), "image " + lone, "format " + lone, "render " + lone}) {
        std::vector<std::string> arguments = Words(command);
        arguments.insert(arguments.end(), {"-o", ""});
        EXPECT_THAT(Run(arguments).err, HasSubstr("expected the name of a file")) << command;
    }
    // A script always gets an object that says why.
    for (const std::string& command :
         {"download --yes " + broken, "verify " + broken, "restore --yes " + broken,
          std::string("dump --port 2"), "dump -o " + folder, std::string("scan --port 2"),
          "scan -o " + folder, "show " + broken, "diff " + none + " " + broken,
          "format " + other + " -o " + folder, "image " + broken, "image " + other + " -o " + folder,
          "identity restore --yes " + broken}) {
        const CliResult result = Run(Words(command + " --json"));
        EXPECT_NE(result.exitCode, ExitCode::Done) << command;
        ASSERT_TRUE(Json::accept(result.out)) << command << result.out;
        EXPECT_NE(Json::parse(result.out).value("message", ""), "") << result.out;
        EXPECT_EQ(result.out.find("kelvora-cli: "), std::string::npos) << result.out;
    }
    // Where no backup can be kept nothing is written.
    access.data = At("till.dat");
    EXPECT_EQ(Run({"download", "--yes", At("other.dat")}).exitCode, ExitCode::Rejected);
    access.data = folder;
    access.stopAfter = 20;
    EXPECT_THAT(Run({"download", "--yes", "--json", At("other.dat")}),
                Gives(ExitCode::Line, JsonWith({{"device", "old"}})));
    EXPECT_TRUE(access.bench.Flash() == before);
}

TEST_F(FlashCommandsTest, CtrlCTwiceDuringTheCommitDoesNotBreakIt)
{
    SignalledLineAccess signalled;
    signalled.data = folder;
    int commits = 0;
    signalled.bench.link.watcher = [&](const LineTraffic& traffic) {
        const bool isCommit = traffic.bytes.size() > 20 && traffic.bytes.substr(5).starts_with("0FB3");
        if (isCommit && traffic.direction == LineTraffic::Direction::Sent) {
            ++commits;
            raise(SIGINT);
            raise(SIGINT);
        }
    };
    EXPECT_EQ(Run({"download", "--yes", At("other.dat")}, {}, &signalled).exitCode, ExitCode::Done);
    EXPECT_EQ(commits, 1);
    EXPECT_FALSE(signalled.bench.Flash() == before);
    EXPECT_EQ(signalled.stop.Count(), 1);
    const StopSignal keepsThisProgram;
    raise(SIGTERM);
    EXPECT_EQ(signalled.stop.Count(), 3) << "Ctrl+C counts once, and twice what leaves no time";
}

}  // namespace kelvora
