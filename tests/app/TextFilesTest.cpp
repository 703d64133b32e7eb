#include "app/TextFiles.h"

#include <gtest/gtest.h>

#include "fakes/FakeFiles.h"
#include "fakes/FakePrompt.h"

using namespace kelvora;

using Content = std::map<std::string, std::string>;

TEST(TextFiles, NameTheirBackup)
{
    for (const auto& [path, backup] : Content{{"setup.dat", "setup.bak"},
                                              {"a.b/setup.old.dat", "a.b/setup.old.bak"},
                                              {"a.b/setup", "a.b/setup.bak"},
                                              {"c:\\a.b\\setup", "c:\\a.b\\setup.bak"},
                                              {"c.d:setup", "c.d:setup.bak"}})
        EXPECT_EQ(BackupName(path), backup);
}

TEST(TextFiles, SavingKeepsThePreviousText)
{
    FakeFiles files;
    FakePrompt prompt;
    EXPECT_TRUE(WriteTextFileWithBackup(files, prompt, "a.dat", "one"));
    EXPECT_EQ(files.content, (Content{{"a.dat", "one\r\n"}})) << "there was nothing to keep";
    EXPECT_TRUE(WriteTextFileWithBackup(files, prompt, "a.dat", "two"));
    EXPECT_EQ(files.content, (Content{{"a.dat", "two\r\n"}, {"a.bak", "one\r\n"}}));
    files.unreadable = {"a.bak"};
    EXPECT_TRUE(WriteTextFileWithBackup(files, prompt, "a.bak", "its own backup is not copied"));
    EXPECT_TRUE(prompt.shown.empty());
}

TEST(TextFiles, FailuresAreShownAndLeaveTheFile)
{
    FakeFiles files;
    FakePrompt prompt;
    files.content = {{"a.dat", "old"}, {"a.bak", "older"}};
    struct Row {
        std::string unwritable, shown;
    };
    for (const Row& row : {Row{"a.dat", "No space left on device"},
                           Row{"a.bak", "its backup cannot be written, a.bak: No space left on device"}}) {
        files.unwritable = {row.unwritable};
        EXPECT_FALSE(WriteTextFileWithBackup(files, prompt, "a.dat", "new"));
        EXPECT_EQ(ReadTextFile(files, prompt, "a.dat"), "old");
        EXPECT_EQ(prompt.shown.back().body, "File a.dat\r\n" + row.shown);
    }
    EXPECT_EQ(ReadTextFile(files, prompt, "b.dat"), std::nullopt);
    ASSERT_EQ(prompt.shown.size(), 3U);
    EXPECT_EQ(prompt.shown[2].title, "Kelvora");
    EXPECT_EQ(prompt.shown[2].body, "File b.dat\r\nNo such file or directory");
    EXPECT_EQ(prompt.shown[2].style.icon, BoxIcon::Exclamation);
}
