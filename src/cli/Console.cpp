#include "cli/Console.h"

#include <cerrno>
#include <system_error>

namespace kelvora {

void Emit(Console& console, std::string_view text)
{
    errno = 0;
    console.out.write(text.data(), static_cast<std::streamsize>(text.size()));
    if (!console.out.flush())
        throw OutputError(std::generic_category().message(errno != 0 ? errno : EIO));
}

std::string DiagnosticLine(std::string_view text)
{
    std::string line(CommandName);
    return line.append(": ").append(text).append("\n");
}

int Misused(Console& console, std::string_view text)
{
    console.err << DiagnosticLine(text);
    return ExitCode::Usage;
}

int NothingFound(Console& console)
{
    console.err << DiagnosticLine("no setup files were found");
    return ExitCode::Rejected;
}

std::string FailureLine(std::string_view path, std::string_view description)
{
    return FailureOf(path, description).line;
}

Refusal FailureOf(std::string_view path, std::string_view description)
{
    std::string message = std::string(path).append(": ").append(description);
    return {DiagnosticLine(message), message};
}

}  // namespace kelvora
