// Numbers as texts, as frames, dumps and messages write them, and texts as numbers.
#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace kelvora {

/// The number's last `digits` (1 to 16) hexadecimal digits in capitals, led by zeros.
std::string HexText(std::uint64_t value, int digits);

/// "01 7F FF".
std::string HexBytes(std::string_view bytes);

/// A number from 0 on in so many digits or more, led by zeros.
std::string PaddedNumber(int number, std::size_t digits);

/// The number that `text` is, in digits of that base (letters of either case); nothing for another text,
/// blanks and a plus sign among it, and for a number that a `Number` cannot hold.
template <class Number>
std::optional<Number> WholeNumber(std::string_view text, int base = 10)
{
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

}  // namespace kelvora
