#include "cli/Identity.h"

#include "cli/CliFixture.h"
#include "eeprom/ScriptedPort.h"

namespace kelvora {

using Action = IdentityRequest::Action;

// A line with a composite keyboard's first part and a badge reader.
class IdentityCli : public CliTest {
protected:
    IdentityCli() { Attach(port, {CompositeReply, BadgeReply}); }

    CliResult Run(IdentityRequest request, bool answer = false)
    {
        request.folder = folder + "/saved";
        const auto ask = [&](const std::string& question) {
            questions.push_back(question);
            stop = stopsWhileAsked;
            return answer;
        };
        const CliResult result = OnConsole([&](Console& console) {
            return Identity(request, {port, loop, files, [this] { return stop; }, ask}, console);
        });
        EXPECT_FALSE(port.IsOpen());
        return result;
    }

    FakeEventLoop loop;
    ScriptedPort port{loop};
    bool stop = false;
    bool stopsWhileAsked = false;
    std::vector<std::string> questions;
};

const std::string Request = Bytes("\x02\x0C\x01\xFA\x00\xAA\xAA\x55\xBF\x00\x00\x00\x00\x00\x11\x03");

TEST_F(IdentityCli, PrintsTheModules)
{
    EXPECT_THAT(Run({}),
                Gives(0, "0: AA 55 D6 17 FF FF 04 00  KM96CM\n1: AA 55 00 00 00 02 00 00  MCR 2+3\n", ""));
    port.answers[ReadRequest[1]] = {{{20, "\x15"}}};
    IdentityRequest json;
    json.json = true;
    EXPECT_THAT(Run(json),
                Gives(3,
                      "{\"address\":0,\"identity\":\"KM96CM\",\"block\":\"AA 55 D6 17 FF FF 04 00\"}\n"
                      "{\"address\":1,\"identity\":\"UNKNOWN\",\"block\":null}\n"));
    stop = true;
    EXPECT_EQ(Run({}).err, "kelvora-cli: the search was stopped\n");
    stop = false;
    port.answers.clear();
    EXPECT_EQ(Run({}).err, "kelvora-cli: No MID modules found\n");
    EXPECT_EQ(Run(json).out, "{\"port\":\"COM1\",\"file\":null,\"message\":\"No MID modules found\"}\n");
    port.SetDevice("bridge:a:1");
    EXPECT_THAT(Run({}).err, HasSubstr("bridge:a:1: A bridge stands behind this line."));
}

TEST_F(IdentityCli, AStopIsHeardUntilTheFirstByteIsWritten)
{
    stopsWhileAsked = true;
    EXPECT_THAT(Run({Action::Write, 1, "km64"}, true),
                Gives(3, _, "kelvora-cli: the work was stopped; nothing was written\n"));
    EXPECT_EQ(std::ranges::count(port.written, Request), 0);
    EXPECT_EQ(files.List(folder + "/saved"), std::vector<std::string>());
}

TEST_F(IdentityCli, WritesAfterAYesAndRestores)
{
    const IdentityRequest write{Action::Write, 1, "km64"};
    EXPECT_EQ(Run(write).exitCode, 1) << "the answer was no";
    EXPECT_EQ(std::ranges::count(port.written, Request), 0);
    EXPECT_THAT(questions, ElementsAre(HasSubstr("AA 55 BF 00 00 00 00 00")));
    port.answers[Request] = {{{20, "\x06"}}};
    port.answers[ReadRequest[1]] = {Reply(BadgeReply), Reply(SlaveReply)};
    const CliResult written = Run(write, true);
    const std::string saved = std::filesystem::directory_iterator(folder + "/saved")->path();
    EXPECT_THAT(written, Gives(0, HasSubstr("1: AA 55 BF 00 00 00 00 00  KM64\n"), HasSubstr(saved)));

    // Nothing answers the request to write the first block back, and it still holds what it should.
    IdentityRequest restore{Action::Restore, 0, {}, saved};
    port.answers[ReadRequest[1]] = {Reply(SlaveReply)};
    EXPECT_THAT(Run(restore, true), Gives(3, _,
                                          AllOf(HasSubstr("Addresses that failed: 0, 1\n"),
                                                HasSubstr("do not hold what was written: 1\n"))));
}

TEST_F(CliTest, IdentityIsWrittenUnaskedWithYesAlone)
{
    access.data = folder;
    EXPECT_EQ(Run({"identity", "write", "3", "mcr 2+3"}).exitCode, 2) << "no terminal";
    EXPECT_THAT(Run({"identity", "write", "3", "mcr 2+3", "--yes"}),
                Gives(0, HasSubstr("3: AA 55 00 00 00 02 00 00  MCR 2+3\n4: "),
                      AllOf(HasSubstr("\n* Address 3: KM64 >> MCR 2+3, changed\n"), Not(HasSubstr("?")))));
    EXPECT_EQ(access.bench.line.Memory().modules[3][5], 2);
}

TEST_F(IdentityCli, RefusesWhatCannotBeWritten)
{
    for (const auto& [address, name] :
         std::vector<std::pair<std::size_t, std::string>>{{6, "KM64"}, {0, "LCD (unlit)"}, {0, "UNKNOWN"}}) {
        EXPECT_EQ(Run({Action::Write, address, name}).exitCode, 2) << address << name;
        EXPECT_TRUE(port.written.empty());
    }
    EXPECT_THAT(Run({Action::Write, 5, "ICCR"}).err, HasSubstr("were not read from this line: 5\n"));
    EXPECT_THAT(
        Run({Action::Restore, 0, {}, Write("a.dat", "[MCR]")}),
        Gives(1, _,
              HasSubstr("a.dat: This file is not a saved copy of EEPROM data. Line 1: Expected here: ")));
    EXPECT_THAT(Run({Action::Restore, 0, {}, folder + "/none"}).err, HasSubstr("No such file"));
}

}  // namespace kelvora
