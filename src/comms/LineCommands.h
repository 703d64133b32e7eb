// The commands of the line itself: which devices hang on it, who uses it, and how it is connected.
// Each throws what LineWork::Ask throws.
#pragma once

#include <string>
#include <string_view>

#include "comms/LineWork.h"

namespace kelvora {

/// Whether the terminal is there ("$9900"): its name.
std::string Attention(LineWork& work);

/// Makes the terminal stop using its devices ("$9918"); from its sending on a release is owed.
void HoldLine(LineWork& work);
/// Lets the terminal use its devices again ("$9911"): a step of the end of the work.
void ReleaseLine(LineWork& work);

/// The device map of the line ("$9902"): one character a position, whose code is the device code, 255 for a
/// code that no module has. A line without devices raises ReplyErrorNumber::NoDevices.
std::string AskDeviceMap(LineWork& work);

/// The device map of the reply's count and list of decimal codes. Throws ReplyError for another count, an
/// item that is no number, and more positions than a line has.
std::string ParseDeviceList(std::string_view count, std::string_view codes);

/// Connection modes, as "$9904" takes them.
namespace LineMode {
inline constexpr char Pos = '0';
inline constexpr char AfterTransfer = '3';  ///< ends each transfer of the flash
}  // namespace LineMode

/// Sets the connection mode ("$9904").
void SetLineMode(LineWork& work, char mode);

}  // namespace kelvora
