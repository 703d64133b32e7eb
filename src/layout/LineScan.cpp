#include "layout/LineScan.h"

#include <utility>

#include "comms/LineCommands.h"
#include "setup/Options.h"

namespace kelvora {

namespace {

void TakeMap(ScanOutcome& outcome)
{
    try {
        outcome.document = ReadDeviceMap(outcome.line.deviceMap);
    } catch (const DeviceMapError& error) {
        outcome.refusal = error;
        return;
    }
    if (!outcome.image)
        return;
    TakenSetup taken = TakeFromImage(outcome.document, *outcome.image);
    outcome.document = std::move(taken.document);
    outcome.notices = std::move(taken.notices);
}

}  // namespace

LineTarget TargetOf(const PosCfg& settings)
{
    return {settings.CommsPort, settings.PortSettings};
}

ModuleList ModulesOfMap(const std::string& deviceMap)
{
    try {
        ModuleList modules = ReadDeviceMap(deviceMap).Modules;
        for (ModuleRecord& record : modules) {
            record.KeyMap.clear();
            record.Options.resize(record.Kind == ModuleKind::MCR ? Options::TracksLength : 0);
        }
        return modules;
    } catch (const DeviceMapError&) {
        return {};
    }
}

ScanOutcome ScanLine(Comms& comms, const LineTarget& target, const LineHooks& hooks)
{
    ScanOutcome outcome;
    outcome.line = ScanWithUpload(comms, target, hooks, LineMode::Pos);
    outcome.image = ImageFrom(outcome.line.image);
    if (!outcome.line.deviceMap.empty())
        TakeMap(outcome);
    return outcome;
}

}  // namespace kelvora
