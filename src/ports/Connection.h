// A window's port and connection mode, and the texts by which the status bar shows them.
#pragma once

#include <string>

#include "setup/PosCfg.h"

namespace kelvora {

/// " POS" or " KEYB"; empty before a mode is chosen.
std::string ModeText(ConnectionMode mode);

/// " COM" + port + ": " + settings.
std::string PortText(const PosCfg& settings);

/// Chooses a port (1 to 4). False when it was chosen already and nothing changed.
bool SelectPort(PosCfg& settings, std::int16_t port);

/// The devices can be talked to in either mode.
constexpr bool AllowsScan(ConnectionMode mode)
{
    return mode != ConnectionMode::None;
}

}  // namespace kelvora
