#include "catalogue/UserFiles.h"

#include <gtest/gtest.h>

#include "fakes/FakeFileDialogs.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakePrompt.h"
#include "platform/TextFiles.h"

using namespace kelvora;

using Content = std::map<std::string, std::string>;

TEST(TextFiles, NameTheirBackup)
{
    for (const auto& [path, backup] : Content{{"setup.dat", "setup.bak"},
                                              {"a.b/setup.old.dat", "a.b/setup.old.bak"},
                                              {"../setup", "../setup.bak"},
                                              {"c:\\a.b\\setup", "c:\\a.b\\setup.bak"},
                                              {"c.d:setup", "c.d:setup.bak"}})
        EXPECT_EQ(BackupName(path), backup);
}

class UserFilesTest : public testing::Test {
protected:
    FakeFiles files;
    FakePrompt prompt;
    FakeFileDialogs dialogs;
    Texts texts{prompt};
    std::string folder;
    UserFiles userFiles{texts, files, dialogs, folder};
};

TEST_F(UserFilesTest, SavingKeepsThePreviousText)
{
    EXPECT_TRUE(userFiles.WriteKeepingBackup("a.dat", "one"));
    EXPECT_EQ(files.content, (Content{{"a.dat", "one\r\n"}})) << "there was nothing to keep";
    EXPECT_TRUE(userFiles.WriteKeepingBackup("a.dat", "two"));
    EXPECT_EQ(files.content, (Content{{"a.dat", "two\r\n"}, {"a.bak", "one\r\n"}}));
    files.unreadable = {"a.bak"};
    EXPECT_TRUE(userFiles.WriteKeepingBackup("a.bak", "its own backup is not copied"));
    EXPECT_TRUE(prompt.shown.empty());
}

TEST_F(UserFilesTest, ATextIsSavedUnderTheChosenNameWithAnEnding)
{
    const auto save = [&] { userFiles.SaveTextAs(Message::MonitorSaveTitle, "", [] { return "text"; }); };
    save();
    EXPECT_TRUE(files.content.empty()) << "the dialog was cancelled";
    const std::tuple<const char*, int, const char*> names[]{
        {"a", 1, "a.txt"},     {"a.log", 1, "a.log.txt"}, {"a.TXT", 1, "a.TXT"},
        {"a.log", 2, "a.log"}, {"b./a", 2, "b./a.txt"},   {"b/.a", 2, "b/.a"}};
    for (const auto& [chosen, filter, path] : names) {
        dialogs.choices = {{chosen, "", filter}};
        save();
        EXPECT_EQ(std::exchange(files.content, {}), (Content{{path, "text"}}));
        EXPECT_EQ(dialogs.asked.back().filterIndex, 1);
    }
}

TEST_F(UserFilesTest, FailuresAreShownAndLeaveTheFile)
{
    files.content = {{"a.dat", "old"}, {"a.bak", "older"}};
    const auto check = [&](const std::set<std::string>& unwritable, const std::set<std::string>& unreadable,
                           const std::string& shown) {
        files.unwritable = unwritable;
        files.unreadable = unreadable;
        EXPECT_FALSE(userFiles.WriteKeepingBackup("a.dat", "new"));
        EXPECT_EQ(files.content.at("a.dat"), "old");
        EXPECT_EQ(prompt.shown.back().body,
                  "File a.dat\r\n" + shown + "\r\n\r\nThe file could not be saved.");
    };
    check({"a.dat"}, {}, "No space left on device");
    check({"a.bak"}, {}, "its backup cannot be written, a.bak: No space left on device");
    check({}, {"a.dat"}, "Permission denied");
    EXPECT_EQ(userFiles.Read("b.dat"), std::nullopt);
    ASSERT_EQ(prompt.shown.size(), 4U);
    EXPECT_EQ(prompt.shown[3].title, "Kelvora");
    EXPECT_EQ(prompt.shown[3].body,
              "File b.dat\r\nNo such file or directory\r\n\r\nThe file could not be opened.");
    EXPECT_EQ(prompt.shown[3].style.icon, BoxIcon::Exclamation);
}
