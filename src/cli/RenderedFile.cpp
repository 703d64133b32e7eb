#include "cli/RenderedFile.h"

#include <filesystem>
#include <nlohmann/json.hpp>
#include <system_error>

#include "cli/SetupJson.h"
#include "layout/SetupFileCommands.h"
#include "picture/SetupSheet.h"
#include "platform/Encoding.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora {

void RenderedFile::Read()
{
    std::string text;
    verdict_ = name_.failure.empty() ? CheckSetupFile(name_.path, text, &document_)
                                     : Verdict{Verdict::Outcome::Unreadable, 0, 0, name_.failure};
}

std::string RenderedFile::Title() const
{
    return Utf8FromPath(DisplayName(name_.path));
}

std::string RenderedFile::Sheet(std::chrono::local_seconds now, int page, int pages) const
{
    // The results of a command read the same on every machine.
    static const MessageCatalogue English;
    return SetupSheet(document_, {Title(), Utf8FromPath(name_.path), SheetDate(now), false, page, pages},
                      English);
}

void RenderedFile::Fail(const std::string& reason)
{
    if (IsAccepted())
        verdict_ = {Verdict::Outcome::Unreadable, 0, 0, reason};
}

std::string RenderedFile::Diagnostic() const
{
    return VerdictLine(name_.path, verdict_);
}

std::string RenderedFile::Json() const
{
    nlohmann::ordered_json object = VerdictObject(name_.path, verdict_);
    object["output"] = IsAccepted() ? nlohmann::ordered_json(Utf8FromPath(output)) : nullptr;
    return object.dump() + "\n";
}

std::string WritePicture(const std::string& path, const std::string& picture)
{
    if (picture.empty())
        return "the picture could not be made";
    // Of any size: a document of many pages is larger than a text that is read whole.
    std::error_code problem;
    const std::string backup = path + ".bak";
    if (std::filesystem::is_regular_file(path, problem) &&
        !std::filesystem::copy_file(path, backup, std::filesystem::copy_options::overwrite_existing, problem))
        return backup + ": " + problem.message();
    try {
        PosixFiles().Write(path, picture);
        return {};
    } catch (const FileError& error) {
        return error.Path() + ": " + error.what();
    }
}

int Report(std::span<const RenderedFile> files, bool json, Console& console)
{
    int exitCode = ExitCode::Done;
    std::string results;
    for (const RenderedFile& file : files) {
        if (!file.IsAccepted())
            exitCode = ExitCode::Rejected;
        console.err << file.Diagnostic();
        if (json)
            results += file.Json();
    }
    if (!results.empty())
        Emit(console, results);
    return exitCode;
}

}  // namespace kelvora
