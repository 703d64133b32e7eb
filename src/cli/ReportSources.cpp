#include "cli/ReportSources.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <utility>

#include "cli/OrderedWork.h"
#include "cli/Verdict.h"
#include "picture/StripPicture.h"
#include "platform/AsciiCase.h"
#include "platform/Encoding.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora {

namespace fs = std::filesystem;

namespace {

struct TillRead {
    TillFacts facts;
    std::string diagnostic;
};

// A folder that could not be read has no name below itself.
std::string TillName(const FoundName& name)
{
    const std::string below(name.Below());
    return Utf8FromPath(below.empty() ? name.path : fs::path(below).replace_extension().string());
}

std::string WhyText(const Verdict& verdict)
{
    if (verdict.outcome == Verdict::Outcome::Unreadable)
        return verdict.message;
    return "line " + std::to_string(verdict.line) + ": " + ErrorNumberText(verdict.number) + " " +
           verdict.message;
}

TillRead ReadTill(const FoundName& name, const SetupDocument* standard)
{
    std::string text;
    SetupDocument document;
    const Verdict verdict = CheckSetup(name, text, &document);
    if (verdict.outcome == Verdict::Outcome::Accepted)
        return {FactsOf(TillName(name), Utf8FromPath(name.path), std::move(document), standard), {}};
    return {{TillName(name), Utf8FromPath(name.path), WhyText(verdict)}, VerdictLine(name.path, verdict)};
}

struct ResultsRead {
    std::vector<TillResult> results;
    std::string diagnostic;
};

std::chrono::sys_seconds ChangeOf(const std::string& path)
{
    struct stat status {};
    return std::chrono::sys_seconds(
        std::chrono::seconds(stat(path.c_str(), &status) == 0 ? status.st_mtime : 0));
}

ResultsRead ReadResultFile(const std::string& path)
{
    ResultsRead read;
    try {
        std::string text;
        ReadWholeFile(path, text);
        // A file is made before it is written to.
        if (text.empty())
            return read;
        if (auto results = ReadResults(text, ChangeOf(path)))
            read.results = *std::move(results);
        else
            read.diagnostic = FailureLine(path, "holds no results");
    } catch (const FileError& error) {
        read.diagnostic = FailureLine(path, error.what());
    }
    return read;
}

std::vector<std::string> ResultFilesBelow(const std::string& folder)
{
    std::vector<std::string> paths;
    std::error_code problem;
    for (fs::recursive_directory_iterator at(folder, problem), end; !problem && at != end;
         at.increment(problem)) {
        const std::string ending = LowerCase(at->path().extension().string());
        std::error_code unknown;
        if ((ending == ".json" || ending == ".jsonl") && !at->is_directory(unknown))
            paths.push_back(at->path().string());
    }
    if (problem)
        throw FileError(folder, problem.message());
    std::ranges::sort(paths);
    return paths;
}

}  // namespace

int AddTills(FleetReport& report, const std::vector<FoundName>& names, const SetupDocument* standard,
             Console& console)
{
    int exitCode = ExitCode::Done;
    RunOrderedOn<TillRead>(
        names, [&](const FoundName& name) { return ReadTill(name, standard); },
        [&](const TillRead& read) {
            console.err << read.diagnostic;
            if (!read.diagnostic.empty())
                exitCode = ExitCode::Rejected;
            report.Add(read.facts);
        });
    RunOrderedOn<std::string>(
        report.ToDraw(), [](const ModuleList& modules) { return StripPicture(modules); },
        [&](const std::string& svg) { report.AddPicture(svg); });
    return exitCode;
}

int AddResultsBelow(FleetReport& report, const std::string& folder, Console& console)
{
    int exitCode = ExitCode::Done;
    std::vector<TillResult> results;
    RunOrderedOn<ResultsRead>(ResultFilesBelow(folder), ReadResultFile, [&](const ResultsRead& read) {
        console.err << read.diagnostic;
        if (!read.diagnostic.empty())
            exitCode = ExitCode::Rejected;
        std::ranges::copy(read.results, std::back_inserter(results));
    });
    report.AddResults(results);
    return exitCode;
}

}  // namespace kelvora
