#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "bench/posix/BenchOptions.h"
#include "bench/posix/BenchProgram.h"

int main(int argc, char** argv)
{
    using namespace kelvora::bench;
    int exitCode = Done;
    try {
        const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
        if (const auto options = ParseBenchOptions(arguments, std::cout, std::cerr, exitCode))
            RunBench(*options, std::cout, std::cerr);
    } catch (const std::exception& error) {
        std::cerr << "kelvora-bench: " << error.what() << '\n';
        return Failed;
    }
    return exitCode;
}
