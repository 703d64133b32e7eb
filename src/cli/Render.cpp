#include "cli/Render.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/PictureProgram.h"
#include "cli/RenderFolder.h"
#include "cli/RenderedFile.h"
#include "cli/SetupNames.h"
#include "flash/Backups.h"
#include "platform/AsciiCase.h"

namespace kelvora {

namespace {

constexpr std::array<std::string_view, 3> Types{"svg", "png", "pdf"};

// The type that a file's name stands for; empty for another ending.
std::string_view TypeOf(std::string_view path)
{
    const std::size_t dot = path.rfind('.');
    if (dot == std::string_view::npos)
        return {};
    const std::string_view ending = path.substr(dot + 1);
    const auto* const type = std::ranges::find_if(
        Types, [&](std::string_view known) { return std::ranges::equal(known, ending, {}, {}, AsciiLower); });
    return type == Types.end() ? std::string_view() : *type;
}

int Misused(Console& console, std::string_view text)
{
    console.err << DiagnosticLine(text);
    return ExitCode::Usage;
}

std::vector<RenderedFile> ReadAll(const RenderRequest& request, Console& console)
{
    std::vector<RenderedFile> read;
    FindSetups(request.names, console.in, '\n',
               {[&](FoundName name) {
                    read.emplace_back(std::move(name));
                    read.back().Read();
                    return true;
                },
                [] {}});
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

std::string PictureOf(const std::vector<std::string>& pages, const std::string& type,
                      const RenderRequest& request)
{
    if (type == "svg")
        return pages.front();
    return MakePictures(request.program, type, {&pages, 1}).front();
}

int RenderOne(const RenderRequest& request, const std::string& type, Console& console)
{
    std::vector<RenderedFile> files = ReadAll(request, console);
    const std::vector<std::string> pages = Pages(files, request.now);
    if (files.size() > 1 && type != "pdf")
        return Misused(console, "several setups need a PDF or --output-folder");
    if (!pages.empty()) {
        const std::string picture = PictureOf(pages, type, request);
        for (RenderedFile& file : files)
            file.output = request.output;
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
    const std::string_view ending = TypeOf(request.output);
    if (!request.output.empty() && !request.outputFolder.empty())
        return Misused(console, "either --output or --output-folder");
    if (!request.output.empty() && ending.empty())
        return Misused(console, "expected a name that ends in .svg, .png or .pdf: " + request.output);
    if (!ending.empty() && !request.type.empty() && request.type != ending)
        return Misused(console, "the name and --type do not agree: " + request.output);
    if (request.json && request.output.empty() && request.outputFolder.empty())
        return Misused(console, "--json needs --output or --output-folder");
    std::string type = request.type.empty() ? std::string(ending) : request.type;
    if (type.empty())
        type = Types.front();
    return request.outputFolder.empty() ? RenderOne(request, type, console)
                                        : RenderFolder(request, type, console);
}

void AddRenderCommand(CLI::App& app, Console& console, int& exitCode)
{
    const auto request = std::make_shared<RenderRequest>();
    CLI::App* command = app.add_subcommand("render", "Draw setup files as sheets, to print or to attach");
    command->add_option("FILE", request->names, "Setup files, or folders: all *.dat and *.txt below them")
        ->type_name("")
        ->required();
    command
        ->add_option("-o,--output", request->output,
                     "Write to that file, whose name ends in .svg, .png or .pdf; several setups become the "
                     "pages of a PDF")
        ->type_name("OUT");
    command
        ->add_option("--output-folder", request->outputFolder,
                     "Write a picture of each setup into that folder, named after its file")
        ->type_name("FOLDER");
    command->add_option("--type", request->type, "svg, png or pdf; svg unless told")
        ->type_name("TYPE")
        ->check(CLI::IsMember({"svg", "png", "pdf"}));
    command->add_flag("--json", request->json, "Print an object a line for every file");
    command->footer(
        "A sheet is an A4 page: the modules, their options, and the keys with their numbers. A picture that "
        "is\n"
        "replaced is kept under its name and \".bak\".");
    command->callback([request, &console, &exitCode] {
        request->program = PictureProgram();
        request->now = Backups::LocalTime();
        exitCode = Render(*request, console);
    });
}

}  // namespace kelvora
