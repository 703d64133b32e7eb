#include "layout/UndoStep.h"

#include <utility>

#include "picture/ModuleStrip.h"

namespace kelvora {

UndoStep::UndoStep(SetupSession& session, SetupDocument after, std::optional<WindowFile> fileBefore)
    : other_(std::move(after)), otherFile_(std::move(fileBefore))
{
    SetStripPlaces(other_.Modules);
    std::swap(session.document, other_);
}

void UndoStep::Turn(SetupSession& session)
{
    std::swap(session.document, other_);
    if (otherFile_)
        session.HoldAs(*std::exchange(otherFile_, session.HeldAs()));
}

}  // namespace kelvora
