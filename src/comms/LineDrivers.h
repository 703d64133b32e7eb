// What is done with a line from opening its port to closing it: the line scan with the flash upload, and the
// flash upload alone. A driver returns what it has got, also when the line failed or the user stopped it.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "comms/LineEnd.h"
#include "comms/LineWork.h"

namespace kelvora {

/// Which line, and how.
struct LineTarget {
    int line = 1;          ///< 1 to 4
    std::string settings;  ///< of the port, as in platform/SerialSettings.h
    int timeout = 0;       ///< as in LineWork
};

enum class LineOutcome {
    Done,
    Stopped,  ///< by the user
    NoPort,   ///< the port did not open
    Failed,   ///< a command failed, see LineFailure
};

struct LineFailure {
    PortFailure port = PortFailure::None;  ///< why the port did not open or went away
    std::uint32_t number = 0;              ///< one of ReplyErrorNumber; 0 for a port that did not open
    std::string device;                    ///< behind the line
    std::string group;                     ///< whose members may use it, as in SerialPort
    std::string detail;                    ///< where and why, in English; the system's words for a port
    std::string holder{};                  ///< of a port that is in use, as in SerialPort
    bool fixedSettings = false;            ///< as in SerialPort
};

struct LineResult {
    LineOutcome outcome = LineOutcome::Done;
    LineFailure failure;
    std::string deviceMap;       ///< as AskDeviceMap; empty when none came
    std::string image;           ///< the whole flash; empty when none came
    std::string terminalName{};  ///< as Attention; empty when it was not asked or gave none
    LineWarnings warnings{};     ///< of the end of the work, however it went

    bool IsDone() const { return outcome == LineOutcome::Done; }
};

/// Opens the line, does `work` on it, ends it as comms/LineEnd.h tells, and closes the line again. A
/// ReplyError or a LineStopped of the work becomes the result's outcome.
LineResult WorkOnLine(Comms& comms, const LineTarget& target, const LineHooks& hooks,
                      const std::function<void(LineWork&, LineResult&)>& work);

/// The devices of the line and the content of their flash: hold the line, read, release it. Once the map has
/// come, the line is left in `mode`, where one is given.
LineResult ScanWithUpload(Comms& comms, const LineTarget& target, const LineHooks& hooks,
                          std::optional<char> mode = std::nullopt);

/// The content of the flash alone.
LineResult Upload(Comms& comms, const LineTarget& target, const LineHooks& hooks);

/// Reads the flash and judges it by its own CRC: a step of the scan, and of every transfer that must know
/// what the device holds.
std::string ReadWholeFlash(LineWork& work);

}  // namespace kelvora
