// What the commands that talk to devices need of the world, and the options that they share.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "comms/Comms.h"
#include "comms/LineDrivers.h"

namespace CLI {
class App;
}

namespace kelvora {

/// The options of every command that talks to devices.
struct LineOptions {
    int port = 1;  ///< 1 to 4
    std::string settings = "9600,n,8,1";
    std::vector<std::string> lines;  ///< "N=PORT" each
    bool bench = false;
    std::string benchState;  ///< empty for none
    int timeout = 0;         ///< seconds for one answer; 0 for the line's own limit
    bool json = false;

    LineTarget Target() const;
};

/// Adds the options to a command.
void AddLineOptions(CLI::App& command, LineOptions& options);

/// The lines could not be prepared; `what()` says why, in English.
class LineAccessError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class Journal;

class LineAccess {
public:
    virtual ~LineAccess() = default;

    /// The lines as the options want them; called once. Throws LineAccessError.
    virtual Comms& Prepare(const LineOptions& options) = 0;

    /// Whether the user has asked for a stop, with Ctrl+C, since the command began.
    virtual bool StopRequested() = 0;

    /// How often.
    virtual int StopCount() = 0;

    /// Whether standard error is a terminal, on which progress is shown.
    virtual bool ShowsProgress() const = 0;

    /// Whether there is a terminal on which the user can be asked.
    virtual bool CanAsk() const = 0;

    /// Asks on the terminal, which must be there. False for every answer but yes, and when the user wants a
    /// stop.
    virtual bool Ask(const std::string& question) = 0;

    /// The serial port of line 1 to 4, after Prepare; for those who use it without the link.
    virtual SerialPort& Port(int line) = 0;

    /// Where copies of what devices held are kept.
    virtual std::string DataFolder() const = 0;

    /// Where operations are kept; null where they are not.
    virtual const Journal* OperationJournal() const = 0;
};

}  // namespace kelvora
