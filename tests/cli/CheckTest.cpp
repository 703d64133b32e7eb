#include "CliFixture.h"

namespace kelvora {

class Check : public CliTest {};

TEST_F(Check, TellsOfFilesThatAreRejectedOrCannotBeReadAndOfOthersWhenAsked)
{
    const std::string rejected = Write("till.dat", Rejected);
    const std::string accepted = Write("good.dat", Accepted);
    EXPECT_THAT(Run({"check", rejected, accepted, At("missing.dat")}),
                Gives(1, rejected + RejectedSays,
                      "kelvora-cli: " + At("missing.dat") + ": No such file or directory\n" +
                          "kelvora-cli: 3 files checked: 1 accepted, 1 rejected, 1 not readable\n"));
    EXPECT_THAT(Run({"check", "-q", accepted}), Gives(0, "", ""));
    EXPECT_EQ(Run({"check", "--verbose", accepted}).out, accepted + ": ok\n");
}

TEST_F(Check, JsonHasTheSameKeysForEveryOutcome)
{
    const auto object = [](const std::string& file, Json error, Json line, Json message) {
        return Json{{"file", file},
                    {"ok", message.is_null()},
                    {"error", error},
                    {"line", line},
                    {"message", message}};
    };
    const std::string rejected = Write("b\xE8.dat", Rejected);
    EXPECT_EQ(JsonLines(Run({"check", "--json", Write("a.dat", Accepted), rejected, At("c.dat")}).out),
              (std::vector{object(At("a.dat"), nullptr, nullptr, nullptr),
                           object(At("b\u00E8.dat"), "0x80040107", 3, "expected 1,2,3 or 1,2 or 2,3"),
                           object(At("c.dat"), nullptr, nullptr, "No such file or directory")}));
}

TEST_F(Check, TakesTheSetupFilesBelowAFolderSorted)
{
    const std::string last = Write("tills/z.Txt", Accepted);
    const std::string deep = Write("tills/b/c/deep.DAT", Accepted);
    const std::string first = Write("tills/a.dat", Accepted);
    Write("tills/a.bak", Rejected);
    Write("outside/never.dat", Rejected);
    std::filesystem::create_directory_symlink(At("outside"), At("tills/linked"));
    std::filesystem::create_symlink(At("nowhere"), At("tills/lost.dat"));
    for (const char* end : {"", "/"}) {
        EXPECT_THAT(Run({"check", "-v", At("tills") + end}),
                    Gives(_, first + ": ok\n" + deep + ": ok\n" + last + ": ok\n",
                          HasSubstr("/tills/lost.dat: No such file or directory\n")));
    }
}

TEST_F(Check, KeepsTheOrderOfManyFiles)
{
    const std::string accepted = Write("accepted", Accepted);
    const std::string rejected = Write("rejected", Rejected);
    std::string names;
    std::string expected;
    for (int i = 199; i >= 0; --i) {
        const std::string path = At("till") + std::to_string(i);
        std::filesystem::create_symlink(i % 3 == 0 ? rejected : accepted, path);
        names += path + "\n";
        expected += path + (i % 3 == 0 ? RejectedSays : ": ok\n");
    }
    EXPECT_THAT(Run({"check", "-v"}, names),
                Gives(_, expected, "kelvora-cli: 200 files checked: 133 accepted, 67 rejected\n"));
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
    EXPECT_THAT(err.str(), Not(HasSubstr("files checked")));
}

TEST_F(Check, UsageErrorsAndHelp)
{
    ExpectUsage({"", "chek", "check --jsn a.dat", "show", "format", "diff"});
    EXPECT_THAT(Run({"chek", "a.dat"}).err, HasSubstr("\"chek\" is no command"));
    EXPECT_THAT(Run({"--help"}).out, HasSubstr("kelvora-cli check exports/"));
    EXPECT_THAT(Run({"--version"}).out, StartsWith("kelvora-cli "));
    EXPECT_EQ(Run({"check", "--help"}).exitCode, 0);
}

}  // namespace kelvora
