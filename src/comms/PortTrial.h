// Whether a port opens, and what to tell the user when it does not.
#pragma once

#include <string>

#include "catalogue/MessageCatalogue.h"
#include "platform/SerialPort.h"

namespace kelvora {

/// How the last opening of a port went.
struct PortTrial {
    std::string device;
    PortFailure failure = PortFailure::None;
    std::string error;           ///< the system's words
    std::string settings;        ///< that the port was opened with
    std::string group;           ///< whose members may use it, as in SerialPort
    std::string holder{};        ///< of a port that is in use, as in SerialPort
    bool fixedSettings = false;  ///< as in SerialPort, where it opened
};

/// The message of a port that does not open.
MessageId PortFailureText(PortFailure failure);

/// The outcome of the port's last Open; a port that is open is in use.
PortTrial OutcomeOf(const SerialPort& port);

/// The program that holds a port, which must be known, after the text that says so.
std::string DescribeHolder(const MessageCatalogue& catalogue, const std::string& holder);

/// Opens and closes `port` with another device behind it, then puts its own one back. A port that is open is
/// in use.
PortTrial TryDevice(SerialPort& port, const std::string& device);

/// Who may use a port that the account may not: the group, and the command to join it, on lines of their own.
std::string DescribeGroup(const MessageCatalogue& catalogue, const std::string& group);

/// What to do about it, in the catalogue's language and on lines of their own; with the program that holds
/// the device, or when the account may not use it, the group that may, and the command to join it.
std::string DescribeTrial(const MessageCatalogue& catalogue, const PortTrial& trial);

}  // namespace kelvora
