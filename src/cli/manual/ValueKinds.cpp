#include "cli/manual/ValueKinds.h"

#include <algorithm>
#include <array>

#include "picture/PictureType.h"

namespace kelvora::manual {

namespace {

// The first row that fits counts. An empty column fits all; an option is known by its long name.
struct Row {
    std::string_view command, option, value;
    ValueKind kind;
};

constexpr std::array Rows{
    Row{"", "--line", "", ValueKind::Line},
    Row{"", "--bench-state", "", ValueKind::AnyFile},
    Row{"", "--state", "", ValueKind::AnyFile},
    Row{"", "--tills", "", ValueKind::AnyFile},
    Row{"", "--output-folder", "", ValueKind::Folder},
    Row{"", "--by-name", "", ValueKind::Folder},
    Row{"", "--keys-from", "", ValueKind::SetupFile},
    Row{"", "--results", "", ValueKind::Folder},
    Row{"kelvora-cli restore", "", "FILE", ValueKind::DumpFile},
    Row{"kelvora-cli identity restore", "", "FILE", ValueKind::AnyFile},
    Row{"kelvora-cli dump", "--output", "", ValueKind::DumpFile},
    Row{"kelvora-cli image", "--output", "", ValueKind::DumpFile},
    Row{"kelvora-cli render", "--output", "", ValueKind::PictureFile},
    Row{"kelvora-cli report", "--output", "", ValueKind::PageFile},
    Row{"", "--output", "", ValueKind::SetupFile},
    Row{"", "--standard", "", ValueKind::SetupFile},
    Row{"", "", "FILE", ValueKind::SetupFile},
    Row{"kelvora-cli make", "", "JSON", ValueKind::AnyFile},
    Row{"kelvora-cli diff", "", "A", ValueKind::SetupFile},
    Row{"kelvora-cli diff", "", "B", ValueKind::SetupFile},
};

}  // namespace

ValueKind KindOf(std::string_view path, const OptionText& option)
{
    if (!option.choices.empty())
        return ValueKind::Choice;
    const std::string_view name = option.names.empty() ? std::string_view() : option.names.back();
    const auto* const row = std::ranges::find_if(Rows, [&](const Row& candidate) {
        return (candidate.command.empty() || candidate.command == path) &&
               (candidate.option.empty() || candidate.option == name) &&
               (candidate.value.empty() || candidate.value == option.value);
    });
    return row == Rows.end() ? ValueKind::Unknown : row->kind;
}

std::vector<std::string> FileEndings(ValueKind kind)
{
    switch (kind) {
        case ValueKind::SetupFile:
            return {"dat", "txt"};
        case ValueKind::DumpFile:
            return {"mem"};
        case ValueKind::PictureFile:
            return {PictureTypeNames.begin(), PictureTypeNames.end()};
        case ValueKind::PageFile:
            return {"html"};
        default:
            return {};
    }
}

std::vector<std::string> SerialDevicePatterns()
{
    return {"/dev/ttyS*", "/dev/ttyUSB*", "/dev/ttyACM*", "/dev/serial/by-id/*"};
}

}  // namespace kelvora::manual
