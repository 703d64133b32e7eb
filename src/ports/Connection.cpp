#include "ports/Connection.h"

namespace kelvora {

std::string ModeText(ConnectionMode mode)
{
    switch (mode) {
        case ConnectionMode::Pos:
            return " POS";
        case ConnectionMode::Keyboard:
            return " KEYB";
        case ConnectionMode::None:
            break;
    }
    return {};
}

std::string PortText(const PosCfg& settings)
{
    return " COM" + std::to_string(settings.CommsPort) + ": " + settings.PortSettings;
}

bool SelectPort(PosCfg& settings, std::int16_t port)
{
    if (settings.CommsPort == port)
        return false;
    settings.CommsPort = port;
    return true;
}

}  // namespace kelvora
