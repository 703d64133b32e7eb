#include "CliFixture.h"

namespace kelvora {

class ReportTest : public CliTest {
protected:
    const std::string standard = Write("standard.dat", "[Kelvora]\n[MCR]\nTracks = 1,2\n");
    const std::string till = Write("shops/n1/Till7.dat", Accepted);
    const std::string output = At("tills.html");
};

TEST_F(ReportTest, WritesAPageAndKeepsWhatItReplaces)
{
    Write("tills.html", "old");
    Write("results/till7.json",
          R"({"till":"till7","action":"verify","exit":1,"result":{"outcome":"different"}})");
    EXPECT_THAT(
        Run({"report", At("shops"), "--standard", standard, "--results", At("results"), "-o", output}),
        Gives(0, "", "kelvora-cli: 1 till: 1 deviate, 1 failed, 0 could not be read\n"));
    const std::string page = files.Read(output);
    EXPECT_THAT(page, StartsWith("<!DOCTYPE html>"));
    EXPECT_THAT(page, HasSubstr("<th scope=row>n1/Till7<td>"));
    EXPECT_THAT(page, HasSubstr("tracks read: 1,2 -&gt; 1,2,3<td>verify: different<td>"));
    EXPECT_THAT(page, HasSubstr("<h1>Tills in " + folder + "/shops</h1>"));
    EXPECT_EQ(files.Read(output + ".bak"), "old");
    EXPECT_THAT(Run({"report", till}).out,
                AllOf(HasSubstr("<th scope=row>Till7<td>"), HasSubstr("Not compared with a standard")));
}

TEST_F(ReportTest, TellsWhatIsNoSetupAndNoResult)
{
    const std::string bad = Write("shops/bad.dat", Rejected);
    Write("results/other.json", "{}");
    Write("results/begun.json", "");
    Write("results/notes.txt", "words");
    const std::string complaints =
        bad + RejectedSays + "kelvora-cli: " + At("results/other.json") + ": holds no results\n";
    EXPECT_THAT(
        Run({"report", At("shops"), "--results", At("results"), "-o", output, "--json"}),
        Gives(1, JsonWith({{"output", output}, {"tills", 2}, {"deviating", 0}, {"failed", 0}, {"unread", 1}}),
              complaints));
    EXPECT_THAT(files.Read(output),
                HasSubstr("<th scope=row>bad<td colspan=3>Could not be read: line 3: 0x80040107 expected"));
}

TEST_F(ReportTest, RefusesWhatMakesNoPage)
{
    ExpectUsage({"report", "report " + till + " -o " + till, "report " + till + " -o .html",
                 "report " + till + " --json"});
    files.MakeFolder(At("empty"));
    const std::string bad = Write("bad.dat", Rejected);
    for (const auto& [arguments, says] : {
             std::pair{std::vector<std::string>{At("empty")}, std::string("no setup files were found")},
             {{till, "--standard", bad}, bad + ":3: "},
             {{till, "--results", At("none")}, "/none: No such file"},
         }) {
        std::vector<std::string> all{"report", "-o", output};
        all.insert(all.end(), arguments.begin(), arguments.end());
        EXPECT_THAT(Run(all), Gives(1, _, HasSubstr(says)));
        EXPECT_FALSE(files.Exists(output));
    }
    EXPECT_THAT(Run({"report", till, "-o", At("none/a.html")}).err, HasSubstr("/none/a.html: No such file"));
}

}  // namespace kelvora
