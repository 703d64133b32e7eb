// Any bytes as ports.ini and as an argument of --line: an error that names a line and says what was
// expected, or devices that the program can use and that are written and read back as they are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "Require.h"
#include "catalogue/Messages.h"
#include "ports/PortNames.h"

namespace {

using namespace kelvora;

void CheckFile(std::string_view text)
{
    try {
        const PortDevices devices = ReadPorts(text);
        Require(std::ranges::all_of(devices, IsLineDevice), "a device for each port");
        Require(ReadPorts(PortsText(devices)) == devices, "what is written reads back");
    } catch (const PortsFileError& error) {
        const auto lines = static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
        Require(error.Line() >= 1 && error.Line() <= lines, "a line of the text");
        Require(error.ExpectedHere().id >= Message::ExpectedPortsSection.id, "what was expected there");
    }
}

void CheckArgument(std::string_view text)
{
    try {
        const LineArgument argument = ParseLineArgument(text);
        Require(argument.port >= 1 && argument.port <= 4, "a line from 1 to 4");
        Require(IsLineDevice(argument.device), "a device");
        Require(std::to_string(argument.port) + "=" + argument.device == text,
                "nothing but what was written");
    } catch (const std::invalid_argument& error) {
        Require(std::string_view(error.what()).find("as in 1=/dev/ttyUSB0") != std::string_view::npos,
                "an example of what is right");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    CheckFile(text);
    CheckFile("[PORTS]\n" + std::string(text));
    // No argument of a program holds a NUL.
    const std::string argument(text.substr(0, text.find('\0')));
    CheckArgument(argument);
    CheckArgument("3=" + argument);
    return 0;
}
