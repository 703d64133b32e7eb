// What is found out about one setup file: accepted as the window would accept it, rejected at a line, or not
// readable.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "cli/Console.h"
#include "cli/SetupNames.h"
#include "platform/Files.h"
#include "setup/SetupDocument.h"

namespace kelvora {

struct Verdict {
    enum class Outcome { Accepted, Rejected, Unreadable };  ///< the last of any file that is not used

    Outcome outcome = Outcome::Accepted;
    std::uint32_t number = 0;  ///< one of SetupErrorNumber; 0 unless rejected
    std::size_t line = 0;      ///< counts from 1; 0 unless rejected
    std::string message;       ///< what was expected there, or the system's description
};

/// Reads the file at `path` as a setup; `text` holds what was read, and is memory for the next one. Gives the
/// setup to `document` where that is not null and the file is accepted. Throws nothing that a file can cause.
Verdict CheckSetupFile(const std::string& path, std::string& text, SetupDocument* document = nullptr);

/// The same of what a name on the command line meant; a folder that could not be read is not readable.
Verdict CheckSetup(const FoundName& name, std::string& text, SetupDocument* document = nullptr);

/// The verdict on a file of which nothing comes, though it was read: why not.
Verdict Unusable(std::string why);

/// Of a file that, or whose result, could not be read again or written.
Verdict NotWritten(const std::string& path, const FileError& error);

/// The setup of a file that a command needs; nothing, and why, when it is not accepted.
std::optional<SetupDocument> AcceptedSetup(const std::string& path, Refusal& why);

/// The number as it is shown: "0x80040107".
std::string ErrorNumberText(std::uint32_t number);

/// A line that says so, as editors and grep understand it: "FILE:LINE: 0x80040107 expected YES or NO", or
/// the diagnostic of a file that cannot be read. Empty for an accepted file.
std::string VerdictLine(const std::string& path, const Verdict& verdict);

}  // namespace kelvora
