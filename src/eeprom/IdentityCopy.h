// The copy of a line's identity blocks that is saved before any is written, and can be written back:
//   Kelvora module identities
//   Date 2025-01-31 14:25:30
//   Line COM1: 9600,n,8,1
//   0: AA 55 D6 17 00 00 04 00        one line an address from 0 to 5, ascending
#pragma once

#include <chrono>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "eeprom/ModuleMemory.h"
#include "platform/Files.h"

namespace kelvora {

struct IdentityCopy {
    std::string date;
    std::string line;
    std::vector<AddressedBlock> blocks;

    friend bool operator==(const IdentityCopy&, const IdentityCopy&) = default;
};

/// What the reader of a copy expected where it stopped.
enum class CopyExpected { Header, Date, Line, Block, NextAddress };

class IdentityCopyError : public std::runtime_error {
public:
    IdentityCopyError(std::size_t line, CopyExpected expected)
        : std::runtime_error("rejected copy of identities"), line_(line), expected_(expected)
    {
    }

    std::size_t Line() const { return line_; }  ///< counts from 1
    CopyExpected ExpectedHere() const { return expected_; }

private:
    std::size_t line_;
    CopyExpected expected_;
};

/// Where copies are, in the folder of the person's data.
std::string IdentityFolder(const std::string& dataFolder);

/// The copy's text; its lines end with CR LF.
std::string WriteIdentityCopy(const IdentityCopy& copy);

/// Reads any text as a copy of at least one block. Lines end with LF, with or without CR before it; empty
/// lines at the end are skipped. Throws IdentityCopyError.
IdentityCopy ReadIdentityCopy(std::string_view text);

/// A path in `folder` for a copy of COM`port` at that time, of a file that is not there yet.
std::string NewCopyPath(const Files& files, const std::string& folder, int port,
                        std::chrono::local_seconds time);

}  // namespace kelvora
