#include "cli/RenderFolder.h"

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

#include "cli/OrderedWork.h"
#include "cli/RenderedFile.h"
#include "cli/posix/PictureProgram.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora {

namespace {

// Worth the start of the program that makes pictures, and few enough to keep all cores at work.
constexpr std::size_t FilesPerBatch = 32;

using RenderBatch = std::vector<RenderedFile>;

std::string FileName(std::string_view path)
{
    return std::string(path.substr(path.rfind('/') + 1));
}

// The name of what is drawn of `path`, which was found under the name `given`, below the output folder.
std::string PictureName(std::string_view path, std::string_view given, PictureType type)
{
    std::string name = FileName(path);
    if (path.size() > given.size() && path.starts_with(given)) {
        name = path.substr(given.size());
        name.erase(0, name.find_first_not_of('/'));
    }
    const std::size_t dot = name.rfind('.');
    if (dot != std::string::npos && dot > name.rfind('/') + 1)
        name.resize(dot);
    return name.append(".").append(PictureTypeName(type));
}

// Finds the files and gives each the place of its picture.
class BatchMaker {
public:
    BatchMaker(const RenderRequest& request, PictureType type, std::istream& in,
               OrderedBatches<RenderBatch>& batches)
        : request_(request), type_(type), in_(in), batches_(batches)
    {
    }

    void Run()
    {
        for (const std::string& given : request_.names)
            FindSetups({&given, 1}, in_, '\n',
                       {[&](FoundName name) { return Take(std::move(name), given); }, [&] { Pass(); }});
        Pass();
    }

private:
    bool Take(FoundName name, const std::string& given)
    {
        if (!batch_) {
            batch_ = batches_.Fill();
            if (!batch_)
                return false;
            batch_->clear();
        }
        const std::string output = request_.outputFolder + "/" + PictureName(name.path, given, type_);
        if (name.failure.empty() && !taken_.insert(output).second)
            name.failure = "another setup's picture has the same name: " + output;
        batch_->emplace_back(std::move(name)).output = output;
        if (batch_->size() == FilesPerBatch)
            Pass();
        return true;
    }

    void Pass()
    {
        if (std::exchange(batch_, nullptr))
            batches_.Pass();
    }

    const RenderRequest& request_;
    PictureType type_;
    std::istream& in_;
    OrderedBatches<RenderBatch>& batches_;
    RenderBatch* batch_ = nullptr;
    std::set<std::string> taken_;
};

void Save(RenderedFile& file, const std::string& picture)
{
    try {
        PosixFiles().MakeFolder(file.output.substr(0, file.output.rfind('/')));
        if (const std::string failure = WritePicture(file.output, picture); !failure.empty())
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
        [&](OrderedBatches<RenderBatch>& batches) { BatchMaker(request, type, console.in, batches).Run(); },
        [&](RenderBatch& batch) { DrawBatch(batch, request, type); },
        [&](const RenderBatch& batch) {
            exitCode = std::max(exitCode.value_or(ExitCode::Done), Report(batch, request.json, console));
        });
    return exitCode;
}

}  // namespace kelvora
