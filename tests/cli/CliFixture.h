// Commands run in process, on files in a temporary folder.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "cli/Cli.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora {

struct CliResult {
    int exitCode = 0;
    std::string out, err;
};

class CliTest : public testing::Test {
protected:
    ~CliTest() override { std::filesystem::remove_all(folder); }

    static CliResult Run(const std::vector<std::string>& arguments, const std::string& input = {})
    {
        std::istringstream in(input);
        std::ostringstream out;
        std::ostringstream err;
        const int exitCode = RunCli(arguments, in, out, err);
        return {exitCode, out.str(), err.str()};
    }

    /// Writes a file below the folder, with the folders on its way. Returns its path.
    std::string Write(const std::string& name, const std::string& text)
    {
        const std::string path = folder + "/" + name;
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        files.Write(path, text);
        return path;
    }

    PosixFiles files;
    std::string folder = MakeFolder();

private:
    static std::string MakeFolder()
    {
        std::string name = testing::TempDir() + "kelvora-cli-XXXXXX";
        return mkdtemp(name.data());
    }
};

inline constexpr const char* Accepted = "[Kelvora]\n[MCR]\n";
inline constexpr const char* Rejected = "[Kelvora]\n[MCR]\nTracks = 1,3\n";
inline constexpr const char* RejectedSays = ":3: 0x80040107 expected 1,2,3 or 1,2 or 2,3\n";

}  // namespace kelvora
