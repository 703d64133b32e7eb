// Any bytes as a setup file and as a device map: a numbered error, or a setup in good order that is written
// and read back as it is.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Require.h"
#include "keymap/Keyboard.h"
#include "keymap/Models.h"
#include "setup/Options.h"
#include "setup/SetupError.h"
#include "setup/SetupReader.h"
#include "setup/SetupWriter.h"

namespace {

using namespace kelvora;

void RequireOrder(const SetupDocument& document)
{
    Require(document.DeviceMap.size() <= MaximumModules, "at most seven modules");
    std::size_t next = 0;
    for (const ModuleRecord& record : document.Modules) {
        Require(record.Position >= next && record.Position < document.DeviceMap.size(),
                "ascending positions");
        next = record.Position + 1U;
        Require(static_cast<std::uint8_t>(document.DeviceMap[record.Position]) == record.DeviceCode,
                "the device map has the record's code");
        Require(record.KeyMap.size() == record.KeyCount || record.Kind == ModuleKind::Backlight,
                "a key type for each position");
        Require(record.Kind != ModuleKind::MCR || record.Options.size() == Options::McrLength,
                "the options' layout");
        Require(IsKeyMapValid(record.KeyMap, record.Rows, record.Columns), "a valid key map");
    }
}

bool AreSeparatorsCarried(const SetupDocument& document)
{
    const auto reader = FindModule(document.Modules, ModuleKind::MCR);
    return !reader || std::ranges::all_of(document.Modules[*reader].Options.substr(Options::SeparatorAt, 3),
                                          Options::IsSeparatorCarried);
}

// What a file can carry of a setup: a picture has no letter for a position that the model lacks.
SetupDocument Carried(SetupDocument document)
{
    for (ModuleRecord& record : document.Modules)
        std::replace(record.KeyMap.begin(), record.KeyMap.begin() + record.Rows * record.Columns,
                     KeyType::Absent, KeyType::Unused);
    return document;
}

template <class Read>
void RequireSetupOrError(Read read)
{
    try {
        read();
    } catch (const SetupError& error) {
        Require(error.Number() == SetupErrorNumber::LineRejected ||
                    error.Number() == SetupErrorNumber::ModuleRefused,
                "one of the two numbers");
    }
}

void CheckSetup(std::string_view text)
{
    SetupDocument document;
    RequireSetupOrError([&] { document = ReadSetup(text); });
    RequireOrder(document);
    if (AreSeparatorsCarried(document))
        Require(ReadSetup(WriteSetup(document.Modules)) == Carried(document), "what is written reads back");
}

// A key map of the right size and letters, which random bytes hardly ever are: the smallest keypad's.
std::string KeypadSetup(std::string_view bytes)
{
    constexpr std::string_view Letters = "SVHQ=_01234 X";
    std::string text = "[ICCR]\nKEYMAP=";
    for (const char byte : bytes.substr(0, 16))
        text += Letters[static_cast<unsigned char>(byte) % Letters.size()];
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    RequireSetupOrError([&] { RequireOrder(ReadSetup(text, RepeatedKinds::Read)); });
    RequireSetupOrError([&] { RequireOrder(ReadDeviceMap(text)); });
    CheckSetup(text);
    CheckSetup(KeypadSetup(text));
    return 0;
}
