#include "ports/PortNames.h"

#include <algorithm>
#include <utility>

#include "platform/AsciiCase.h"
#include "platform/Blanks.h"
#include "platform/Encoding.h"
#include "platform/LineAddress.h"
#include "platform/PortName.h"

namespace kelvora {

namespace {

/// The longest path that the system takes.
constexpr std::size_t MaximumPath = 4096;

constexpr std::string_view Section = "[PORTS]";
constexpr std::string_view CommentMarks = ":';#";

bool IsControl(char c)
{
    return static_cast<unsigned char>(c) < ' ' || c == '\x7F';
}

// The number of a port, 1 to 4, by its digit alone.
std::optional<int> PortNumber(std::string_view digit)
{
    if (digit.size() != 1 || digit[0] < '1' || digit[0] >= static_cast<char>('1' + PortCount))
        return std::nullopt;
    return digit[0] - '0';
}

std::optional<int> PortOfKey(std::string_view key)
{
    const bool named = IsSameButCase(key.substr(0, PortWord.size()), PortWord);
    return named ? PortNumber(key.substr(PortWord.size())) : std::nullopt;
}

/// Takes the lines of a ports.ini one by one.
class PortsReader {
public:
    void Take(std::string_view line, std::size_t number)
    {
        line = Trim(line);
        if (line.empty() || CommentMarks.find(line.front()) != std::string_view::npos)
            return;
        if (line.front() == '[' || !inSection_) {
            inSection_ = IsSameButCase(line, Section);
            if (!inSection_)
                throw PortsFileError(number, Message::ExpectedPortsSection);
            return;
        }
        TakePort(line, number);
    }

    PortDevices devices = DefaultPortDevices();

private:
    void TakePort(std::string_view line, std::size_t number)
    {
        const std::size_t equals = line.find('=');
        const auto port = PortOfKey(Trim(line.substr(0, equals)));
        if (equals == std::string_view::npos || !port)
            throw PortsFileError(number, Message::ExpectedPort);
        const std::string_view device = Trim(line.substr(equals + 1));
        if (!IsLineDevice(device))
            throw PortsFileError(number, Message::ExpectedDevice);
        const auto index = static_cast<std::size_t>(*port) - 1;
        if (std::exchange(seen_.at(index), true))
            throw PortsFileError(number, Message::ExpectedPortOnce);
        devices.at(index) = device;
    }

    bool inSection_ = false;
    std::array<bool, PortCount> seen_{};
};

}  // namespace

PortDevices DefaultPortDevices()
{
    return {"/dev/ttyS0", "/dev/ttyS1", "/dev/ttyS2", "/dev/ttyS3"};
}

bool IsLineDevice(std::string_view text)
{
    const bool isPath = text.size() > 1 && text.size() <= MaximumPath && text.front() == '/' &&
                        text.back() != ' ' && std::ranges::none_of(text, IsControl);
    return isPath || ParseLineAddress(text);
}

PortDevices ReadPorts(std::string_view text)
{
    PortsReader reader;
    for (std::size_t at = 0, number = 1; at < text.size(); ++number) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        std::string_view line = text.substr(at, end - at);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        reader.Take(line, number);
        at = end + 1;
    }
    return reader.devices;
}

std::string PortsText(const PortDevices& devices)
{
    std::string text = "' The devices behind COM1 to COM4.\r\n";
    text.append(Section).append("\r\n");
    for (std::size_t i = 0; i < devices.size(); ++i)
        text.append(PortWord)
            .append(std::to_string(i + 1))
            .append(" = ")
            .append(devices.at(i))
            .append("\r\n");
    return text;
}

LineArgument ParseLineArgument(std::string_view argument)
{
    const std::string quoted = '"' + std::string(argument) + '"';
    const std::size_t equals = argument.find('=');
    if (equals == std::string_view::npos)
        throw std::invalid_argument(quoted +
                                    " has no \"=\": write a line and its port, as in 1=/dev/ttyUSB0");
    const auto port = PortNumber(argument.substr(0, equals));
    if (!port)
        throw std::invalid_argument(quoted + " names no line: the lines are 1 to 4, as in 1=/dev/ttyUSB0");
    const std::string_view device = argument.substr(equals + 1);
    if (!IsLineDevice(device))
        throw std::invalid_argument(quoted +
                                    " names no port: write the path of a device, as in 1=/dev/ttyUSB0, or a "
                                    "line on the network, as in 1=tcp:host:4000 or 1=tcp:[::1]:4000, with a "
                                    "number from 1 to 65535");
    return {*port, std::string(device)};
}

PortNames::PortNames(Files& files, std::string path, const std::vector<LineArgument>& arguments)
    : files_(files), path_(std::move(path))
{
    Load();
    devices_ = stored_;
    kept_ = stored_;
    for (const LineArgument& argument : arguments) {
        const auto index = static_cast<std::size_t>(argument.port) - 1;
        devices_.at(index) = argument.device;
        fixed_.at(index) = true;
    }
}

void PortNames::Load()
{
    if (!files_.Exists(path_))
        return;
    try {
        stored_ = ReadPorts(files_.Read(path_));
    } catch (const PortsFileError& error) {
        problem_ = FileProblem{error.Line(), error.ExpectedHere(), {}};
    } catch (const FileError& error) {
        problem_ = FileProblem{0, {}, error.what()};
    }
}

bool PortNames::IsFixed(int port) const
{
    return fixed_.at(static_cast<std::size_t>(port) - 1);
}

std::string PortNames::Problem(const MessageCatalogue& catalogue) const
{
    if (!problem_)
        return {};
    std::string text = catalogue.Caption(Message::PortsFileBroken) + "\r\n" + TextFromPath(path_) + "\r\n";
    if (problem_->line == 0)
        return text + problem_->description;
    return text + catalogue.Word(Message::LineWord) + std::to_string(problem_->line) + ": " +
           catalogue.Word(Message::ExpectedWord) + catalogue.Caption(problem_->expected);
}

void PortNames::Take(const PortDevices& devices)
{
    for (std::size_t i = 0; i < PortCount; ++i)
        if (!fixed_.at(i))
            devices_.at(i) = kept_.at(i) = devices.at(i);
}

void PortNames::Save()
{
    files_.Write(path_, PortsText(kept_));
    stored_ = kept_;
    problem_.reset();
}

void PortNames::ApplyTo(const std::array<SerialPort*, PortCount>& ports) const
{
    for (std::size_t i = 0; i < PortCount; ++i)
        if (SerialPort* port = ports.at(i); port && !port->IsOpen() && port->Device() != devices_.at(i))
            port->SetDevice(devices_.at(i));
}

}  // namespace kelvora
