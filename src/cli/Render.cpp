#include "cli/Render.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "cli/Commands.h"
#include "cli/RenderedFile.h"
#include "cli/SetupNames.h"
#include "cli/SetupOutput.h"
#include "cli/posix/PictureProgram.h"
#include "picture/PictureType.h"
#include "platform/LocalTime.h"

namespace kelvora {

namespace {

std::vector<RenderedFile> ReadAll(const RenderRequest& request, Console& console)
{
    std::vector<RenderedFile> read;
    for (FoundName& name : AllSetups(request.names, console.in)) {
        read.emplace_back(PlacedSetup{std::move(name), request.output});
        read.back().Read();
    }
    return read;
}

// The sheets of what was accepted, which are pages of one document.
std::vector<std::string> Pages(const std::vector<RenderedFile>& files, std::chrono::local_seconds now)
{
    std::vector<const RenderedFile*> accepted;
    for (const RenderedFile& file : files)
        if (file.IsAccepted())
            accepted.push_back(&file);
    std::vector<std::string> pages;
    pages.reserve(accepted.size());
    for (const RenderedFile* file : accepted)
        pages.push_back(
            file->Sheet(now, static_cast<int>(pages.size()) + 1, static_cast<int>(accepted.size())));
    return pages;
}

std::string PictureOf(const std::vector<std::string>& pages, PictureType type, const RenderRequest& request)
{
    if (type == PictureType::Svg)
        return pages.front();
    return MakePictures(request.program, type, {&pages, 1}).front();
}

std::optional<int> RenderOne(const RenderRequest& request, PictureType type, Console& console)
{
    std::vector<RenderedFile> files = ReadAll(request, console);
    if (files.empty())
        return std::nullopt;
    const std::vector<std::string> pages = Pages(files, request.now);
    if (files.size() > 1 && type != PictureType::Pdf)
        return Misused(console, "several setups need a PDF or --output-folder");
    if (!pages.empty()) {
        const std::string picture = PictureOf(pages, type, request);
        if (request.output.empty() && !request.json)
            Emit(console, picture);
        else if (const std::string failure = WritePicture(request.output, picture); !failure.empty())
            for (RenderedFile& file : files)
                file.Fail(failure);
    }
    return Report(files, request.json, console);
}

}  // namespace

int Render(const RenderRequest& request, Console& console)
{
    const auto ending = PictureTypeOf(request.output);
    const auto wanted = PictureTypeNamed(request.type);
    if (!request.output.empty() && !request.outputFolder.empty())
        return Misused(console, "either --output or --output-folder");
    if (!request.output.empty() && !ending)
        return Misused(console, "expected a name that ends in .svg, .png or .pdf: " + request.output);
    if (ending && wanted && wanted != ending)
        return Misused(console, "the name and --type do not agree: " + request.output);
    if (request.json && request.output.empty() && request.outputFolder.empty())
        return Misused(console, "--json needs --output or --output-folder");
    const PictureType type = wanted.value_or(ending.value_or(PictureType::Svg));
    const auto exitCode = request.outputFolder.empty() ? RenderOne(request, type, console)
                                                       : RenderFolder(request, type, console);
    return exitCode ? *exitCode : NothingFound(console);
}

void AddRenderCommand(CLI::App& app, Console& console, int& exitCode)
{
    const auto request = std::make_shared<RenderRequest>();
    CLI::App* command = app.add_subcommand("render", "Draw setup files as sheets, to print or to attach");
    command->add_option("FILE", request->names, SetupNamesText)->type_name("")->required();
    AddPath(*command, "-o,--output", request->output, "OUT",
            "Write to that file, whose name ends in .svg, .png or .pdf; several setups become the pages of a "
            "PDF");
    AddPath(*command, "--output-folder", request->outputFolder, "FOLDER",
            "Write a picture of each setup into that folder, named after its file");
    command->add_option("--type", request->type, "svg, png or pdf; svg unless told")
        ->type_name("TYPE")
        ->check(CLI::IsMember(std::vector<std::string>(PictureTypeNames.begin(), PictureTypeNames.end())));
    command->add_flag("--json", request->json,
                      "Print an object a line for every file; needs --output or --output-folder");
    command->footer(
        "A sheet is an A4 page: the modules, their options, and the keys with their numbers. A picture that "
        "is\n"
        "replaced is kept under its name and \".bak\". \"-\" among the files reads names from standard "
        "input, one a "
        "line.");
    command->callback([request, &console, &exitCode] {
        request->program = PictureProgram();
        request->now = LocalTime();
        exitCode = Render(*request, console);
    });
}

}  // namespace kelvora
