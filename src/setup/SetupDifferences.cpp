#include "setup/SetupDifferences.h"

#include <algorithm>
#include <array>
#include <utility>

#include "keymap/Keyboard.h"
#include "keymap/Models.h"
#include "setup/Options.h"

namespace kelvora {

namespace {

using Changed = SetupDifference::What;

// A module with what tells it from others of its setup.
struct Placed {
    const ModuleRecord* record;
    int occurrence;  // among the modules of its kind
    int firstKeyNumber;

    bool IsLike(const Placed& other) const
    {
        return record->Kind == other.record->Kind && occurrence == other.occurrence;
    }
};

std::vector<Placed> PlacedModules(const SetupDocument& document)
{
    std::vector<Placed> placed;
    int keyNumber = 1;
    for (const ModuleRecord& record : document.Modules) {
        const auto same = std::ranges::count_if(
            placed, [&](const Placed& other) { return other.record->Kind == record.Kind; });
        placed.push_back({&record, static_cast<int>(same), keyNumber});
        if (FindModel(record.Kind))
            keyNumber += record.Rows * record.Columns;
    }
    return placed;
}

const Placed* Counterpart(const Placed& module, const std::vector<Placed>& others)
{
    const auto found =
        std::ranges::find_if(others, [&](const Placed& other) { return other.IsLike(module); });
    return found == others.end() ? nullptr : &*found;
}

// The kinds of the modules that the other setup has too.
std::string CommonKinds(const std::vector<Placed>& modules, const std::vector<Placed>& others)
{
    std::string kinds;
    for (const Placed& module : modules)
        if (Counterpart(module, others))
            kinds += static_cast<char>(module.record->Kind);
    return kinds;
}

// An option's place in the option text of a kind.
struct OptionField {
    Changed what;
    ModuleKind kind;
    int position;
    std::size_t at, length;
};

constexpr std::array OptionFields{
    OptionField{Changed::Fiscal, ModuleKind::KM096, 0, 0, Options::Yes.size()},
    OptionField{Changed::Backlight, ModuleKind::Backlight, 0, 0, Options::Yes.size()},
    OptionField{Changed::Tracks, ModuleKind::MCR, 0, 0, Options::TracksLength},
    OptionField{Changed::Separator, ModuleKind::MCR, 1, Options::SeparatorAt, 1},
    OptionField{Changed::Separator, ModuleKind::MCR, 2, Options::SeparatorAt + 1, 1},
    OptionField{Changed::Separator, ModuleKind::MCR, 3, Options::SeparatorAt + 2, 1},
    OptionField{Changed::Autoread, ModuleKind::MCR, 0, Options::AutoreadAt, Options::On.size()},
};

void CompareOptions(const ModuleRecord& before, const ModuleRecord& after,
                    std::vector<SetupDifference>& differences)
{
    std::vector<ModuleOption> old = OptionsOf(before);
    std::vector<ModuleOption> now = OptionsOf(after);
    for (std::size_t i = 0; i < old.size(); ++i)
        if (old[i] != now[i])
            differences.push_back({now[i].what, after.Kind, now[i].position, 0, 0, std::move(old[i].value),
                                   std::move(now[i].value)});
}

// The number of the larger key that covers that cell; 0 for none.
int OwnerOf(const Placed& module, int cell)
{
    const int owner = CoveringKey(cell + 1, module.record->Columns, module.record->KeyMap);
    return owner == 0 ? 0 : module.firstKeyNumber + owner - 1;
}

void CompareKeys(const Placed& before, const Placed& after, std::vector<SetupDifference>& differences)
{
    if (!FindModel(before.record->Kind))
        return;
    const std::string& old = before.record->KeyMap;
    const std::string& now = after.record->KeyMap;
    const auto cells = static_cast<int>(std::min(old.size(), now.size()));
    for (int cell = 0; cell < cells; ++cell) {
        const auto at = static_cast<std::size_t>(cell);
        if (old[at] != now[at])
            differences.push_back({Changed::Key,
                                   before.record->Kind,
                                   cell + 1,
                                   before.firstKeyNumber + cell,
                                   after.firstKeyNumber + cell,
                                   {old[at]},
                                   {now[at]},
                                   OwnerOf(before, cell),
                                   OwnerOf(after, cell)});
    }
}

void AppendUnmatched(Changed what, const std::vector<Placed>& modules, const std::vector<Placed>& others,
                     std::vector<SetupDifference>& differences)
{
    for (const Placed& module : modules)
        if (!Counterpart(module, others))
            differences.push_back({what, module.record->Kind, 0, 0, 0, {}, {}});
}

void AppendChanged(Changed what, std::string before, std::string after,
                   std::vector<SetupDifference>& differences)
{
    if (before != after)
        differences.push_back({what, ModuleKind::None, 0, 0, 0, std::move(before), std::move(after)});
}

}  // namespace

std::vector<ModuleOption> OptionsOf(const ModuleRecord& record)
{
    std::vector<ModuleOption> options;
    for (const OptionField& field : OptionFields)
        if (field.kind == record.Kind)
            options.push_back({field.what, field.position, record.Options.substr(field.at, field.length)});
    return options;
}

std::vector<SetupDifference> CompareSetups(const SetupDocument& before, const SetupDocument& after)
{
    const std::vector<Placed> old = PlacedModules(before);
    const std::vector<Placed> now = PlacedModules(after);
    std::vector<SetupDifference> differences;
    AppendUnmatched(Changed::Removed, old, now, differences);
    AppendUnmatched(Changed::Added, now, old, differences);
    AppendChanged(Changed::Order, CommonKinds(old, now), CommonKinds(now, old), differences);
    AppendChanged(Changed::UnknownModules, UnknownDeviceCodes(before), UnknownDeviceCodes(after),
                  differences);
    for (const Placed& module : now)
        if (const Placed* const counterpart = Counterpart(module, old)) {
            CompareOptions(*counterpart->record, *module.record, differences);
            CompareKeys(*counterpart, module, differences);
        }
    return differences;
}

}  // namespace kelvora
