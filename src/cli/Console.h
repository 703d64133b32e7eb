// What a command talks to: its standard streams and its exit code. Results go to `out`, diagnostics to `err`.
#pragma once

#include <istream>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kelvora {

inline constexpr std::string_view CommandName = "kelvora-cli";

namespace ExitCode {
inline constexpr int Done = 0;
inline constexpr int Rejected =
    1;  ///< a file was rejected, could not be used, or is not what the device holds
inline constexpr int Usage = 2;
inline constexpr int Line = 3;  ///< the devices or their line failed, or the work was stopped
}  // namespace ExitCode

struct Console {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
};

/// Standard output took no more; `what()` is the system's description.
class OutputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Writes results and sends them off. Throws OutputError.
void Emit(Console& console, std::string_view text);

/// One line that begins with the program's name.
std::string DiagnosticLine(std::string_view text);

/// Tells what is wrong with the usage. Gives ExitCode::Usage.
int Misused(Console& console, std::string_view text);

/// Tells that the names on the command line mean no setup file. Gives ExitCode::Rejected.
int NothingFound(Console& console);

/// The diagnostic of a file that could not be used, with the system's description.
std::string FailureLine(std::string_view path, std::string_view description);

/// Why a file is not used.
struct Refusal {
    std::string line;     ///< the diagnostic
    std::string message;  ///< what it says, for a result
};

/// Of a file that could not be used, as FailureLine.
Refusal FailureOf(std::string_view path, std::string_view description);

}  // namespace kelvora
