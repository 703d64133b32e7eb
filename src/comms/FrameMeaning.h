// What a frame of the terminal link says, in English, for the line monitor: "command $9902",
// "reply 20, address 01A0, 436 bytes". Frames are told in comms/LinkFrame.h, replies in comms/Reply.h.
#pragma once

#include <string>

#include "comms/LineTraffic.h"

namespace kelvora {

/// Empty for what is damaged or no frame.
std::string FrameMeaning(const LineTraffic& traffic);

}  // namespace kelvora
