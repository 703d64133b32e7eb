// Which device, or which line on the network, stands behind each of COM1 to COM4. First counts what the
// command line says, then the person's own file ports.ini, then the machine's first four built-in ports.
//
//   [PORTS]
//   COM1 = /dev/ttyUSB0         one line a port, at most; a port without a line keeps its default
//   COM2 = tcp:host:4000        a line on the network, see platform/LineAddress.h
//
// A line ends with a line feed, with or without a carriage return before it. Empty lines, and lines that
// begin with ":", "'", ";" or "#", are comments. Paths are bytes.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/MessageCatalogue.h"
#include "platform/Files.h"
#include "platform/SerialPort.h"

namespace kelvora {

inline constexpr std::size_t PortCount = 4;

/// The devices behind COM1 to COM4, in this order.
using PortDevices = std::array<std::string, PortCount>;

/// /dev/ttyS0 to /dev/ttyS3.
PortDevices DefaultPortDevices();

/// Whether that can stand behind a port and in ports.ini: an address of platform/LineAddress.h, or an
/// absolute path of at most 4096 bytes, no control characters, no blank at its end.
bool IsLineDevice(std::string_view path);

/// A line of ports.ini that cannot be read.
class PortsFileError : public std::runtime_error {
public:
    PortsFileError(std::size_t line, const MessageId& expected)
        : std::runtime_error("rejected port names"), line_(line), expected_(expected)
    {
    }

    std::size_t Line() const { return line_; }  ///< counts from 1
    const MessageId& ExpectedHere() const { return expected_; }

private:
    std::size_t line_;
    MessageId expected_;
};

/// The devices that a text of ports.ini names; the defaults for ports that it does not. Throws
/// PortsFileError.
PortDevices ReadPorts(std::string_view text);

/// The text of ports.ini for these devices; ReadPorts gives them back.
std::string PortsText(const PortDevices& devices);

/// An argument of the option --line, as in "1=/dev/ttyUSB0".
struct LineArgument {
    int port = 0;  ///< 1 to 4
    std::string device;

    friend bool operator==(const LineArgument&, const LineArgument&) = default;
};

/// Throws std::invalid_argument, with the reason in English, for any other text.
LineArgument ParseLineArgument(std::string_view argument);

class PortNames {
public:
    /// Reads the file at `path`, ports.ini in the person's configuration folder; without one the defaults
    /// hold. The last of several arguments for one port counts. `files` outlives the object.
    PortNames(Files& files, std::string path, const std::vector<LineArgument>& arguments);

    /// The devices in force.
    const PortDevices& Devices() const { return devices_; }

    /// Whether the command line has said what stands behind COM`port` (1 to 4).
    bool IsFixed(int port) const;

    /// What is wrong with the file, in the catalogue's language and ready for a message; empty when nothing
    /// is. The defaults hold then.
    std::string Problem(const MessageCatalogue& catalogue) const;
    bool HasProblem() const { return problem_.has_value(); }

    /// Puts these devices in force for this run; those that the command line has named stay.
    void Take(const PortDevices& devices);

    /// Whether the file, as it was read, says something else than Save would write.
    bool IsChanged() const { return kept_ != stored_; }

    /// Writes the file, over a damaged one too: ask before. What the command line has named is not written;
    /// the file's own name for that port stays. Throws FileError.
    void Save();

    /// Puts the devices behind the ports (COM1 first; null where there is none) that are closed.
    void ApplyTo(const std::array<SerialPort*, PortCount>& ports) const;

private:
    struct FileProblem {
        std::size_t line = 0;     ///< 0 when the file cannot be read at all
        MessageId expected{};     ///< with a line
        std::string description;  ///< without one: the system's words
    };

    void Load();

    Files& files_;
    std::string path_;
    PortDevices stored_ = DefaultPortDevices();  ///< what the file says
    PortDevices kept_ = DefaultPortDevices();    ///< what it shall say
    PortDevices devices_;
    std::array<bool, PortCount> fixed_{};
    std::optional<FileProblem> problem_;
};

}  // namespace kelvora
