#include "setup/PosCfg.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace kelvora {

namespace {

constexpr std::array<std::string_view, 8> BaudTexts{"19200", "9600", "4800", "2400",
                                                    "1200",  "600",  "300",  "150"};

}  // namespace

void PosCfg::SetBaudRate(std::int16_t index)
{
    baudRate_ = index;
    PortSettings.replace(0, PortSettings.find(','), BaudText(index));
}

std::string_view BaudText(int index)
{
    const bool inTable = index >= 0 && static_cast<std::size_t>(index) < BaudTexts.size();
    return inTable ? BaudTexts.at(static_cast<std::size_t>(index)) : std::string_view{};
}

std::int16_t BaudIndexOf(std::string_view settings)
{
    const auto* const row = std::ranges::find(BaudTexts, settings.substr(0, settings.find(',')));
    return static_cast<std::int16_t>(row == BaudTexts.end() ? 1 : row - BaudTexts.begin());
}

}  // namespace kelvora
