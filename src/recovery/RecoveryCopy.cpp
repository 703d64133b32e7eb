#include "recovery/RecoveryCopy.h"

#include <array>
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
    const std::string start = std::string(name) + ' ';
    const std::size_t colon = rest.find(':');
    if (!rest.starts_with(start) || colon == std::string_view::npos)
        return std::nullopt;
    const auto length = WholeNumber<std::size_t>(rest.substr(start.size(), colon - start.size()));
    if (!length)
        return std::nullopt;
    const std::string_view value = rest.substr(colon + 1, *length);
    rest.remove_prefix(colon + 1 + value.size());
    if (!rest.starts_with('\n'))
        return std::nullopt;
    rest.remove_prefix(1);
    return std::string(value);
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
