// One setup file on its way to a picture: read, drawn, and what came of it.
#pragma once

#include <chrono>
#include <span>
#include <string>

#include "cli/Console.h"
#include "cli/SetupOutput.h"
#include "cli/Verdict.h"

namespace kelvora {

class RenderedFile {
public:
    explicit RenderedFile(PlacedSetup setup) : name_(std::move(setup.name)), output_(std::move(setup.output))
    {
    }

    /// Reads the setup.
    void Read();

    bool IsAccepted() const { return verdict_.outcome == Verdict::Outcome::Accepted; }
    const std::string& Path() const { return name_.path; }
    /// Where its picture is, or was to be.
    const std::string& Output() const { return output_; }

    /// The setup's name, UTF-8.
    std::string Title() const;

    /// The sheet of an accepted file as an SVG document.
    std::string Sheet(std::chrono::local_seconds now, int page = 1, int pages = 1) const;

    /// The picture could not be made or written.
    void Fail(const std::string& reason);

    /// What a diagnostic says of it; empty when all went well.
    std::string Diagnostic() const;

    /// VerdictObject and "output", null without one, as a line.
    std::string Json() const;

private:
    FoundName name_;
    std::string output_;
    Verdict verdict_;
    SetupDocument document_;
};

/// ReplaceFile with a picture. Returns why it could not be written; empty when it was.
std::string WritePicture(const std::string& path, const std::string& picture);

/// Prints the objects and the diagnostics. Returns the exit code. Throws OutputError.
int Report(std::span<const RenderedFile> files, bool json, Console& console);

}  // namespace kelvora
