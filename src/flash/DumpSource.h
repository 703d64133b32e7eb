// Where the image of a dump comes from, and the dump that says so.
#pragma once

#include <string>
#include <string_view>

#include "flash/BackupTitle.h"
#include "flash/DumpText.h"

namespace kelvora {

/// Where and when an image was read or made, and what is known of that line.
struct DumpSource {
    BackupOrigin origin{};
    std::string deviceMap{};  ///< empty when it is not known
    std::string terminal{};   ///< the name of the line's terminal; empty when it is not known

    friend bool operator==(const DumpSource&, const DumpSource&) = default;
};

/// The dump of an image that was read from a device.
FlashDump DumpOfDevice(const FlashImage& image, const DumpSource& source);

/// The dump of a setup's image. `path` is the setup's file; empty when it has none.
FlashDump DumpOfSetup(const FlashImage& image, const DumpSource& source, std::string_view path);

/// What a dump tells of where it comes from; nothing where its title does not say when.
std::optional<DumpSource> SourceOf(const FlashDump& dump);

}  // namespace kelvora
