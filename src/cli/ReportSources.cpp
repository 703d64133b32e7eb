#include "cli/ReportSources.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <iterator>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

#include "cli/OrderedWork.h"
#include "cli/Verdict.h"
#include "picture/StripPicture.h"
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

ResultsRead ReadResultFile(const FoundName& name)
{
    const std::string& path = name.path;
    if (!name.failure.empty())
        return {{}, FailureLine(path, name.failure)};
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

using FileId = std::pair<dev_t, ino_t>;

// The same for a file by whatever name.
std::optional<FileId> IdOf(const std::string& path)
{
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? std::optional(FileId(status.st_dev, status.st_ino))
                                            : std::nullopt;
}

// Results name their setups as others reached them, the report as it was told them.
void NameSetupsAs(const std::vector<ReportTill>& tills, std::vector<TillResult>& results)
{
    std::map<FileId, std::string> files;
    for (const ReportTill& till : tills)
        if (const auto id = IdOf(till.file))
            files.emplace(*id, till.file);
    for (TillResult& result : results) {
        const auto id = result.setup.empty() ? std::nullopt : IdOf(result.setup);
        const auto at = id ? files.find(*id) : files.end();
        result.setup = at == files.end() ? std::string() : at->second;
    }
}

}  // namespace

int AddTills(FleetReport& report, const std::vector<FoundName>& names, const SetupDocument* standard,
             Console& console)
{
    int exitCode = ExitCode::Done;
    RunOrderedOn<TillRead>(
        names, [&](const FoundName& name) { return ReadTill(name, standard); },
        [&](TillRead&& read) {
            console.err << read.diagnostic;
            if (!read.diagnostic.empty())
                exitCode = ExitCode::Rejected;
            report.Add(std::move(read.facts));
        });
    RunOrderedOn<std::string>(
        report.ToDraw(), [](const ModuleList& modules) { return StripPicture(modules); },
        [&](const std::string& svg) { report.AddPicture(svg); });
    return exitCode;
}

int AddResultsBelow(FleetReport& report, const std::string& folder, Console& console)
{
    constexpr std::array<std::string_view, 2> ResultEndings{".json", ".jsonl"};
    const std::vector<FoundName> files = FilesBelow(folder, ResultEndings);
    if (!files.empty() && files.front().path == folder)
        throw FileError(folder, files.front().failure);
    int exitCode = ExitCode::Done;
    std::vector<TillResult> results;
    RunOrderedOn<ResultsRead>(files, ReadResultFile, [&](const ResultsRead& read) {
        console.err << read.diagnostic;
        if (!read.diagnostic.empty())
            exitCode = ExitCode::Rejected;
        std::ranges::copy(read.results, std::back_inserter(results));
    });
    NameSetupsAs(report.Tills(), results);
    report.AddResults(results);
    return exitCode;
}

}  // namespace kelvora
