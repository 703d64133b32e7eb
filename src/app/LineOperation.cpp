#include "app/LineOperation.h"

#include <utility>

namespace kelvora {

LineOperation::LineOperation(Program& program, std::string status, std::string operation) : program_(program)
{
    program_.busy = true;
    program_.interruptionRequested = false;
    program_.running = {std::move(status), std::move(operation)};
    if (program_.onOperation)
        program_.onOperation();
}

LineOperation::~LineOperation()
{
    program_.busy = false;
    program_.running = {};
    if (program_.onOperation)
        program_.onOperation();
}

LineHooks LineOperation::Hooks() const
{
    return {[&program = program_] { return program.interruptionRequested; },
            [&program = program_](const LineProgress& progress) {
                if (program.onProgress)
                    program.onProgress(progress);
            }};
}

}  // namespace kelvora
