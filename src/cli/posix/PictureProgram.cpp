#include "cli/posix/PictureProgram.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "picture/PictureRecords.h"
#include "platform/posix/Descriptor.h"

namespace kelvora {

namespace {

constexpr const char* ProgramName = "kelvora-picture";

[[noreturn]] void Fail(int error)
{
    throw PictureError(std::string(ProgramName) + ": " + std::generic_category().message(error));
}

// The whole input, for a child that reads when it likes: neither side can wait for the other for ever.
void Fill(const Descriptor& file, std::string_view input)
{
    if (!file.IsOpen() || !file.Write(input))
        Fail(errno);
    lseek(file.Number(), 0, SEEK_SET);
}

std::string ReadToEnd(const Descriptor& pipe)
{
    std::string text;
    std::array<char, 65536> part{};
    for (;;) {
        const ssize_t count = read(pipe.Number(), part.data(), part.size());
        if (count == 0 || (count < 0 && errno != EINTR))
            return text;
        text.append(part.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
}

pid_t Spawn(const std::string& program, const std::vector<std::string>& arguments, int input, int output)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    std::vector<std::string> texts(arguments);
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    pid_t child = 0;
    const int error = posix_spawn(&child, program.c_str(), &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error == ENOENT)
        throw PictureError(std::string("PNG and PDF are made by the program ") + ProgramName +
                           ", which is not there: build it with the windows, or take SVG");
    if (error != 0)
        Fail(error);
    return child;
}

std::string Run(const std::string& program, const std::vector<std::string>& arguments, std::string_view input)
{
    const Descriptor file(memfd_create(ProgramName, MFD_CLOEXEC));
    Fill(file, input);
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        Fail(errno);
    const Descriptor reading(ends[0]);
    Descriptor writing(ends[1]);
    const pid_t child = Spawn(program, arguments, file.Number(), writing.Number());
    writing.Close();
    std::string output = ReadToEnd(reading);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw PictureError(std::string(ProgramName) + " failed");
    return output;
}

}  // namespace

std::string PictureProgram()
{
    std::error_code none;
    return std::filesystem::read_symlink("/proc/self/exe", none).parent_path() / ProgramName;
}

std::vector<std::string> MakePictures(const std::string& program, PictureType type,
                                      std::span<const std::vector<std::string>> items)
{
    std::string input;
    for (const std::vector<std::string>& pages : items)
        input += PictureRecord(pages);
    const std::string output = Run(program, {ProgramName, std::string(PictureTypeName(type))}, input);
    std::string_view rest = output;
    std::vector<std::string> pictures;
    for (std::size_t i = 0; i < items.size(); ++i) {
        auto picture = TakePictureRecord(rest);
        if (!picture)
            throw PictureError(std::string(ProgramName) + " gave no picture");
        pictures.push_back(std::move(picture->front()));
    }
    return pictures;
}

}  // namespace kelvora
