// The question before EEPROM data is written: what each module holds and what it is to be given, the bytes
// one below the other so that a difference is seen without colours:
//   * Address 0: KM96CM >> KM64, changed
//       now            AA 55 D6 17 FF FF 04 00
//       to be written  AA 55 BF 00 00 00 00 00
//                            ^^ ^^ ^^ ^^ ^^
#pragma once

#include <span>
#include <string>

#include "catalogue/MessageCatalogue.h"
#include "eeprom/ModuleMemory.h"

namespace kelvora {

/// Two texts whose lines end with CR LF, the last one aside.
struct WriteQuestion {
    std::string text;   ///< the question itself is its last line; to be wrapped as needed
    std::string table;  ///< for a font of one width; no line may be wrapped
};

/// Asks about writing `blocks`; all modules that were read are in the table. `remarks` are what the user
/// should know besides; empty ones are none.
WriteQuestion AskAboutWrite(const ModuleMemory& memory, std::span<const AddressedBlock> blocks,
                            const MessageCatalogue& catalogue, std::span<const std::string> remarks);

}  // namespace kelvora
