// Writes the manual pages and the completions of all programs:
//   kelvora-manual TEXTS FOLDER DATE
// TEXTS has the hand-written parts: a page's NAME.roff, and PROGRAM.end for all pages of a program.
// DATE is that of the version.
#include <CLI/CLI.hpp>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>

#include "bench/posix/BenchOptions.h"
#include "cli/Cli.h"
#include "cli/Console.h"
#include "cli/manual/Completion.h"
#include "cli/manual/ManPage.h"
#include "cli/qt/QtLineAccess.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora::manual {

namespace {

CommandText DescribeCommandLine(int argc, char** argv)
{
    int exitCode = ExitCode::Done;
    Console console{std::cin, std::cout, std::cerr};
    const auto access = MakeQtLineAccess(argc, argv);
    CLI::App app;
    AddCli(app, console, *access, exitCode);
    return Describe(app);
}

CommandText DescribeBench()
{
    bench::BenchOptions options;
    CLI::App app;
    bench::AddBench(app, options);
    return Describe(app);
}

class Writer {
public:
    Writer(std::string texts, std::string folder, std::string date)
        : texts_(std::move(texts)), folder_(std::move(folder)), date_(std::move(date))
    {
    }

    void Write(const CommandText& program)
    {
        PageTexts page{KELVORA_VERSION, date_, {}, TextIfThere(program.path + ".end")};
        for (const CommandText* const command : WithAllBelow(program)) {
            page.body = TextIfThere(PageName(*command) + ".roff");
            Put("man", PageName(*command) + ".1", ManPage(*command, page));
        }
        Put("bash", program.path, BashCompletion(program));
        Put("zsh", "_" + program.path, ZshCompletion(program));
        Put("fish", program.path + ".fish", FishCompletion(program));
    }

private:
    std::string TextIfThere(const std::string& name) const
    {
        const std::string path = texts_ + "/" + name;
        return std::filesystem::exists(path) ? PosixFiles().Read(path) : std::string();
    }
    void Put(const std::string& below, const std::string& name, const std::string& text) const
    {
        std::filesystem::create_directories(folder_ + "/" + below);
        PosixFiles().Write(folder_ + "/" + below + "/" + name, text);
    }

    std::string texts_, folder_, date_;
};

}  // namespace

}  // namespace kelvora::manual

int main(int argc, char** argv)
{
    using namespace kelvora::manual;
    if (argc != 4) {
        std::cerr << "Usage: kelvora-manual TEXTS FOLDER DATE\n";
        return 2;
    }
    try {
        Writer writer(argv[1], argv[2], argv[3]);
        writer.Write(DescribeWindows());
        writer.Write(DescribeCommandLine(argc, argv));
        writer.Write(DescribeBench());
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "kelvora-manual: " << error.what() << '\n';
        return 1;
    }
}
