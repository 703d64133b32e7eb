#include "layout/ModuleCopy.h"

#include "keymap/Models.h"
#include "layout/LayoutCommands.h"
#include "layout/ModuleOptions.h"
#include "setup/SetupReader.h"
#include "setup/SetupWriter.h"

namespace kelvora {

namespace {

SetupDocument WithModule(SetupDocument document, const SetupDocument& source, ModuleKind kind)
{
    if (FindModel(kind))
        document.Modules[*FindModule(document.Modules, kind)].KeyMap =
            source.Modules[*FindModule(source.Modules, kind)].KeyMap;
    if (const auto options = ReadMcrOptions(source))
        document = WithOptions(document, *options);
    if (const auto options = ReadMasterOptions(source))
        document = WithOptions(document, *options);
    return document;
}

}  // namespace

std::string CopyModule(const SetupDocument& document, ModuleKind kind)
{
    ModuleList alone;
    for (const ModuleRecord& record : document.Modules)
        if (record.Kind == kind || (IsPart(record.Kind) && kind == ModuleKind::KM096))
            alone.push_back(record);
    return WriteSetup(alone);
}

ModulePasting PasteModule(const SetupDocument& document, std::string_view text)
{
    using Outcome = ModulePasting::Outcome;
    const auto source = TryReadSetup(text);
    if (!source || MainChain(source->Modules).size() != 1)
        return {};
    const ModuleKind kind = MainChain(source->Modules).front();
    if (!FindModule(document.Modules, kind))
        return {Outcome::NotThere, kind};
    SetupDocument changed = WithModule(document, *source, kind);
    if (changed == document)
        return {Outcome::Same, kind};
    return {Outcome::Done, kind, std::move(changed)};
}

}  // namespace kelvora
