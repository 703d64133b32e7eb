// Which setup files the names on a command line mean: files, all setup files below a folder, and names that
// come in on standard input. Names are handed on as they are found; none are kept.
#pragma once

#include <functional>
#include <istream>
#include <span>
#include <string>
#include <string_view>

namespace kelvora {

/// Stands for standard input among the names.
inline constexpr std::string_view StandardInputName = "-";

struct FoundName {
    std::string path;
    std::string failure;  ///< why the folder `path` could not be read; empty for a file
};

/// Who is told of the names.
struct NameReceiver {
    std::function<bool(FoundName)> take;  ///< false when no more are wanted
    std::function<void()> pause;          ///< the next name may be long in coming
};

/// Hands on the files that `names` mean, in their order. Of a folder these are all files "*.dat" and "*.txt",
/// in any letter case, in it and its subfolders, sorted by name (a folder of more than 32768 names is sorted
/// in groups of that many); links to folders are not followed below it. "-" stands for names on `in`, which
/// `separator` ends.
void FindSetups(std::span<const std::string> names, std::istream& in, char separator,
                const NameReceiver& receiver);

}  // namespace kelvora
