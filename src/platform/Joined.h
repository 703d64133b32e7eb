// Texts one behind the other.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kelvora {

/// `parts` with `between` between any two.
inline std::string Joined(const std::vector<std::string>& parts, std::string_view between)
{
    std::string text;
    for (const std::string& part : parts)
        text.append(&part == parts.data() ? "" : between).append(part);
    return text;
}

}  // namespace kelvora
