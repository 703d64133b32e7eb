// The command "render": setup files as sheets to look at, print or add to a ticket.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "cli/Console.h"
#include "picture/PictureType.h"

namespace kelvora {

struct RenderRequest {
    std::vector<std::string> names;  ///< files and folders, as for the command "check"
    std::string output;        ///< the one picture, or a PDF with a page a setup; standard output when empty
    std::string outputFolder;  ///< a picture a setup, named after its file; not together with `output`
    std::string type;          ///< "svg", "png" or "pdf"; when empty, as `output` ends, else SVG
    bool json = false;
    std::string program;               ///< what makes PNG and PDF, see cli/posix/PictureProgram.h
    std::chrono::local_seconds now{};  ///< the date on the sheets
};

/// Makes the pictures; what is replaced is kept under its name and ".bak". Files that are not accepted give a
/// diagnostic, the others are drawn. Returns the exit code. Throws OutputError, PictureError.
int Render(const RenderRequest& request, Console& console);

/// The part of it that fills a folder, on all cores: writes a picture of that type for each setup of the
/// request into its output folder, under the folders that a setup has below the folder that was named, with
/// the setup's file name and the type's ending. Two that would get one name are told, and the second is left
/// out. Nothing where there is no setup.
std::optional<int> RenderFolder(const RenderRequest& request, PictureType type, Console& console);

}  // namespace kelvora
