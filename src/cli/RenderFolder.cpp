#include "cli/RenderFolder.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "cli/OrderedWork.h"
#include "cli/RenderedFile.h"
#include "cli/SetupOutput.h"
#include "cli/posix/PictureProgram.h"
#include "platform/Files.h"

namespace kelvora {

namespace {

// Worth the start of the program that makes pictures, and few enough to keep all cores at work.
constexpr std::size_t PicturesPerBatch = 32;

using RenderBatch = std::vector<RenderedFile>;

// Finds the files and gives each the place of its picture.
class RenderBatchMaker {
public:
    RenderBatchMaker(const RenderRequest& request, PictureType type, std::istream& in,
                     OrderedBatches<RenderBatch>& batches)
        : request_(request), ending_('.' + std::string(PictureTypeName(type))), in_(in), batches_(batches)
    {
    }

    void Run()
    {
        FindSetups(request_.names, in_, '\n',
                   {[&](FoundName name) { return Take(std::move(name)); }, [&] { Pass(); }});
        Pass();
    }

private:
    bool Take(FoundName name)
    {
        if (!batch_) {
            batch_ = batches_.Fill();
            if (!batch_)
                return false;
            batch_->clear();
        }
        std::string output = PlaceInFolder(request_.outputFolder, name, ending_);
        batch_->emplace_back(places_.Take(std::move(name), std::move(output)));
        if (batch_->size() == PicturesPerBatch)
            Pass();
        return true;
    }

    void Pass()
    {
        if (std::exchange(batch_, nullptr))
            batches_.Pass();
    }

    const RenderRequest& request_;
    std::string ending_;
    std::istream& in_;
    OrderedBatches<RenderBatch>& batches_;
    RenderBatch* batch_ = nullptr;
    OutputPlaces places_{OutputPlaces::Backup::Appended};
};

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
    RunOrdered<RenderBatch>(
        [&](OrderedBatches<RenderBatch>& batches) {
            RenderBatchMaker(request, type, console.in, batches).Run();
        },
        [&](RenderBatch& batch) { DrawBatch(batch, request, type); },
        [&](const RenderBatch& batch) {
            exitCode = std::max(exitCode.value_or(ExitCode::Done), Report(batch, request.json, console));
        });
    return exitCode;
}

}  // namespace kelvora
