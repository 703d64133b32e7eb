// A line as it leaves the factory: the modules' identity blocks and a flash image that suits them.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "bench/LineState.h"

namespace kelvora::bench {

/// A device as one buys it. The main keyboard is three modules on the line: keyboard, display, key lock.
enum class Module { KM096, KM064, MCR12, MCR23, MCR123, ICCR };

/// The device of that name on the command line, such as "km096" or "mcr123"; nothing for another.
std::optional<Module> FindModule(std::string_view name);

/// How many addresses a device takes.
std::size_t AddressesOf(Module module);

/// A line of those devices in that order, which take MostModules addresses at most. Each key of its flash
/// image is a single one with a code of its own; what no key, pair or option decides is noise from `seed`,
/// the same everywhere.
LineState FreshLine(const std::vector<Module>& modules, std::uint64_t seed = 1);

/// The line's device map: a device code per module, in line order, 255 for an identity that is not known.
/// Read from the identity blocks as people see them: the first byte that identifies, after the previous
/// module's where the blocks are the same.
std::vector<std::uint8_t> DeviceMapOf(const std::vector<IdentityBytes>& modules);

}  // namespace kelvora::bench
