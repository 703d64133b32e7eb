#include "recovery/RecoveryCopy.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <utility>

#include "comms/Crc.h"
#include "platform/NumberText.h"

namespace kelvora {

namespace {

constexpr std::string_view FirstLine = "Kelvora recovery 1\n";
constexpr std::string_view CrcName = "crc";
constexpr int CrcDigits = 8;

constexpr std::array<std::pair<std::string_view, std::string RecoveryCopy::*>, 5> Fields{{
    {"time", &RecoveryCopy::time},
    {"name", &RecoveryCopy::name},
    {"path", &RecoveryCopy::path},
    {"saved", &RecoveryCopy::saved},
    {"setup", &RecoveryCopy::setup},
}};

std::string FieldText(std::string_view name, const std::string& value)
{
    return std::string(name) + ' ' + std::to_string(value.size()) + ':' + value + '\n';
}

// The value of the field that `rest` begins with, which is cut off there.
std::optional<std::string> TakeField(std::string_view& rest, std::string_view name)
{
    if (!rest.starts_with(name) || !rest.substr(name.size()).starts_with(' '))
        return std::nullopt;
    const char* const digits = rest.data() + name.size() + 1;
    const char* const end = rest.data() + rest.size();
    std::size_t length = 0;
    const auto [colon, error] = std::from_chars(digits, end, length);
    if (error != std::errc() || colon == end || *colon != ':')
        return std::nullopt;
    const auto left = static_cast<std::size_t>(end - colon) - 1;
    if (length >= left || colon[length + 1] != '\n')
        return std::nullopt;
    std::string value(colon + 1, length);
    rest.remove_prefix(rest.size() - left + length + 1);
    return value;
}

}  // namespace

std::string RecoveryText(const RecoveryCopy& copy)
{
    std::string text(FirstLine);
    for (const auto& [name, field] : Fields)
        text += FieldText(name, copy.*field);
    return text + FieldText(CrcName, HexText(Crc32(text), CrcDigits));
}

std::optional<RecoveryCopy> ReadRecoveryCopy(std::string_view text)
{
    if (!text.starts_with(FirstLine))
        return std::nullopt;
    std::string_view rest = text.substr(FirstLine.size());
    RecoveryCopy copy;
    for (const auto& [name, field] : Fields) {
        auto value = TakeField(rest, name);
        if (!value)
            return std::nullopt;
        copy.*field = *std::move(value);
    }
    const std::string_view checked = text.substr(0, text.size() - rest.size());
    if (TakeField(rest, CrcName) != HexText(Crc32(checked), CrcDigits) || !rest.empty())
        return std::nullopt;
    return copy;
}

}  // namespace kelvora
