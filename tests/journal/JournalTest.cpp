#include "journal/Journal.h"

#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <map>
#include <nlohmann/json.hpp>

#include "fakes/TestFolder.h"
#include "journal/posix/JournalFolder.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Json = nlohmann::json;

// All that an entry can tell.
JournalEntry FullEntry(const std::string& operation = JournalOperation::Download)
{
    return {.time = "2026-03-09T07:05:00+01:00",
            .who = "anna",
            .program = "kelvora-cli",
            .version = "1.2.3",
            .operation = operation,
            .line = 4,
            .device = "/dev/ttyUSB0",
            .terminal = "TILL \"07\" \xC3\xA8",
            .modules = "KM096, MCR",
            .file = "/shop/till07.dat",
            .sha256 = "ab",
            .crcBefore = 0x0000BEEF,
            .crcAfter = 0xFFFFFFFF,
            .result = JournalEntry::Result::Same,
            .message = "one\ntwo",
            .backup = "/b/1.mem",
            .seconds = 12.5};
}

class JournalFolderTest : public testing::Test {
protected:
    std::vector<std::string> Lines() const
    {
        std::vector<std::string> operations;
        for (const JournalEntry& entry : ReadJournal(JournalFolder(files, folder)).entries)
            operations.push_back(entry.operation);
        return operations;
    }

    static std::string LineOf(const std::string& operation) { return JournalLine(FullEntry(operation)); }

    mutable PosixFiles files;
    TestFolder own;
    const std::string& folder = own.Path();
    std::string path = folder + "/journal.jsonl";
};

}  // namespace

TEST(JournalText, SaysAllOfAnEntryOnOneLine)
{
    const std::string line = JournalLine(FullEntry());
    EXPECT_EQ(line.find('\n'), line.size() - 1);
    const Json object = Json::parse(line);
    EXPECT_EQ(object["result"], "same");
    EXPECT_EQ(object["crcBefore"], "0000BEEF");
    EXPECT_EQ(object["seconds"], 12.5);
    EXPECT_EQ(ReadJournalLine(line), FullEntry());

    // Not UTF-8: what a damaged path may bring.
    const auto read = ReadJournalLine(JournalLine({.time = "2026-03-09T07:05:00+01:00", .terminal = "\xFF"}));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->terminal, "\xEF\xBF\xBD");
    EXPECT_EQ(read->crcBefore, std::nullopt);
}

TEST(JournalText, ADamagedLineCostsItselfAlone)
{
    const std::string whole = JournalLine(FullEntry());
    for (std::size_t length = 1; length < whole.size() - 1; ++length)
        ASSERT_FALSE(ReadJournalLine(whole.substr(0, length))) << length;
    const std::string odd =
        R"({"time":"t","result":"done","line":1e99,"crcAfter":"xyz","later":{"time":["no",{"who":"x"}]}})"
        "\n"
        R"({"time":"t","result":"done","line":5})";
    JournalContent content;
    for (const std::string& text : {"\xEF\xBB\xBF" + whole + whole.substr(0, 40) + "\n" + odd +
                                        "\n[1]\n\"time\"\n7\n{}\n{\"time\":\"t\"}\n{\"result\":\"done\"}\n\n",
                                    std::string("\0\0", 2), whole})
        TakeJournalText(content, text);
    EXPECT_EQ(content.damaged, 8U);
    ASSERT_EQ(content.entries.size(), 4U);
    EXPECT_EQ(content.entries[1].time, "t");
    EXPECT_EQ(content.entries[1].line + content.entries[2].line, 0);
    EXPECT_EQ(content.entries[1].crcAfter, std::nullopt);
}

TEST_F(JournalFolderTest, BeginsANewFileWhenOneIsFullAndGoesOnAfterATornLine)
{
    const std::size_t three = 3 * LineOf("a").size();
    JournalFolder journal(files, folder, three);
    // None of the program's, whatever is kept there.
    const std::vector<std::string> foreign{"/journal-backup.jsonl", "/journal-.jsonl", "/other-00007.jsonl",
                                           "/journal-00007.txt"};
    for (const std::string& name : foreign)
        files.Write(folder + name, LineOf("foreign"));
    for (const char* operation : {"a", "b", "c", "d"})
        journal.Append(LineOf(operation));
    EXPECT_THAT(Lines(), ElementsAre("a", "b", "c", "d"));
    for (const std::string& name : foreign)
        files.Remove(folder + name);
    EXPECT_THAT(files.List(folder), ElementsAre("journal-00001.jsonl", "journal.jsonl"));
    files.Write(path, LineOf("d") + "{\"time\":\"20");
    journal.Append(LineOf("e"));
    EXPECT_THAT(Lines(), ElementsAre("a", "b", "c", "d", "e"));
    for (int i = 0; i < 5; ++i)
        journal.Append(LineOf("f"));
    EXPECT_EQ(Lines().size(), 10U);
    JournalFolder(files, folder, 1).Append(LineOf("longer than a file"));
    EXPECT_THAT(files.List(folder),
                ElementsAre("journal-00001.jsonl", "journal-00002.jsonl", "journal-00003.jsonl",
                            "journal-00004.jsonl", "journal.jsonl"));
}

TEST_F(JournalFolderTest, SeveralProgramsAppendWholeLinesAndLoseNone)
{
    constexpr int Programs = 4;
    constexpr int Each = 60;
    std::vector<pid_t> children;
    for (int program = 0; program < Programs; ++program) {
        children.push_back(fork());
        if (children.back() == 0) {
            JournalFolder journal(files, folder, 10 * LineOf("0").size());
            for (int i = 0; i < Each; ++i)
                journal.Append(LineOf(std::to_string(program)));
            _exit(0);
        }
    }
    for (const pid_t child : children) {
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    std::map<std::string, int> counts;
    for (const std::string& line : Lines())
        ++counts[line];
    EXPECT_EQ(ReadJournal(JournalFolder(files, folder)).damaged, 0U);
    for (int program = 0; program < Programs; ++program)
        EXPECT_EQ(counts[std::to_string(program)], Each);
}

TEST_F(JournalFolderTest, SaysWhyItCannotBeKept)
{
    const auto expect = [](JournalFolder journal, const char* words) {
        EXPECT_THAT([&] { journal.Append("{}\n"); }, testing::ThrowsMessage<FileError>(HasSubstr(words)));
    };
    files.Write(path, LineOf("a"));
    expect(JournalFolder(files, path), "Not a directory");
    {
        const Descriptor other(open(path.c_str(), O_RDONLY | O_CLOEXEC));
        flock(other.Number(), LOCK_EX);
        expect(JournalFolder(files, folder, 1000, {}), "busy");
    }
    EXPECT_THAT(Lines(), ElementsAre("a"));
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    expect(JournalFolder(files, folder), "Is a directory");
}

}  // namespace kelvora
