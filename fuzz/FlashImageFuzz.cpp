// Any bytes as a device's flash image, and as the codes of its line: a setup in good order whose image reads
// back, and differences that name each differing byte once.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "Require.h"
#include "flash/ImageDifferences.h"
#include "flash/MatrixCodes.h"
#include "flash/SetupImage.h"
#include "flash/TakeFromImage.h"
#include "keymap/Keyboard.h"
#include "keymap/Models.h"
#include "setup/KeyMapPicture.h"
#include "setup/Options.h"
#include "setup/SetupDifferences.h"
#include "setup/SetupError.h"
#include "setup/SetupReader.h"

namespace {

using namespace kelvora;

void RequireOrder(const TakenSetup& taken, const SetupDocument& scanned)
{
    Require(taken.document.DeviceMap == scanned.DeviceMap, "the line's answer stays");
    for (const ModuleRecord& record : taken.document.Modules) {
        if (!FindModel(record.Kind))
            continue;
        Require(IsKeyMapValid(record.KeyMap, record.Rows, record.Columns), "a valid key map");
        Require(CanBeDrawn(record.KeyMap, record.Columns), "a key map within the grid");
    }
    const auto reader = FindModule(taken.document.Modules, ModuleKind::MCR);
    Require(!reader ||
                std::ranges::all_of(taken.document.Modules[*reader].Options.substr(Options::SeparatorAt, 3),
                                    Options::IsSeparatorCarried),
            "separators that a file carries");
    Require(WhatTheDeviceCannotHold(taken.document).empty() ||
                taken.document.Modules[*reader].Options.find('\xFF') != std::string::npos,
            "the device holds what was taken from it");
}

void RequireReadsBack(const TakenSetup& taken, const SetupDocument& scanned, const FlashImage& image)
{
    const auto built = BuildSetupImage(taken.document, &image);
    const auto* const written = std::get_if<FlashImage>(&built);
    if (!written)
        return;
    const TakenSetup again = TakeFromImage(scanned, *written);
    Require(again.notices.empty() && again.document == taken.document, "what is built reads back");
    const bool wasTaken = taken.notices.empty();
    const bool isSameLine = DeviceCodesOf(image) == scanned.DeviceMap;
    Require(!wasTaken || !isSameLine || FirstDifference(image, *written, true) == 0,
            "nothing is left to write");
}

void RequireDifferences(const FlashImage& before, const FlashImage& after)
{
    for (const FlashImage* const named : {&before, &after}) {
        std::size_t next = 0;
        const auto requireEqualTo = [&](std::size_t end) {
            Require(std::equal(before.begin() + next, before.begin() + end, after.begin() + next),
                    "each differing byte is named");
        };
        for (const ImageDifference& difference : DescribeDifferences(before, after, ModulesOf(*named))) {
            Require(difference.first >= next && difference.last >= difference.first &&
                        difference.last < FlashSize,
                    "ascending addresses");
            requireEqualTo(difference.first);
            next = difference.last + 1;
        }
        requireEqualTo(FlashSize);
    }
}

std::optional<SetupDocument> Scanned(std::string_view codes)
{
    try {
        return ReadDeviceMap(codes);
    } catch (const SetupError&) {
        return std::nullopt;
    }
}

void CheckImage(const FlashImage& image, const std::string& codes)
{
    const auto scanned = Scanned(codes);
    if (!scanned)
        return;
    const TakenSetup taken = TakeFromImage(*scanned, image);
    RequireOrder(taken, *scanned);
    RequireReadsBack(taken, *scanned, image);
    CompareSetups(*scanned, taken.document);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    Require(ParseMatrixCodes(text).size() <= size + 16, "an entry needs a character");
    FlashImage image{};
    image.fill(ErasedByte);
    std::copy_n(data, std::min(size, FlashSize), image.begin());
    FlashImage other{};
    std::rotate_copy(image.begin(), image.begin() + size % 256, image.end(), other.begin());
    RequireDifferences(image, other);

    // The line that the image says, one that the first bytes say, and one that the image is made to say.
    CheckImage(image, DeviceCodesOf(image));
    CheckImage(image, std::string(text.substr(0, 4)));
    constexpr std::array<std::string_view, 3> Lines{"\xD6\x17\x04\xBF\x03\x08", "\x08\x01", "\xD6\xBF"};
    const std::string line(Lines.at(size % Lines.size()));
    for (std::size_t position = 0; position < line.size(); ++position)
        image[FlashLayout::PairsAt + position * FlashLayout::PairSize] =
            static_cast<std::uint8_t>(line[position]);
    image[FlashLayout::PairsAt + line.size() * FlashLayout::PairSize] = 0;
    CheckImage(image, line);
    return 0;
}
