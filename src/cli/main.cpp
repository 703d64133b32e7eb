#include <csignal>
#include <iostream>
#include <string>
#include <vector>

#include "cli/Cli.h"

int main(int argc, char** argv)
{
    // A reader that goes away is told of like any other failed write.
    std::signal(SIGPIPE, SIG_IGN);
    std::ios::sync_with_stdio(false);
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    return kelvora::RunCli(arguments, std::cin, std::cout, std::cerr);
}
