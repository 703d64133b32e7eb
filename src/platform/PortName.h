// How a serial port of the program is called: COM1 to COM4, whatever device it stands for.
#pragma once

#include <string>
#include <string_view>

namespace kelvora {

inline constexpr std::string_view PortWord = "COM";

/// "COM1" for 1.
inline std::string PortName(int port)
{
    return std::string(PortWord) + std::to_string(port);
}

}  // namespace kelvora
