#include <gmock/gmock.h>

#include <CLI/CLI.hpp>

#include "cli/manual/Completion.h"

namespace kelvora::manual {

using testing::HasSubstr;

TEST(Completion, QuotesWhatAShellWouldTakeForItsOwn)
{
    CLI::App app("Does this and that.\nAnd more.", "kelvora-cli");
    std::vector<std::string> files;
    bool yes = false;
    CLI::App* const identity = app.add_subcommand("identity", "Reads and writes");
    CLI::App* const write = identity->add_subcommand("write", "Gives a module's identity");
    write->add_option("FILE", files, "Setup [old] files")->required();
    write->add_option("--line", files, "Device")->type_name("N=PORT")->allow_extra_args(false);
    write->add_flag("-y,--yes", yes, "Do not ask");
    const CommandText program = Describe(app);

    const std::string zsh = ZshCompletion(program);
    EXPECT_THAT(zsh, HasSubstr("'write:Gives a module'\\''s identity'"));
    EXPECT_THAT(zsh, HasSubstr("'(-y --yes)--yes[Do not ask]'"));
    EXPECT_THAT(zsh, HasSubstr("'*--line=[Device]:N=PORT:_kelvora_line'"));
    EXPECT_THAT(FishCompletion(program),
                HasSubstr(R"(-n '__kelvora_cli_at \'identity\'' -a write -d 'Gives a module\'s identity')"));
    EXPECT_THAT(BashCompletion(program), HasSubstr("'identity' | 'identity write')"));
}

}  // namespace kelvora::manual
