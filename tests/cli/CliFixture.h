// Commands run in process, on files in a temporary folder.
#pragma once

#include <gmock/gmock.h>

#include <deque>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "cli/Cli.h"
#include "cli/Console.h"
#include "cli/LineAccess.h"
#include "fakes/BenchLine.h"
#include "fakes/MemoryJournal.h"
#include "fakes/TestFolder.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora {

using Json = nlohmann::json;
using testing::_;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

struct CliResult {
    int exitCode = 0;
    std::string out, err;
};

/// Matches a CliResult by its exit code and what was written to both outputs; nothing is said of `_`.
template <class Code, class Out = decltype(_), class Err = decltype(_)>
auto Gives(const Code& exitCode, const Out& out = _, const Err& err = _)
{
    return testing::FieldsAre(exitCode, out, err);
}

MATCHER_P(HoldsMembers, members, "holds " + members.dump())
{
    Json changed = Json::parse(arg);
    changed.update(members);
    return changed == Json::parse(arg);
}

/// Matches a text that is a JSON object with these members, whatever others it has.
inline auto JsonWith(Json::initializer_list_t members)
{
    return HoldsMembers(Json::object(members));
}

/// A simulated line of all four modules behind COM1, on virtual time.
class FakeLineAccess : public LineAccess {
public:
    Comms& Prepare(const LineOptions& options) override
    {
        asked = options;
        return comms;
    }
    bool StopRequested() override { return stopAfter >= 0 && stopAfter-- == 0; }
    int StopCount() override { return stops; }
    bool ShowsProgress() const override { return showsProgress; }
    bool CanAsk() const override { return answer || !answers.empty(); }
    bool Ask(const std::string& question) override
    {
        questions.push_back(question);
        if (whileAsked)
            whileAsked();
        if (answers.empty())
            return answer.value();
        const bool next = answers.front();
        answers.pop_front();
        return next;
    }
    SerialPort& Port(int /*line*/) override { return bench.port; }
    std::string DataFolder() const override { return data; }
    const Journal* OperationJournal() const override { return &kept.journal; }

    int stopAfter = -1;  ///< so many commands are sent before the user wants a stop; below 0 never
    int stops = 0;       ///< what StopCount gives
    bool showsProgress = false;
    std::optional<bool> answer;  ///< on the terminal; nothing where there is none
    std::deque<bool> answers;    ///< given in turn before that
    std::function<void()> whileAsked;
    std::vector<std::string> questions;
    std::string data;
    MemoryJournal kept;
    LineOptions asked;
    FakeEventLoop loop;
    BenchLine bench{loop};
    Comms comms{loop, {&bench.link, nullptr, nullptr, nullptr}};
};

/// What stands between blanks.
inline std::vector<std::string> Words(const std::string& text)
{
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), {}};
}

/// The objects that a command prints, one a line.
inline std::vector<Json> JsonLines(const std::string& text)
{
    std::vector<Json> objects;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        objects.push_back(Json::parse(line));
    return objects;
}

class CliTest : public testing::Test {
protected:
    std::string At(const std::string& name) const { return folder + "/" + name; }

    /// Fails unless each command, in words, is one that makes no sense.
    void ExpectUsage(std::initializer_list<std::string> commands)
    {
        for (const std::string& command : commands)
            EXPECT_THAT(Run(Words(command)), Gives(2, "", testing::Ne(""))) << command;
    }

    /// Writes till.dat, the setup of the line, and other.dat, which is that but for its fiscal option.
    void WriteTills()
    {
        EXPECT_EQ(Run({"scan", "-o", At("till.dat")}).exitCode, 0);
        std::string text = files.Read(At("till.dat"));
        Write("other.dat", text.replace(text.find(" YES\r", text.find("Fiscal")), 5, " NO\r"));
    }

    /// Over the simulated line where no other access is given.
    CliResult Run(const std::vector<std::string>& arguments, const std::string& input = {},
                  LineAccess* given = nullptr)
    {
        const auto run = [&](Console& console) {
            return RunCli(arguments, console.in, console.out, console.err, given ? *given : access);
        };
        return OnConsole(run, input);
    }
    /// What `run`, which gets a Console and gives the exit code, says there.
    template <class Action>
    static CliResult OnConsole(const Action& run, const std::string& input = {})
    {
        std::istringstream in(input);
        std::ostringstream out;
        std::ostringstream err;
        Console console{in, out, err};
        const int exitCode = run(console);
        return {exitCode, out.str(), err.str()};
    }

    /// Writes a file below the folder, with the folders on its way. Returns its path.
    std::string Write(const std::string& name, const std::string& text)
    {
        const std::string path = folder + "/" + name;
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        files.Write(path, text);
        return path;
    }

    PosixFiles files;
    FakeLineAccess access;
    TestFolder own;
    const std::string& folder = own.Path();
};

inline constexpr const char* Accepted = "[Kelvora]\n[MCR]\n";
inline constexpr const char* Rejected = "[Kelvora]\n[MCR]\nTracks = 1,3\n";
inline constexpr const char* RejectedSays = ":3: 0x80040107 expected 1,2,3 or 1,2 or 2,3\n";

}  // namespace kelvora
