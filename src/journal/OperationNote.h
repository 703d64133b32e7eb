// An operation on a device as the journal keeps it: begun with the work, told what came of it, kept at its
// end. Windows, command line and wizard use it alike.
#pragma once

#include <string>
#include <string_view>

#include "comms/LineDrivers.h"
#include "flash/FlashTransfer.h"
#include "journal/Journal.h"

namespace kelvora {

class OperationNote {
public:
    /// Begins now. `operation` is one of JournalOperation; `device` stands behind the line. Without a journal
    /// nothing is kept.
    OperationNote(const Journal* journal, const char* operation, int line, const std::string& device);

    /// The setup or the dump that it is about: its path, and what it holds.
    void OfFile(const std::string& path, std::string_view content);

    /// What came of it.
    void Tell(const LineTarget& target, const TransferResult& result);
    void Tell(const LineTarget& target, const VerifyResult& result);
    void Tell(const LineTarget& target, const LineResult& read);

    JournalEntry& Entry() { return begun_.entry; }
    const JournalEntry& Entry() const { return begun_.entry; }

    /// It ends now. Returns why it could not be kept, as a text for the user; empty when it was.
    std::string End();

private:
    void TellLine(const LineResult& line);

    const Journal* journal_;
    Journal::Begun begun_;
};

/// "KM096, MCR": the kinds of the main modules with these device codes; "255" for an unknown one.
std::string KindList(std::string_view deviceCodes);

}  // namespace kelvora
