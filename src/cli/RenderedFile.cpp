#include "cli/RenderedFile.h"

#include <nlohmann/json.hpp>

#include "cli/SetupJson.h"
#include "picture/SetupSheet.h"
#include "platform/Encoding.h"
#include "platform/Files.h"
#include "setup/SetupFileNames.h"

namespace kelvora {

void RenderedFile::Read()
{
    std::string text;
    verdict_ = CheckSetup(name_, text, &document_);
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
        verdict_ = Unusable(reason);
}

std::string RenderedFile::Diagnostic() const
{
    return VerdictLine(name_.path, verdict_);
}

std::string RenderedFile::Json() const
{
    nlohmann::ordered_json object = VerdictObject(name_.path, verdict_);
    object["output"] = IsAccepted() ? nlohmann::ordered_json(Utf8FromPath(output_)) : nullptr;
    return object.dump() + "\n";
}

std::string WritePicture(const std::string& path, const std::string& picture)
{
    if (picture.empty())
        return "the picture could not be made";
    try {
        ReplaceFile(path, picture);
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
