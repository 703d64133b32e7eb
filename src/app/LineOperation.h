// One operation on a device at a time, for all windows: while it runs the program is busy, its texts stand in
// the status bar, and the user can ask it to stop.
#pragma once

#include <string>

#include "app/Program.h"

namespace kelvora {

class LineOperation {
public:
    /// Begins the operation, with no stop asked for. The program must not be busy.
    LineOperation(Program& program, std::string status, std::string operation);
    ~LineOperation();
    LineOperation(const LineOperation&) = delete;
    LineOperation& operator=(const LineOperation&) = delete;

    /// For the drivers: the user's wish to stop, and the program's progress.
    LineHooks Hooks() const;

private:
    Program& program_;
};

}  // namespace kelvora
