// What a download, a restore and a verify say to the user, in the catalogue's language. Lines are parted by
// CR LF in texts for a message box, and stand one by one in lists.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "catalogue/MessageCatalogue.h"
#include "flash/FlashTransfer.h"
#include "platform/Prompt.h"

namespace kelvora {

/// What stands in a message box at the end of the work.
struct OutcomeText {
    std::string text;   ///< the outcome in one line
    std::string extra;  ///< lines below it: why, and what to know besides; may be empty
    BoxIcon icon = BoxIcon::Information;
};

/// What the device holds, why when it is not what was wanted, and what of the setup it cannot hold.
OutcomeText DescribeTransfer(const MessageCatalogue& catalogue, const LineTarget& target,
                             const TransferResult& result);

/// The outcome of a verify; below it what differs, at most `mostLines` differences, and why the line failed.
OutcomeText DescribeVerify(const MessageCatalogue& catalogue, const LineTarget& target,
                           const VerifyResult& result, std::size_t mostLines);

/// Why a device is not to be written.
std::string Describe(const MessageCatalogue& catalogue, const TransferRefusal& refusal);

/// The main modules with these device codes: "Composite Keyboard, MCR".
std::string ModuleNames(const MessageCatalogue& catalogue, std::string_view deviceCodes);

/// That a restore takes key contents from the device, with the number of their bytes; empty where it takes
/// none.
std::string ContentsText(const MessageCatalogue& catalogue, const TransferPlan& plan);

/// The separate question of a plan that TakesContents.
std::string TakingQuestion(const MessageCatalogue& catalogue, const TransferPlan& plan);

/// What a dump says of itself, and below it the terminal on the line where the dump is of another one; empty
/// when it says nothing.
std::string DumpText(const MessageCatalogue& catalogue, const FlashDump& dump, const std::string& terminal);

/// What a plan changes: modules and their order, keys by module and number, options, then bytes.
std::vector<std::string> ChangeLines(const MessageCatalogue& catalogue, const TransferPlan& plan);

/// What of the setup the device cannot hold.
std::vector<std::string> UnheldLines(const MessageCatalogue& catalogue, const TransferPlan& plan);

/// Differences of images with their regions: "key tables, 0100-0101: Composite Keyboard, Key 7: ...".
std::vector<std::string> DifferenceLines(const MessageCatalogue& catalogue,
                                         const std::vector<ImageDifference>& differences);

/// The lines, each behind a line end; those past `most` are only counted.
std::string JoinLines(const MessageCatalogue& catalogue, const std::vector<std::string>& lines,
                      std::size_t most);

}  // namespace kelvora
