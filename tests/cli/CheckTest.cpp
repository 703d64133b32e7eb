#include <nlohmann/json.hpp>

#include "CliFixture.h"

namespace kelvora {

using testing::HasSubstr;
using testing::IsEmpty;

class Check : public CliTest {};

TEST_F(Check, SaysWhereAndWhyAFileIsRejected)
{
    struct Case {
        const char* reason;
        std::string text, said;
    };
    const Case cases[] = {
        {"value outside its list", Rejected, RejectedSays},
        {"a second module of one kind", "[KM064]\n[KM064]\n",
         ":2: 0x80040104 expected another module: each kind may stand in a setup once\n"},
        {"main keyboard not first", "[MCR]\n[KM096]\n",
         ":2: 0x80040104 expected another module: [KM096] may only be the first one\n"},
    };
    for (const Case& each : cases) {
        const std::string path = Write("till.dat", each.text);
        const CliResult result = Run({"check", path});
        EXPECT_EQ(result.exitCode, 1) << each.reason;
        EXPECT_EQ(result.out, path + each.said) << each.reason;
        EXPECT_EQ(result.err, "kelvora-cli: 1 file checked: 0 accepted, 1 rejected\n") << each.reason;
    }
}

TEST_F(Check, PrintsAcceptedFilesOnlyWhenAsked)
{
    const std::string path = Write("till.dat", Accepted);
    const CliResult silent = Run({"check", "-q", path});
    EXPECT_EQ(silent.exitCode, 0);
    EXPECT_EQ(silent.out + silent.err, "");
    EXPECT_EQ(Run({"check", "--verbose", path}).out, path + ": ok\n");
}

TEST_F(Check, TellsOfFilesThatCannotBeRead)
{
    const std::string missing = folder + "/missing.dat";
    const CliResult result = Run({"check", missing, Write("till.dat", Accepted)});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "kelvora-cli: " + missing + ": No such file or directory\n" +
                              "kelvora-cli: 2 files checked: 1 accepted, 0 rejected, 1 not readable\n");
}

TEST_F(Check, JsonHasTheSameKeysForEveryOutcome)
{
    const std::string accepted = Write("a.dat", Accepted);
    const std::string rejected = Write("b\xE8.dat", Rejected);
    const std::string missing = folder + "/c.dat";
    std::istringstream lines(Run({"check", "--json", accepted, rejected, missing}).out);
    const nlohmann::json expected[] = {
        {{"file", accepted}, {"ok", true}, {"error", nullptr}, {"line", nullptr}, {"message", nullptr}},
        {{"file", folder + "/b\u00E8.dat"},
         {"ok", false},
         {"error", "0x80040107"},
         {"line", 3},
         {"message", "expected 1,2,3 or 1,2 or 2,3"}},
        {{"file", missing},
         {"ok", false},
         {"error", nullptr},
         {"line", nullptr},
         {"message", "No such file or directory"}},
    };
    std::string line;
    for (const nlohmann::json& each : expected) {
        ASSERT_TRUE(std::getline(lines, line));
        EXPECT_EQ(nlohmann::json::parse(line), each);
    }
    EXPECT_FALSE(std::getline(lines, line));
}

TEST_F(Check, TakesTheSetupFilesBelowAFolderSorted)
{
    const std::string last = Write("tills/z.Txt", Accepted);
    const std::string deep = Write("tills/b/c/deep.DAT", Accepted);
    const std::string first = Write("tills/a.dat", Accepted);
    Write("tills/a.bak", Rejected);
    Write("outside/never.dat", Rejected);
    std::filesystem::create_directory_symlink(folder + "/outside", folder + "/tills/linked");
    std::filesystem::create_symlink(folder + "/nowhere", folder + "/tills/lost.dat");
    for (const char* end : {"", "/"}) {
        const CliResult result = Run({"check", "-v", folder + "/tills" + end});
        EXPECT_EQ(result.out, first + ": ok\n" + deep + ": ok\n" + last + ": ok\n");
        EXPECT_THAT(result.err, HasSubstr("/tills/lost.dat: No such file or directory\n"));
    }
}

TEST_F(Check, KeepsTheOrderOfManyFiles)
{
    const std::string accepted = Write("accepted", Accepted);
    const std::string rejected = Write("rejected", Rejected);
    std::string names;
    std::string expected;
    for (int i = 999; i >= 0; --i) {
        const std::string path = folder + "/till" + std::to_string(i);
        std::filesystem::create_symlink(i % 3 == 0 ? rejected : accepted, path);
        names += path + "\n";
        expected += path + (i % 3 == 0 ? RejectedSays : ": ok\n");
    }
    const CliResult result = Run({"check", "-v"}, names);
    EXPECT_EQ(result.out, expected);
    EXPECT_EQ(result.err, "kelvora-cli: 1000 files checked: 666 accepted, 334 rejected\n");
}

TEST_F(Check, ReadsNamesFromStandardInput)
{
    const std::string plain = Write("till", Accepted);
    const std::string odd = Write("two\nlines", Accepted);
    const std::string bracketed = Write("[old]/till.dat", Accepted);
    EXPECT_EQ(Run({"check", "-v", "-0"}, plain + '\0' + odd + '\0').out, plain + ": ok\n" + odd + ": ok\n");
    EXPECT_EQ(Run({"check", "-v", odd, "-", plain}, "\n" + folder + "/[old]").out,
              odd + ": ok\n" + bracketed + ": ok\n" + plain + ": ok\n");
    EXPECT_EQ(Run({"check"}, "").err, "kelvora-cli: 0 files checked: 0 accepted, 0 rejected\n");
}

TEST_F(Check, StopsWhenItsOutputIsNotTaken)
{
    std::string names;
    for (int i = 0; i < 5000; ++i)
        names += "missing\n";
    std::istringstream in(names);
    std::ostringstream out;
    std::ostringstream err;
    out.setstate(std::ios::badbit);
    EXPECT_EQ(RunCli(std::vector<std::string>{"check", "--json"}, in, out, err, access), 1);
    EXPECT_THAT(err.str(), HasSubstr("kelvora-cli: standard output: "));
    EXPECT_THAT(err.str(), testing::Not(HasSubstr("files checked")));
}

TEST_F(Check, UsageErrorsAndHelp)
{
    for (const std::vector<std::string>& wrong : std::vector<std::vector<std::string>>{
             {}, {"chek"}, {"check", "--jsn", "a.dat"}, {"show"}, {"format"}, {"diff"}}) {
        const CliResult result = Run(wrong);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, testing::Not(IsEmpty()));
    }
    EXPECT_THAT(Run({"chek", "a.dat"}).err, HasSubstr("\"chek\" is no command"));
    EXPECT_THAT(Run({"--help"}).out, HasSubstr("kelvora-cli check exports/"));
    EXPECT_THAT(Run({"--version"}).out, testing::StartsWith("kelvora-cli "));
    EXPECT_EQ(Run({"check", "--help"}).exitCode, 0);
}

}  // namespace kelvora
