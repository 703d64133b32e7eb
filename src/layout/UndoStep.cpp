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

bool UndoStep::Turn(SetupSession& session)
{
    std::swap(session.document, other_);
    if (!otherFile_)
        return true;
    const OpenElsewhere& isOpenElsewhere = session.Desk().isOpenElsewhere;
    const bool isTaken = isOpenElsewhere && isOpenElsewhere(otherFile_->file.path, session.File().path);
    if (isTaken)
        otherFile_->file = {};
    session.HoldAs(*std::exchange(otherFile_, session.HeldAs()));
    return !isTaken;
}

}  // namespace kelvora
