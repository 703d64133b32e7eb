#include "app/TextFiles.h"

#include <gtest/gtest.h>

#include <tuple>

#include "fakes/FakeEventLoop.h"
#include "fakes/FakeFileDialogs.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakePrompt.h"
#include "flash/DumpText.h"

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

class TextFilesOfAProgram : public testing::Test {
protected:
    FakeFiles files;
    FakePrompt prompt;
    FakeFileDialogs dialogs;
    FakeEventLoop loop;
    Program program{{files, prompt, dialogs, loop, {}}, {}};
};

TEST_F(TextFilesOfAProgram, SavingKeepsThePreviousText)
{
    EXPECT_TRUE(WriteTextFileWithBackup(program, "a.dat", "one"));
    EXPECT_EQ(files.content, (Content{{"a.dat", "one\r\n"}})) << "there was nothing to keep";
    EXPECT_TRUE(WriteTextFileWithBackup(program, "a.dat", "two"));
    EXPECT_EQ(files.content, (Content{{"a.dat", "two\r\n"}, {"a.bak", "one\r\n"}}));
    files.unreadable = {"a.bak"};
    EXPECT_TRUE(WriteTextFileWithBackup(program, "a.bak", "its own backup is not copied"));
    EXPECT_TRUE(prompt.shown.empty());
}

TEST(TextFiles, ASetupsBackupIsNotADumps)
{
    const std::string setup = "'by hand\r\n[Kelvora]\r\n";
    const std::string dump = "'Kind: device\r\n" + FormatDump(0, FlashImage{});
    for (const auto& [old, kept, replaces] : {std::tuple(setup, dump, true),
                                              {dump, setup, true},
                                              {setup, setup, false},
                                              {dump, dump, false},
                                              {setup, std::string("notes"), false},
                                              {setup, std::string("'"), false},
                                              {std::string("notes"), setup, false}}) {
        FakeFiles files;
        files.content = {{"a.dat", old}, {"a.bak", kept}};
        EXPECT_EQ(ReplacesOtherBackup(files, "a.dat"), replaces) << old.substr(0, 20) << kept.substr(0, 20);
        EXPECT_FALSE(ReplacesOtherBackup(files, "b.dat")) << "has no old content";
        EXPECT_FALSE(ReplacesOtherBackup(files, "a.bak")) << "is its own backup";
        if (replaces)
            EXPECT_THROW(SaveTextFileUnasked(files, "a.dat", dump), FileError);
        else
            SaveTextFileUnasked(files, "a.dat", dump);
        EXPECT_EQ(files.content["a.bak"], replaces ? kept : old);
    }
}

TEST_F(TextFilesOfAProgram, FailuresAreShownAndLeaveTheFile)
{
    files.content = {{"a.dat", "old"}, {"a.bak", "older"}};
    struct Row {
        std::set<std::string> unwritable, unreadable;
        std::string shown;
    };
    for (const Row& row : {Row{{"a.dat"}, {}, "No space left on device"},
                           Row{{"a.bak"}, {}, "its backup cannot be written, a.bak: No space left on device"},
                           Row{{}, {"a.dat"}, "Permission denied"}}) {
        files.unwritable = row.unwritable;
        files.unreadable = row.unreadable;
        EXPECT_FALSE(WriteTextFileWithBackup(program, "a.dat", "new"));
        EXPECT_EQ(files.content.at("a.dat"), "old");
        EXPECT_EQ(prompt.shown.back().body,
                  "File a.dat\r\n" + row.shown + "\r\n\r\nThe file could not be saved.");
    }
    EXPECT_EQ(ReadTextFile(program, "b.dat"), std::nullopt);
    ASSERT_EQ(prompt.shown.size(), 4U);
    EXPECT_EQ(prompt.shown[3].title, "Kelvora");
    EXPECT_EQ(prompt.shown[3].body,
              "File b.dat\r\nNo such file or directory\r\n\r\nThe file could not be opened.");
    EXPECT_EQ(prompt.shown[3].style.icon, BoxIcon::Exclamation);
}
