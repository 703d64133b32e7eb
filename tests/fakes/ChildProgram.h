// A program that a test starts, speaks with, and ends.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/posix/Descriptor.h"

namespace kelvora {

inline constexpr int PatienceMs = 5000;

/// What comes until `end` is among it, or until nothing more comes.
inline std::string Hear(int descriptor, std::string_view end, int patienceMs = PatienceMs)
{
    std::string heard;
    pollfd waiting{.fd = descriptor, .events = POLLIN, .revents = 0};
    while (heard.find(end) == std::string::npos && poll(&waiting, 1, patienceMs) > 0) {
        std::array<char, 512> bytes{};
        const ssize_t length = read(descriptor, bytes.data(), bytes.size());
        if (length <= 0)
            return heard + "(gone)";
        heard.append(bytes.data(), static_cast<std::size_t>(length));
    }
    return heard;
}

class ChildProgram {
public:
    /// Output is what it writes to `heard`.
    explicit ChildProgram(std::string program, std::vector<std::string> arguments, int heard = STDOUT_FILENO)
    {
        std::array<int, 2> input{};
        std::array<int, 2> output{};
        EXPECT_EQ(pipe2(input.data(), O_CLOEXEC), 0);
        EXPECT_EQ(pipe2(output.data(), O_CLOEXEC), 0);
        std::vector<char*> pointers{program.data()};
        for (std::string& argument : arguments)
            pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        child_ = fork();
        if (child_ == 0) {
            dup2(input[0], STDIN_FILENO);
            dup2(output[1], heard);
            execvp(pointers[0], pointers.data());
            _exit(127);
        }
        input_ = Descriptor(input[1], "pipe");
        output_ = Descriptor(output[0], "pipe");
        close(input[0]);
        close(output[1]);
    }
    ChildProgram(const ChildProgram&) = delete;
    ChildProgram& operator=(const ChildProgram&) = delete;
    ~ChildProgram()
    {
        if (child_ > 0)
            kill(child_, SIGKILL);
        Wait();
    }

    std::string Output(std::string_view end, int patienceMs = PatienceMs) const
    {
        return Hear(output_.Number(), end, patienceMs);
    }
    pid_t Process() const { return child_; }
    void CloseInput() { input_.Close(); }
    void Signal(int number) const { kill(child_, number); }
    /// Its exit code; -1 when it has none.
    int Wait()
    {
        int status = -1;
        if (child_ > 0)
            waitpid(std::exchange(child_, 0), &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t child_ = 0;
    Descriptor input_;
    Descriptor output_;
};

}  // namespace kelvora
