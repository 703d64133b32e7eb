#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <CLI/CLI.hpp>
#include <set>

#include "cli/manual/Completion.h"

namespace kelvora::manual {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class CommandTextTest : public testing::Test {
protected:
    CommandTextTest()
    {
        app.name("kelvora-cli");
        app.description("Does this and that.\nAnd more.");
        CLI::App* const identity = app.add_subcommand("identity", "Reads and writes");
        CLI::App* const write = identity->add_subcommand("write", "Gives a module's identity");
        write->add_option("FILE", files, "Setup [old] files")->required();
        write->add_option("--port", number, "Line")->type_name("N")->check(CLI::Range(1, 3));
        write->add_option("--timeout", number, "Seconds")->check(CLI::Range(1, 3600));
        write->add_option("--speed", number)
            ->type_name("BAUD")
            ->check(CLI::IsMember(std::set<int>{600, 300}));
        write->add_option("--line", files, "Device")->type_name("N=PORT")->allow_extra_args(false);
        write->add_flag("-y,--yes", yes, "Do not ask");
        write->add_flag("--secret", yes)->group("");
        program = Describe(app);
    }

    const CommandText& Write() const { return program.commands.at(0).commands.at(0); }
    const OptionText& Option(std::size_t number_) const { return Write().options.at(number_); }

    CLI::App app;
    std::vector<std::string> files;
    int number = 0;
    bool yes = false;
    CommandText program;
};

TEST_F(CommandTextTest, TellsWhatTheParserTakes)
{
    EXPECT_EQ(program.summary, "Does this and that");
    EXPECT_EQ(Write().path, "kelvora-cli identity write");
    EXPECT_EQ(Write().Name(), "write");
    ASSERT_EQ(Write().arguments.size(), 1U);
    EXPECT_EQ(Write().arguments[0].value, "FILE");
    EXPECT_TRUE(Write().arguments[0].isRequired && Write().arguments[0].isRepeated);

    ASSERT_EQ(Write().options.size(), 6U) << "the hidden one is left out";
    EXPECT_THAT(Option(0).names, ElementsAre("-h", "--help"));
    EXPECT_THAT(Option(2).choices, IsEmpty()) << "too many to offer";
    EXPECT_EQ(Option(2).help, "Seconds (1 to 3600)");
    EXPECT_THAT(Option(3).choices, ElementsAre("300", "600"));
    EXPECT_TRUE(Option(4).isRepeated);
    EXPECT_FALSE(Option(5).isRepeated);
}

TEST_F(CommandTextTest, QuotesWhatAShellWouldTakeForItsOwn)
{
    const std::string zsh = ZshCompletion(program);
    EXPECT_THAT(zsh, HasSubstr("'write:Gives a module'\\''s identity'"));
    EXPECT_THAT(zsh, HasSubstr("'(-y --yes)--yes[Do not ask]'"));
    EXPECT_THAT(zsh, HasSubstr("'*--line=[Device]:N=PORT:_kelvora_line'"));
    EXPECT_THAT(FishCompletion(program),
                HasSubstr(R"(-n '__kelvora_cli_at \'identity\'' -a write -d 'Gives a module\'s identity')"));
    EXPECT_THAT(BashCompletion(program), HasSubstr("'identity' | 'identity write')"));
}

}  // namespace

}  // namespace kelvora::manual
