// The journal of the windows: an operation that begins, and that has ended.
#pragma once

#include <string>

#include "catalogue/Texts.h"
#include "journal/OperationNote.h"
#include "ports/Lines.h"

namespace kelvora {

class OperationNotes {
public:
    /// All outlive the object. Without a journal nothing is kept.
    OperationNotes(const kelvora::Journal* journal, const Lines& lines, const Texts& texts)
        : journal_(journal), lines_(lines), texts_(texts)
    {
    }

    /// Null where nothing is kept.
    const kelvora::Journal* Journal() const { return journal_; }

    /// An operation on line 1 to 4 that begins now; `operation` is one of JournalOperation.
    OperationNote Begin(const char* operation, int line) const;

    /// Keeps it. A journal that cannot be kept gives a message, once for each reason in a row.
    void Keep(OperationNote& note);

private:
    const kelvora::Journal* journal_;
    const Lines& lines_;
    const Texts& texts_;
    std::string problem_;  ///< the last one that was told
};

}  // namespace kelvora
