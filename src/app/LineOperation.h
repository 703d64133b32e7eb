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

/// While it lives the running operation waits for the user's answer: the program stays busy, but nothing
/// can be stopped and nothing looks at work.
class OperationQuestion {
public:
    explicit OperationQuestion(Program& program);
    ~OperationQuestion();
    OperationQuestion(const OperationQuestion&) = delete;
    OperationQuestion& operator=(const OperationQuestion&) = delete;

private:
    Program& program_;
};

}  // namespace kelvora
