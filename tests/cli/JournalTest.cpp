// What commands leave in the journal, and what is shown of it.

#include "cli/CliFixture.h"

namespace kelvora {

using Result = JournalEntry::Result;

class JournalCommandTest : public CliTest {
protected:
    JournalCommandTest() { access.data = folder + "/data"; }

    std::string Other()
    {
        WriteTills();
        return At("other.dat");
    }
};

TEST_F(JournalCommandTest, EveryOperationOnADeviceLeavesAnEntryOrTellsThatItCannot)
{
    const std::string other = Other();
    access.answer = false;
    const std::string dump = At("d.mem");
    for (const std::string& command :
         {"verify " + other, "download " + other, "download --yes " + other, "download --yes " + other,
          "dump -o " + dump, "restore --yes " + dump, std::string("identity read"),
          std::string("identity write 3 KEYLOCK --yes"), std::string("dump --port 2"),
          std::string("identity write 3 KEYLOCK"), "check " + other, "download --yes " + At("none.dat")})
        Run(Words(command));
    const std::vector<JournalEntry> entries = access.kept.Entries();
    std::vector<std::string> story;
    for (const JournalEntry& entry : entries)
        story.push_back(entry.operation + " " + ResultName(entry.result));
    EXPECT_THAT(story, ElementsAre("scan done", "verify different", "download declined", "download done",
                                   "download same", "dump done", "restore same", "identity read done",
                                   "identity write done", "dump failed", "identity write declined"));
    const JournalEntry& download = entries.at(3);
    EXPECT_EQ(download.device, "bench");
    EXPECT_EQ(download.terminal, "BENCH TERMINAL");
    EXPECT_EQ(download.modules, "KM096, KM064, MCR, ICCR");
    EXPECT_EQ(download.file, other);
    EXPECT_EQ(download.sha256, "hash of " + std::to_string(files.Read(other).size()));
    EXPECT_EQ(download.crcBefore, entries.at(0).crcAfter);
    EXPECT_EQ(download.crcAfter, entries.at(4).crcBefore);
    EXPECT_NE(download.crcAfter, download.crcBefore);
    EXPECT_TRUE(files.Exists(download.backup));
    EXPECT_EQ(entries.at(2).crcAfter, entries.at(2).crcBefore);
    EXPECT_EQ(entries.at(1).modules, "KM096, KM064, MCR, ICCR") << "of the image";
    EXPECT_EQ(entries.at(7).modules, "KM96CM, LCD, KEYLOCK, KM64, MCR 1+2+3, ICCR");
    EXPECT_TRUE(files.Exists(entries.at(8).backup));
    EXPECT_THAT(entries.at(9).message, HasSubstr("There is no such device."));
    EXPECT_THAT(entries.at(1).message, EndsWith("The first difference is at address 0006 (hex)"));

    access.stopAfter = 5;
    Run({"verify", other});
    EXPECT_EQ(access.kept.Last().result, Result::Stopped);

    access.kept.failure = "No space left on device";
    EXPECT_THAT(Run({"dump", "-o", dump}),
                Gives(ExitCode::Done, _, HasSubstr("journal.jsonl: No space left on device")));
}

TEST_F(JournalCommandTest, ShowsWhatFits)
{
    const auto keep = [this](const char* time, const char* terminal, Result result) {
        access.kept.text += JournalLine({.time = time,
                                         .operation = JournalOperation::Download,
                                         .line = 2,
                                         .terminal = terminal,
                                         .result = result,
                                         .message = "two\nlines"});
    };
    keep("2026-03-08T23:59:59+01:00", "TILL1", Result::Done);
    keep("2026-03-09T00:00:00+01:00", "TILL2", Result::Failed);
    access.kept.text += "{\"time\":\"2026\n";
    keep("2026-03-09T12:30:00+01:00", "till2", Result::Same);

    const auto check = [&](const std::vector<std::string>& options,
                           const std::vector<std::string>& expected) {
        std::vector<std::string> arguments = options;
        arguments.insert(arguments.begin(), "journal");
        const CliResult shown = Run(arguments);
        EXPECT_EQ(shown.exitCode, ExitCode::Done);
        std::istringstream lines(shown.out);
        std::vector<std::string> times;
        for (std::string line; std::getline(lines, line);)
            times.push_back(line.substr(8, 11));
        EXPECT_EQ(times, expected) << testing::PrintToString(arguments);
        EXPECT_THAT(shown.err, HasSubstr("damaged lines of the journal, left out: 1"));
    };
    check({}, {"08 23:59:59", "09 00:00:00", "09 12:30:00"});
    check({"--since", "2026-03-09"}, {"09 00:00:00", "09 12:30:00"});
    check({"--since", "2026-03-09 12:30"}, {"09 12:30:00"});
    check({"--since", "2026-03-09 00:00:01"}, {"09 12:30:00"});
    check({"--name", "Till2"}, {"09 00:00:00", "09 12:30:00"});
    check({"--failed"}, {"09 00:00:00"});
    check({"--failed", "--name", "TILL1"}, {});
    EXPECT_THAT(Run({"journal", "--failed"}).out,
                "2026-03-09 00:00:00  COM2  download: failed; TILL2; two lines\n");
    EXPECT_EQ(Json::parse(Run({"journal", "--failed", "--json"}).out)["terminal"], "TILL2");
    for (const char* date :
         {"yesterday", "2026-13-01", "2026-3-9", "2026-03-09 7", "2026-03-09T07:05", "2026-02-30", ""})
        EXPECT_EQ(Run({"journal", "--since", date}).exitCode, ExitCode::Usage) << date;
}

TEST_F(JournalCommandTest, ASeriesAsksOnceAndTellsWhatHappens)
{
    const std::string other = Other();
    EXPECT_EQ(Run({"series", other}).exitCode, ExitCode::Usage) << "nobody can be asked";
    access.answer = false;
    EXPECT_EQ(Run({"series", other, "--count", "1"}).exitCode, ExitCode::Rejected);
    EXPECT_THAT(access.questions.back(), AllOf(HasSubstr("1 till, one after another"), HasSubstr(other)));

    access.answer = true;
    EXPECT_THAT(
        Run({"series", other, "--count", "1"}),
        Gives(ExitCode::Done, AllOf(StartsWith("COM1: waiting for a terminal\nCOM1: found BENCH TERMINAL\n"
                                               "COM1: BENCH TERMINAL: done: The download is done."),
                                    HasSubstr("fiscal keyboard: "),
                                    EndsWith("COM1: 1 done, 0 held the setup already, 0 failed\n"))));
    EXPECT_EQ(access.questions.size(), 2U);

    const CliResult json = Run({"series", "--yes", "--json", "--count", "1", "--by-name", folder});
    EXPECT_EQ(json.exitCode, ExitCode::Rejected) << "the folder has no file of that name";
    std::vector<std::string> events;
    for (const Json& line : JsonLines(json.out))
        events.push_back(line["event"]);
    EXPECT_THAT(events, ElementsAre("waiting", "found", "result", "end"));
    Write("Bench Terminal.dat", files.Read(other));
    EXPECT_THAT(Run({"series", "--yes", "--count", "1", "--by-name", folder}).out,
                HasSubstr("held the setup already"));

    ExpectUsage({"series --yes", "series --yes " + other + " --by-name " + folder,
                 "series --yes --count 0 " + other});
    EXPECT_EQ(Run({"series", "--yes", At("none.dat")}).exitCode, ExitCode::Rejected);
    // A single line is the one that is meant.
    access.stops = 1;
    EXPECT_EQ(Run({"series", "--yes", "--line", "2=/dev/null", other}).exitCode, ExitCode::Done);
    EXPECT_EQ(access.asked.port, 2);
}

}  // namespace kelvora
