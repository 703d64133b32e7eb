#include <nlohmann/json.hpp>

#include "CliFixture.h"

namespace kelvora {

class Diff : public CliTest {
protected:
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
    struct Row {
        const char* reason;
        std::vector<std::string> arguments;
        int exitCode;
        std::string out, err;
    };
    const std::string rejected = bad + RejectedSays;
    for (const Row& row :
         {Row{"same but for its text", {"diff", a, same}, 0, "", ""},
          Row{"different", {"diff", a, b}, 1, differs, ""},
          Row{"only the code", {"diff", "-q", a, b}, 1, "", ""},
          Row{"each with the first", {"diff", a, same, b}, 1, differs, ""},
          Row{"a rejected one does not hide another", {"diff", a, bad, b}, 2, differs, rejected},
          Row{"nothing to compare with", {"diff", bad, b}, 2, "", rejected},
          Row{"not there",
              {"diff", a, folder + "/none"},
              2,
              "",
              "kelvora-cli: " + folder + "/none: No such file or directory\n"}}) {
        const CliResult result = Run(row.arguments);
        EXPECT_EQ(result.exitCode, row.exitCode) << row.reason;
        EXPECT_EQ(result.out, row.out) << row.reason;
        EXPECT_EQ(result.err, row.err) << row.reason;
    }
    EXPECT_EQ(Run({"diff", a}).exitCode, 2);
}

TEST_F(Diff, TakesFolders)
{
    const std::string old = folder + "/old";
    const std::string now = folder + "/new";
    for (const std::string& each : {old, now})
        Write(each.substr(folder.size() + 1) + "/n/same.dat", Accepted);
    const std::string till = Write("old/a.dat", "[Kelvora]\n[MCR]\n[ICCR]\n");
    const std::string gone = Write("old/gone.txt", Accepted);
    const std::string added = Write("new/n/added.dat", Accepted);
    const std::string broken = Write("new/n/z.dat", Rejected);
    Write("new/a.dat", Accepted);
    Write("old/n/z.dat", Accepted);
    files.MakeFolder(folder + "/empty");
    const std::string deviates = "--- " + a + "\n+++ " + till +
                                 "\nICCR: added\nMCR, tracks read: 1,2 -> 1,2,3\n--- " + a + "\n+++ " + gone +
                                 "\nMCR, tracks read: 1,2 -> 1,2,3\n";
    struct Row {
        const char* reason;
        std::vector<std::string> arguments;
        int exitCode;
        std::string out, err;
    };
    for (const Row& row : {Row{"a standard and what deviates", {"diff", a, till, gone}, 1, deviates, ""},
                           Row{"pairs by the names below",
                               {"diff", old, now + "/"},
                               2,
                               "--- " + till + "\n+++ " + now + "/a.dat\nICCR: removed\n" + gone +
                                   ": removed\n" + added + ": added\n",
                               broken + RejectedSays},
                           Row{"none is broken", {"diff", "-q", old, folder + "/empty"}, 1, "", ""},
                           Row{"a folder and itself", {"diff", old, old}, 0, "", ""},
                           Row{"a folder and a file",
                               {"diff", old, a},
                               2,
                               "",
                               "kelvora-cli: a folder is compared with folders, not with " + a + "\n"},
                           Row{"nothing",
                               {"diff", a, folder + "/empty"},
                               2,
                               "",
                               "kelvora-cli: no setup files were found\n"}}) {
        const CliResult result = Run(row.arguments);
        EXPECT_EQ(result.exitCode, row.exitCode) << row.reason;
        EXPECT_EQ(result.out, row.out) << row.reason;
        EXPECT_EQ(result.err, row.err) << row.reason;
    }
    std::filesystem::remove_all(old + "/n");
    EXPECT_EQ(Run({"diff", a, old}).out, deviates);
    std::istringstream lines(Run({"diff", "--json", old, folder + "/empty"}).out);
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(nlohmann::json::parse(line), (nlohmann::json{{"before", till},
                                                           {"after", nullptr},
                                                           {"same", false},
                                                           {"differences", nlohmann::json::array()}}));
}

TEST_F(Diff, JsonHasALineForEveryPair)
{
    const std::string grown = Write("c.dat", "[Kelvora]\n[ICCR]\n[MCR]\nTracks = 1,2\n");
    const CliResult result = Run({"diff", "--json", b, same, grown});
    EXPECT_EQ(result.exitCode, 1);
    std::istringstream lines(result.out);
    std::string line;
    std::getline(lines, line);
    auto object = nlohmann::json::parse(line);
    EXPECT_EQ(object["before"], b);
    EXPECT_EQ(object["after"], same);
    EXPECT_EQ(object["same"], false);
    EXPECT_EQ(object["differences"][0]["what"], "removed");
    EXPECT_EQ(object["differences"][0]["module"], "ICCR");
    EXPECT_EQ(object["differences"][2]["track"], 2);
    EXPECT_EQ(object["differences"][2]["before"], ";");
    std::getline(lines, line);
    object = nlohmann::json::parse(line);
    EXPECT_EQ(object["differences"][0]["what"], "order");
    EXPECT_EQ(object["differences"][0]["after"], (nlohmann::json{"ICCR", "MCR"}));
    const auto equal = nlohmann::json::parse(Run({"diff", "--json", a, same}).out);
    EXPECT_EQ(equal["same"], true);
    EXPECT_TRUE(equal["differences"].empty());
}

}  // namespace kelvora
