// Which kind of value an option or an argument takes: the help calls many of them just FILE.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/manual/CommandText.h"

namespace kelvora::manual {

/// The kind of the value that `option` takes where it belongs to the command `path`.
ValueKind KindOf(std::string_view path, const OptionText& option);

/// The endings of files of a kind, without the dot; none for a kind of no files or of all.
std::vector<std::string> FileEndings(ValueKind kind);

/// Where a machine's serial devices are, as patterns.
std::vector<std::string> SerialDevicePatterns();

}  // namespace kelvora::manual
