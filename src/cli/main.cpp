#include <iostream>
#include <string>
#include <vector>

#include "cli/Cli.h"
#include "cli/qt/QtLineAccess.h"

int main(int argc, char** argv)
{
    std::ios::sync_with_stdio(false);
    // Names are read on another thread than the one that writes results: reading must not flush them.
    std::cin.tie(nullptr);
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const auto access = kelvora::MakeQtLineAccess(argc, argv);
    return kelvora::RunCli(arguments, std::cin, std::cout, std::cerr, *access);
}
