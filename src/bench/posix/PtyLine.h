// A simulated line behind a pseudo-terminal, which a program opens like a serial port. The speed that the
// program sets there is the host's; the pseudo-terminal itself carries 8 data bits without parity alone.
#pragma once

#include <string>
#include <string_view>

#include "bench/SimulatedLine.h"
#include "bench/posix/CloseWatch.h"
#include "bench/posix/PollLoop.h"
#include "platform/posix/Descriptor.h"

namespace kelvora::bench {

class PtyLine {
public:
    /// All outlive this. Throws std::system_error.
    PtyLine(PollLoop& loop, CloseWatch& closes, SimulatedLine& line);
    PtyLine(const PtyLine&) = delete;
    PtyLine& operator=(const PtyLine&) = delete;
    ~PtyLine();

    /// What a program opens, such as "/dev/pts/5".
    const std::string& Path() const { return path_; }

private:
    bool TakeSettings();
    void Read();
    void Write(std::string_view bytes);
    void ProgramClosed();
    void Vanish();

    PollLoop& loop_;
    CloseWatch& closes_;
    SimulatedLine& line_;
    Descriptor master_;
    Descriptor slave_;  ///< held open so that the settings last from one program to the next
    std::string path_;
    int closeNumber_ = -1;
};

}  // namespace kelvora::bench
