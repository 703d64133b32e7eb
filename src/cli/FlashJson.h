// Results of the flash commands as objects for other programs: one line each, in UTF-8.
#pragma once

#include <string>
#include <vector>

#include "flash/FlashTransfer.h"

namespace kelvora {

/// port, file, outcome ("same", "different", "unread", "unbuilt"), message, firstDifference (four hexadecimal
/// digits or null), differences, lineFailure (null, or why the line failed), warnings (what did not end as it
/// should, in words).
std::string VerifyJson(const LineTarget& target, const std::string& file, const VerifyResult& result);

/// port, file, device ("old", "same", "new", "unknown", "foreign": what it holds), reason ("done", "line",
/// "refused", "backup", "declined", "changed"), message, changes, unheld, backup (path or null), lineFailure,
/// warnings.
std::string TransferJson(const LineTarget& target, const std::string& file, const TransferResult& result);

/// port, file (null without one), deviceMap, crc32 (null when no image came), message and
/// lineFailure (both null for a line that did not fail), warnings.
std::string DumpJson(const LineTarget& target, const LineResult& read, const std::string& file);

/// port, file (null), message, deviceMap (as far as it came), warnings: of a scan that gave no setup.
std::string UnscannedJson(int port, const std::string& message, const LineResult& read);

/// port, file (null without one), message: of a command that came to nothing, before its line or on it.
std::string UnreadJson(int port, const std::string& file, const std::string& message);

/// file, output and dump (one of which is null: the dump where it was not written to a file), unheld (what
/// the device cannot hold, in words).
std::string ImageJson(const std::string& file, const std::string& output, const std::string& dump,
                      const std::vector<std::string>& unheld);

}  // namespace kelvora
