// The command "identity": reads the identity blocks of the modules on a line, gives one module another
// identity, or writes a saved copy back.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "cli/Console.h"
#include "journal/OperationNote.h"
#include "platform/EventLoop.h"
#include "platform/Files.h"
#include "platform/SerialPort.h"

namespace kelvora {

struct IdentityRequest {
    enum class Action { Read, Write, Restore };

    Action action = Action::Read;
    std::size_t address = 0;  ///< to write: 0 to 5
    std::string name{};       ///< to write: an identity that can be written, in large or small letters
    std::string file{};       ///< to restore
    int port = 1;             ///< COM1 = 1; names the saved copy
    std::string folder{};     ///< where copies of what is overwritten are saved; made when there is none
    bool json = false;        ///< an object a line for every module
};

/// What the command works on; `port` is closed, before and after.
struct IdentityLine {
    SerialPort& port;
    EventLoop& loop;
    Files& files;
    std::function<bool()> stopRequested{};  ///< ends the search; a write goes on to its end. May be empty
    std::function<bool(const std::string&)> ask{};  ///< before a write, true to go on; empty writes unasked
    OperationNote* note = nullptr;  ///< is told what came of the work on the line, and kept; may be null
};

/// The identities that can be written, each in quotes: "\"KM96CM\", \"LCD\", ...".
std::string NamesThatCanBeWritten();

/// Prints a line for each module, as read after a write. Returns the exit code: a write is done when the
/// modules hold what was to be written; a question answered with no is a rejection. Throws OutputError.
int Identity(const IdentityRequest& request, const IdentityLine& line, Console& console);

}  // namespace kelvora
