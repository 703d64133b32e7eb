// Writing a setup as the text of a setup file. The format, every line ended by CR LF:
//
//   [Kelvora]
//   Version = 2.0
//   then a block per module, in line order:
//   [KM096]   KeyMap = picture, Fiscal = YES|NO_          (_ a blank that is written)
//             Backlight = YES|NO_                         from the backlight's own record
//   [KM064]   KeyMap = picture
//   [MCR]     Tracks = 1,2,3|1,2__|2,3__  Track1Sep = c  Track2Sep = c  Track3Sep = c  Autoread = ON_|OFF
//   [ICCR]    KeyMap = picture
//
// A separator that is "^" (none) has no line. The code-4 part of a main keyboard writes nothing.
#pragma once

#include <span>
#include <string>

#include "setup/ModuleRecord.h"

namespace kelvora {

/// The text of a setup file; stops at the first record whose device code is 0.
std::string WriteSetup(std::span<const ModuleRecord> modules);

}  // namespace kelvora
