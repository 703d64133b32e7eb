// A command's operation on a line, as the journal keeps it.
#pragma once

#include <string>

#include "cli/Console.h"
#include "cli/LineAccess.h"
#include "journal/OperationNote.h"

namespace kelvora {

/// Begins with the work on the line, which is prepared.
OperationNote BeginNote(const char* operation, const LineOptions& options, LineAccess& access);

/// Keeps it. A journal that cannot be kept is told and changes nothing else.
void EndNote(OperationNote& note, Console& console);

/// The content of a file that was read before, for its hash; empty when it is no longer readable.
std::string ContentOf(const std::string& path);

}  // namespace kelvora
