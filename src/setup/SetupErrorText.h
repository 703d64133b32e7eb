// What a rejected setup text says to the user.
#pragma once

#include <string>

#include "catalogue/MessageCatalogue.h"
#include "setup/SetupError.h"
#include "setup/SetupReader.h"

namespace kelvora {

/// What was expected where the error was found, in the catalogue's language.
std::string ExpectedText(const MessageCatalogue& catalogue, const SetupError& error);

/// What a SetupError says in the catalogue's language: the message of its number, the line and what was
/// expected there, on lines of their own.
std::string DescribeSetupError(const MessageCatalogue& catalogue, const SetupError& error);

/// Which device of a line makes that its devices are no setup: "Position 4: code 214, a second main
/// keyboard".
std::string DescribeMapError(const MessageCatalogue& catalogue, const DeviceMapError& error);

}  // namespace kelvora
