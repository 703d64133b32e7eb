#include "layout/ModuleOptions.h"

#include "setup/DeviceCode.h"
#include "setup/Options.h"

namespace kelvora {

std::optional<McrOptions> ReadMcrOptions(const SetupDocument& document)
{
    const auto index = FindModule(document.Modules, ModuleKind::MCR);
    if (!index)
        return std::nullopt;
    const ModuleRecord& record = document.Modules[*index];
    McrOptions options;
    options.tracks = record.DeviceCode;
    for (std::size_t track = 0; track < options.separators.size(); ++track)
        options.separators.at(track) = record.Options[Options::SeparatorAt + track];
    options.autoread = record.Options.substr(Options::AutoreadAt) == Options::On;
    return options;
}

std::optional<MasterOptions> ReadMasterOptions(const SetupDocument& document)
{
    const auto index = FindModule(document.Modules, ModuleKind::KM096);
    if (!index)
        return std::nullopt;
    MasterOptions options;
    options.fiscal = document.Modules[*index].Options == Options::Yes;
    if (const auto light = FindModule(document.Modules, ModuleKind::Backlight))
        options.backlight = document.Modules[*light].DeviceCode == DeviceCode::BacklightOn;
    return options;
}

SetupDocument WithOptions(const SetupDocument& document, const McrOptions& options)
{
    SetupDocument changed = document;
    const auto index = FindModule(changed.Modules, ModuleKind::MCR);
    if (!index)
        return changed;
    ModuleRecord& record = changed.Modules[*index];
    ChangeDeviceCode(changed.DeviceMap, record, options.tracks);
    for (std::size_t track = 0; track < options.separators.size(); ++track) {
        const char separator = options.separators.at(track);
        record.Options[Options::SeparatorAt + track] =
            Options::IsSeparatorCarried(separator) ? separator : Options::NoSeparator;
    }
    record.Options.replace(Options::AutoreadAt, std::string::npos,
                           options.autoread ? Options::On : Options::Off);
    return changed;
}

SetupDocument WithOptions(const SetupDocument& document, const MasterOptions& options)
{
    SetupDocument changed = document;
    const auto index = FindModule(changed.Modules, ModuleKind::KM096);
    if (!index)
        return changed;
    changed.Modules[*index].Options = options.fiscal ? Options::Yes : Options::No;
    const auto light = FindModule(changed.Modules, ModuleKind::Backlight);
    if (light && options.backlight)
        ChangeDeviceCode(changed.DeviceMap, changed.Modules[*light],
                         *options.backlight ? DeviceCode::BacklightOn : DeviceCode::BacklightOff);
    return changed;
}

}  // namespace kelvora
