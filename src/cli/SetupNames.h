// Which setup files the names on a command line mean: files, all setup files below a folder, and names that
// come in on standard input. Other files below a folder are found in the same way.
#pragma once

#include <cstddef>
#include <functional>
#include <istream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kelvora {

/// Stands for standard input among the names.
inline constexpr std::string_view StandardInputName = "-";

/// What the help says of such names.
inline constexpr const char* SetupNamesText = "Setup files, or folders: all *.dat and *.txt below them";

struct FoundName {
    std::string path;
    std::string failure{};  ///< why the folder `path` could not be read; empty for a file
    std::size_t start = 0;  ///< where in `path` the part begins that Below gives

    /// The path below the folder that was named; of a file that was named itself, its name.
    std::string_view Below() const { return std::string_view(path).substr(start); }
};

/// Who is told of the names.
struct NameReceiver {
    std::function<bool(FoundName)> take;  ///< false when no more are wanted
    std::function<void()> pause;          ///< the next name may be long in coming
};

bool IsFolder(const std::string& path);

/// Hands on the files that `names` mean, in their order and as they are found. Of a folder these are all
/// files "*.dat" and "*.txt", in any letter case, in it and its subfolders, sorted by name (a folder of more
/// than 32768 names is sorted in groups of that many); links to folders are not followed below it. "-" stands
/// for names on `in`, which `separator` ends.
void FindSetups(std::span<const std::string> names, std::istream& in, char separator,
                const NameReceiver& receiver);

/// All of them at once; names on `in` are one a line.
std::vector<FoundName> AllSetups(std::span<const std::string> names, std::istream& in);

/// The files below a folder whose names have one of the endings, found and sorted in the same way, whole
/// paths.
std::vector<FoundName> FilesBelow(const std::string& folder, std::span<const std::string_view> endings);

}  // namespace kelvora
