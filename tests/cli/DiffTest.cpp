#include "CliFixture.h"

namespace kelvora {

class Diff : public CliTest {
protected:
    void Expect(const char* reason, std::vector<std::string> arguments, int exitCode, const std::string& out,
                const std::string& err)
    {
        arguments.insert(arguments.begin(), "diff");
        EXPECT_THAT(Run(arguments), Gives(exitCode, out, err)) << reason;
    }

    const std::string a = Write("a.dat", "[Kelvora]\n[MCR]\nTracks = 1,2\n");
    const std::string same = Write("same.dat", "[Kelvora]\n' typed\n[mcr]\ntracks=1,2\n");
    const std::string b = Write("b.dat", "[Kelvora]\n[MCR]\nTrack2Sep = ;\n[ICCR]\n");
    const std::string bad = Write("bad.dat", Rejected);
};

TEST_F(Diff, ExitsAndPrintsAsProgramsOfThatNameDo)
{
    const std::string named = "--- " + a + "\n+++ " + b + "\n";
    const std::string differs = named +
                                "ICCR: added\nMCR, tracks read: 1,2 -> 1,2,3\n"
                                "MCR, separator after track 2: none -> ; (3B)\n";
    const std::string rejected = bad + RejectedSays;
    Expect("same but for its text", {a, same}, 0, "", "");
    Expect("different", {a, b}, 1, differs, "");
    Expect("only the code", {"-q", a, b}, 1, "", "");
    Expect("each with the first", {a, same, b}, 1, differs, "");
    Expect("a rejected one does not hide another", {a, bad, b}, 2, differs, rejected);
    Expect("nothing to compare with", {bad, b}, 2, "", rejected);
    EXPECT_EQ(Run({"diff", a}).exitCode, 2);
}

TEST_F(Diff, TakesFolders)
{
    const std::string old = At("old");
    const std::string now = At("new");
    for (const std::string& each : {old, now})
        Write(each.substr(folder.size() + 1) + "/n/same.dat", Accepted);
    const std::string till = Write("old/a.dat", "[Kelvora]\n[MCR]\n[ICCR]\n");
    const std::string gone = Write("old/gone.txt", Accepted);
    const std::string added = Write("new/n/added.dat", Accepted);
    const std::string broken = Write("new/n/z.dat", Rejected);
    Write("new/a.dat", Accepted);
    Write("old/n/z.dat", Accepted);
    files.MakeFolder(At("empty"));
    const std::string deviates = "--- " + a + "\n+++ " + till +
                                 "\nICCR: added\nMCR, tracks read: 1,2 -> 1,2,3\n--- " + a + "\n+++ " + gone +
                                 "\nMCR, tracks read: 1,2 -> 1,2,3\n";
    const std::string pairs = "--- " + till + "\n+++ " + now + "/a.dat\nICCR: removed\n" + gone +
                              ": removed\n" + added + ": added\n";
    const std::string mixed = "kelvora-cli: a folder is compared with folders, not with " + a + "\n";
    const std::string none = "kelvora-cli: no setup files were found\n";
    Expect("a standard and what deviates", {a, till, gone}, 1, deviates, "");
    Expect("pairs by the names below", {old, now + "/"}, 2, pairs, broken + RejectedSays);
    Expect("none is broken", {"-q", old, At("empty")}, 1, "", "");
    Expect("a folder and itself", {old, old}, 0, "", "");
    Expect("a folder and a file", {old, a}, 2, "", mixed);
    Expect("nothing", {a, At("empty")}, 2, "", none);
    std::filesystem::remove_all(old + "/n");
    EXPECT_EQ(Run({"diff", a, old}).out, deviates);
    EXPECT_EQ(JsonLines(Run({"diff", "--json", old, At("empty")}).out).at(0),
              (Json{{"before", till}, {"after", nullptr}, {"same", false}, {"differences", Json::array()}}));
}

TEST_F(Diff, JsonHasALineForEveryPair)
{
    const std::string grown = Write("c.dat", "[Kelvora]\n[ICCR]\n[MCR]\nTracks = 1,2\n");
    const CliResult result = Run({"diff", "--json", b, same, grown});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out.substr(0, result.out.find('\n')),
                JsonWith({{"before", b}, {"after", same}, {"same", false}}));
    const auto objects = JsonLines(result.out);
    EXPECT_EQ(objects.at(0)["differences"][0]["what"], "removed");
    EXPECT_EQ(objects[0]["differences"][0]["module"], "ICCR");
    EXPECT_EQ(objects[0]["differences"][2]["track"], 2);
    EXPECT_EQ(objects[0]["differences"][2]["before"], ";");
    EXPECT_EQ(objects.at(1)["differences"][0]["what"], "order");
    EXPECT_EQ(objects[1]["differences"][0]["after"], (Json{"ICCR", "MCR"}));
    EXPECT_EQ(JsonLines(Run({"diff", "--json", a, same}).out).at(0)["same"], true);
}

}  // namespace kelvora
