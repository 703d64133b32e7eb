// Results of the flash commands as objects for other programs: one line each, in UTF-8.
#pragma once

#include <string>

#include "flash/FlashTransfer.h"

namespace kelvora {

/// port, file, outcome ("same", "different", "unread", "unbuilt"), message, firstDifference (four hexadecimal
/// digits or null), differences.
std::string VerifyJson(const LineTarget& target, const std::string& file, const VerifyResult& result);

/// port, file, device ("old", "same", "new", "unknown": what it holds), reason ("done", "line", "refused",
/// "backup", "declined", "changed"), message, backup (path or null).
std::string TransferJson(const LineTarget& target, const std::string& file, const TransferResult& result);

/// port, file (null without one), deviceMap, crc32.
std::string DumpJson(const LineTarget& target, const LineResult& read, const std::string& file);

}  // namespace kelvora
