#include "layout/ModuleCopy.h"

#include <gtest/gtest.h>

#include "layout/ModuleOptions.h"
#include "setup/DeviceCode.h"
#include "setup/SetupReader.h"

namespace kelvora {
namespace {

using Outcome = ModulePasting::Outcome;

constexpr const char* Source =
    "[KM096]\nFiscal = NO\nBacklight = NO\n[KM064]\nKeyMap = =SSSSSSS _\nSSSSSSSS _\nSSSSSSSS _\nSSSSSSSS _\n"
    "SSSSSSSS _\nSSSSSSSS _\nSSSSSSSS _\nSSSSSSHH\n[MCR]\nTracks = 1,2\nTrack1Sep = ;\nAutoread = OFF\n";

std::string MapOf(const SetupDocument& document, ModuleKind kind)
{
    return document.Modules[*FindModule(document.Modules, kind)].KeyMap;
}

TEST(ModuleCopy, TakesKeysAndOptionsIntoTheSameKindAlone)
{
    const SetupDocument source = ReadSetup(Source);
    const SetupDocument target = ReadSetup("[KM096]\n[MCR]\n[KM064]\n");
    SetupDocument pasted = target;
    for (const ModuleKind kind : {ModuleKind::KM096, ModuleKind::KM064, ModuleKind::MCR}) {
        const ModulePasting pasting = PasteModule(pasted, CopyModule(source, kind));
        ASSERT_EQ(pasting.outcome, Outcome::Done) << static_cast<int>(kind);
        EXPECT_EQ(pasting.kind, kind);
        EXPECT_NE(pasting.document, pasted);
        pasted = pasting.document;
        EXPECT_EQ(PasteModule(pasted, CopyModule(source, kind)).outcome, Outcome::Same);
    }
    EXPECT_EQ(MapOf(pasted, ModuleKind::KM064), MapOf(source, ModuleKind::KM064));
    EXPECT_EQ(MapOf(pasted, ModuleKind::KM096), MapOf(target, ModuleKind::KM096));
    EXPECT_EQ(ReadMcrOptions(pasted), ReadMcrOptions(source));
    EXPECT_EQ(ReadMasterOptions(pasted), ReadMasterOptions(source));
    // The order of the line is the target's.
    EXPECT_EQ(pasted.DeviceMap.size(), target.DeviceMap.size());
    EXPECT_EQ(pasted.Modules.back().Kind, ModuleKind::KM064);
    EXPECT_EQ(static_cast<std::uint8_t>(pasted.DeviceMap[3]), DeviceCode::MCR12);
}

TEST(ModuleCopy, RefusesWhatDoesNotFit)
{
    const SetupDocument target = ReadSetup("[KM096]\n");
    const std::pair<std::string, Outcome> rows[]{
        {"", Outcome::NoModule},
        {"a line that was copied from a letter", Outcome::NoModule},
        {Source, Outcome::NoModule},
        {CopyModule(target, ModuleKind::MCR), Outcome::NoModule},
        {CopyModule(ReadSetup(Source), ModuleKind::MCR), Outcome::NotThere},
    };
    for (const auto& [text, outcome] : rows)
        EXPECT_EQ(PasteModule(target, text).outcome, outcome) << text;
}

}  // namespace
}  // namespace kelvora
