// The texts that the benchmarks read.
#pragma once

#include <string>
#include <string_view>

namespace kelvora {

/// A setup of all four modules with keys of every type and every option written.
std::string FullSetup();

/// The same number of bytes and lines as an INI file that any reader takes whole: each further row of a key
/// map, which a setup file continues the line with, has a key of its own in the place of its blanks.
std::string FullSetupAsIni();

/// How many lines a text has.
std::size_t CountLines(std::string_view text);

/// How many "key = value" lines FullSetupAsIni has.
std::size_t CountIniValues();

}  // namespace kelvora
