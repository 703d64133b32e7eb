#include "flash/DumpSource.h"

namespace kelvora {

namespace {

DumpHead HeadOf(const DumpSource& source, DumpKind kind, std::string_view path)
{
    return {DeviceMapDump{BackupTitle(source.origin), source.deviceMap}, kind, source.terminal,
            std::string(path)};
}

}  // namespace

FlashDump DumpOfDevice(const FlashImage& image, const DumpSource& source)
{
    return {image, HeadOf(source, DumpKind::Device, {})};
}

FlashDump DumpOfSetup(const FlashImage& image, const DumpSource& source, std::string_view path)
{
    return {image, HeadOf(source, DumpKind::Setup, path)};
}

std::optional<DumpSource> SourceOf(const FlashDump& dump)
{
    const auto& map = dump.head.deviceMap;
    const auto origin = map ? OriginOf(map->title) : std::nullopt;
    if (!origin)
        return std::nullopt;
    return DumpSource{*origin, map->deviceMap, dump.head.terminal};
}

}  // namespace kelvora
