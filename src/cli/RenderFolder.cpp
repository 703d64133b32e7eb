#include "cli/Render.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "cli/OrderedSetups.h"
#include "cli/RenderedFile.h"
#include "cli/SetupOutput.h"
#include "cli/posix/PictureProgram.h"
#include "platform/Files.h"

namespace kelvora {

namespace {

// Worth the start of the program that makes pictures, and few enough to keep all cores at work.
constexpr std::size_t PicturesPerBatch = 32;

using RenderBatch = std::vector<RenderedFile>;

void Save(RenderedFile& file, const std::string& picture)
{
    try {
        MakeFolderOf(file.Output());
        if (const std::string failure = WritePicture(file.Output(), picture); !failure.empty())
            file.Fail(failure);
    } catch (const FileError& error) {
        file.Fail(error.Path() + ": " + error.what());
    }
}

void DrawBatch(RenderBatch& batch, const RenderRequest& request, PictureType type)
{
    std::vector<RenderedFile*> drawn;
    std::vector<std::vector<std::string>> sheets;
    for (RenderedFile& file : batch) {
        file.Read();
        if (!file.IsAccepted())
            continue;
        drawn.push_back(&file);
        sheets.push_back({file.Sheet(request.now)});
    }
    if (drawn.empty())
        return;
    std::vector<std::string> pictures;
    if (type != PictureType::Svg)
        pictures = MakePictures(request.program, type, sheets);
    for (std::size_t i = 0; i < drawn.size(); ++i)
        Save(*drawn[i], pictures.empty() ? sheets[i].front() : pictures[i]);
}

}  // namespace

std::optional<int> RenderFolder(const RenderRequest& request, PictureType type, Console& console)
{
    std::optional<int> exitCode;
    OutputPlaces places(OutputPlaces::Backup::Appended);
    const std::string ending = '.' + std::string(PictureTypeName(type));
    RunOrderedSetups<RenderBatch>(
        request.names, console.in, '\n', PicturesPerBatch,
        [&](RenderBatch& batch, FoundName name) {
            std::string output = PlaceInFolder(request.outputFolder, name, ending);
            batch.emplace_back(places.Take(std::move(name), std::move(output)));
        },
        [&](RenderBatch& batch) { DrawBatch(batch, request, type); },
        [&](const RenderBatch& batch) {
            exitCode = std::max(exitCode.value_or(ExitCode::Done), Report(batch, request.json, console));
        });
    return exitCode;
}

}  // namespace kelvora
