// What the bytes of the module protocol say, in English, for the line monitor: "enquiry", "read address 2,
// EEPROM 00AA, 8 bytes", "reply, EEPROM AA 55 BF ...". Frames are told in eeprom/ModuleFrame.h, requests in
// eeprom/ModuleRequest.h.
#pragma once

#include <string>

#include "comms/LineTraffic.h"

namespace kelvora {

/// Empty for what is damaged or nothing of the protocol.
std::string ModuleMeaning(const LineTraffic& traffic);

}  // namespace kelvora
