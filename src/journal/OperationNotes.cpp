#include "journal/OperationNotes.h"

namespace kelvora {

OperationNote OperationNotes::Begin(const char* operation, int line) const
{
    const SerialPort* const port = lines_.Port(line);
    return {journal_, operation, line, port ? port->Device() : std::string()};
}

void OperationNotes::Keep(OperationNote& note)
{
    const std::string problem = note.End();
    if (!problem.empty() && problem != problem_)
        texts_.Show(Message::JournalNotKept, {BoxIcon::Exclamation}, problem);
    problem_ = problem;
}

}  // namespace kelvora
