#include "cli/manual/ManPage.h"

#include <gtest/gtest.h>

namespace kelvora::manual {

namespace {

CommandText SmallCommand()
{
    CommandText command{.path = "kelvora-cli scan", .summary = "Ask a line"};
    command.options = {{.names = {"-o", "--output"}, .value = "OUT", .help = ".bak\\ is kept"},
                       {.names = {"--speed"},
                        .value = "BAUD",
                        .help = "Speed",
                        .choices = {"300", "600"},
                        .kind = ValueKind::Choice}};
    command.arguments = {{.value = "FILE", .help = "Setup files", .isRepeated = true}};
    return command;
}

constexpr const char* Head =
    ".TH \"KELVORA-CLI-SCAN\" 1 \"2026-02-03\" \"Kelvora 1.2\" \"Kelvora\"\n"
    ".SH NAME\n"
    "kelvora-cli-scan \\- ask a line\n"
    ".SH SYNOPSIS\n"
    "\\fBkelvora\\-cli scan\\fP\n"
    "[\\fIOPTION\\fP ...]\\&\n"
    "[\\fIFILE\\fP ...]\\&\n";

constexpr const char* Lists =
    ".SH ARGUMENTS\n"
    ".TP\n"
    "\\fIFILE\\fP\n"
    "Setup files.\n"
    ".SH OPTIONS\n"
    ".TP\n"
    "\\fB\\-o\\fP, \\fB\\-\\-output\\fP \\fIOUT\\fP\n"
    "\\&.bak\\e is kept.\n"
    ".TP\n"
    "\\fB\\-\\-speed\\fP \\fIBAUD\\fP\n"
    "Speed: 300, 600.\n";

TEST(ManPage, PutsTheListsWhereTheTextWantsThem)
{
    const std::string before = ".SH DESCRIPTION\nLong.\n";
    const std::string after = ".SH EXAMPLES\nOne.\n";
    const std::string end = ".SH EXIT STATUS\nLike all.\n";
    const std::string own = ".SH EXIT STATUS\nIts own.\n";
    EXPECT_EQ(ManPage(SmallCommand(), {"1.2", "2026-02-03", before + "@LISTS@\n" + after, end}),
              Head + before + Lists + after + end);
    EXPECT_EQ(ManPage(SmallCommand(), {"1.2", "2026-02-03", before, end}), Head + before + Lists + end)
        << "no place is named";
    EXPECT_EQ(ManPage(SmallCommand(), {"1.2", "2026-02-03", own, end}), Head + own + Lists);
    EXPECT_EQ(ManPage(SmallCommand(), {"1.2", "2026-02-03", "", ""}), std::string(Head) + Lists);
}

TEST(ManPage, NamesThePagesOfTheCommandsBelow)
{
    CommandText program{.path = "kelvora-cli", .summary = "Checks"};
    program.commands = {SmallCommand()};
    const std::string page = ManPage(program, {});
    EXPECT_NE(page.find("\\fICOMMAND\\fP ...\n"), std::string::npos);
    EXPECT_NE(
        page.find(".SH COMMANDS\n.TP\n\\fBscan\\fP\nAsk a line; see \\fBkelvora\\-cli\\-scan\\fP(1).\n"),
        std::string::npos)
        << page;
}

}  // namespace

}  // namespace kelvora::manual
