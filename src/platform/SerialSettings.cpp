#include "platform/SerialSettings.h"

#include "platform/AsciiCase.h"
#include "platform/NumberText.h"

namespace kelvora {

namespace {

constexpr int SlowestBaud = 150;
constexpr int FastestBaud = 115200;

/// What follows the speed: ",p,d,s".
constexpr std::size_t TailLength = 6;

}  // namespace

std::chrono::microseconds SerialSettings::TimeOf(std::size_t bytes) const
{
    const int bits = 1 + dataBits + (parity == 'n' ? 0 : 1) + stopBits;
    const auto total = static_cast<long long>(bytes) * bits * 1'000'000;
    return std::chrono::microseconds((total + baud - 1) / baud);
}

std::optional<SerialSettings> ParseSerialSettings(std::string_view text)
{
    const std::string_view speed = text.substr(0, text.find(','));
    const std::string_view tail = text.substr(speed.size());
    // No number is less than each.
    const auto baud = WholeNumber<int>(speed);
    if (tail.size() != TailLength || baud < SlowestBaud || baud > FastestBaud)
        return std::nullopt;
    SerialSettings settings;
    settings.baud = *baud;
    settings.parity = AsciiLower(tail[1]);
    settings.dataBits = tail[3] - '0';
    settings.stopBits = tail[5] - '0';
    const bool valid = tail[2] == ',' && tail[4] == ',' &&
                       std::string_view("noe").find(settings.parity) != std::string_view::npos &&
                       (settings.dataBits == 7 || settings.dataBits == 8) &&
                       (settings.stopBits == 1 || settings.stopBits == 2);
    return valid ? std::optional(settings) : std::nullopt;
}

}  // namespace kelvora
