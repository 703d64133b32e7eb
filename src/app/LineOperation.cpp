#include "app/LineOperation.h"

#include <utility>

namespace kelvora {

namespace {

void Tell(const Program& program)
{
    if (program.onOperation)
        program.onOperation();
}

}  // namespace

LineOperation::LineOperation(Program& program, std::string status, std::string operation) : program_(program)
{
    program_.busy = true;
    program_.interruptionRequested = false;
    program_.running = {std::move(status), std::move(operation)};
    Tell(program_);
}

LineOperation::~LineOperation()
{
    program_.busy = false;
    program_.running = {};
    Tell(program_);
}

LineHooks LineOperation::Hooks() const
{
    return {[&program = program_] { return program.interruptionRequested; },
            [&program = program_](const LineProgress& progress) {
                if (program.onProgress)
                    program.onProgress(progress);
            }};
}

OperationQuestion::OperationQuestion(Program& program) : program_(program)
{
    program_.asking = true;
    Tell(program_);
}

OperationQuestion::~OperationQuestion()
{
    program_.asking = false;
    Tell(program_);
}

}  // namespace kelvora
