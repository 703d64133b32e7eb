// The requests that modules understand: the module's address, a command byte and what that needs:
//   F7 identify   reply: 6 bytes
//   F9 read       EEPROM address (high, low), count; reply: 2 bytes and what was read
//   FA write      EEPROM address (high, low), the bytes; acknowledged only
#pragma once

#include <cstddef>
#include <string>

#include "eeprom/IdentityBlock.h"

namespace kelvora {

namespace ModuleCommand {
inline constexpr char Identify = '\xF7';
inline constexpr char Read = '\xF9';
inline constexpr char Write = '\xFA';
}  // namespace ModuleCommand

/// Data bytes of the reply to identify.
inline constexpr std::size_t IdentifyLength = 6;

/// What comes before the EEPROM's bytes in the reply to a read: two bytes.
inline constexpr std::size_t ReadHeadLength = 2;
inline constexpr std::size_t ReadLength = ReadHeadLength + IdentityBlockSize;

/// Where the EEPROM address of a read or a write stands, and where it ends.
inline constexpr std::size_t RequestHeadLength = 2;
inline constexpr std::size_t RequestPlaceEnd = 4;

/// Requests for a module by its address, 0 to 6: who are you, and what is your identity block.
std::string RequestToIdentify(std::size_t address);
std::string RequestToRead(std::size_t address);

/// What a write of the identity block begins with; the block follows.
std::string RequestToWrite(std::size_t address);

}  // namespace kelvora
