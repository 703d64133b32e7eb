// Any bytes as a flash dump, and whole dumps with any bytes put into them: an error that names a line of the
// text, or an image and a head that are written and read back as they are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Require.h"
#include "flash/BackupTitle.h"
#include "flash/DumpText.h"

namespace {

using namespace kelvora;

// "UUUU:LL ", 16 times "HH ", 16 characters, CR LF.
constexpr std::size_t LineLength = 74;

void CheckText(std::string_view text)
{
    try {
        const FlashDump dump = ReadDump(text);
        if (const auto& map = dump.head.deviceMap) {
            Require(map->deviceMap.size() <= 7, "at most seven modules");
            if (const auto origin = OriginOf(map->title))
                Require(BackupTitle(*origin) == map->title, "the title's one form");
        }
        const FlashDump again = ReadDump(FormatFlashDump(dump));
        Require(again.image == dump.image, "the image reads back");
        Require(again.head == dump.head, "what it says of itself reads back");
    } catch (const DumpError& error) {
        const auto lines = static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
        Require(error.Line() >= 1 && error.Line() <= lines + 1,
                "a line of the text, or the one due behind it");
        Require(error.Address() <= FlashSize, "an address of the image");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    CheckText(text);
    if (size < 3)
        return 0;
    FlashImage image{};
    std::copy_n(data, std::min(size, FlashSize), image.begin());
    const std::string dump =
        FormatFlashDump({image, {std::nullopt, DumpKind::Device, std::string(text.substr(0, 40)), {}}});
    CheckText(std::string(text).append("\n").append(dump));
    // The bytes in the place of as many others, within or around a line.
    const std::size_t at = (data[0] * 256U + data[1]) % dump.size();
    CheckText(std::string(dump).replace(at, data[2] % (2 * LineLength), text.substr(3)));
    return 0;
}
