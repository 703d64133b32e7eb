#include "layout/LayoutCommands.h"

#include <gtest/gtest.h>

#include "layout/LineScan.h"
#include "layout/ModuleOptions.h"
#include "setup/DeviceCode.h"
#include "setup/Options.h"

namespace kelvora {
namespace {

constexpr ModuleKind Master = ModuleKind::KM096;
constexpr ModuleKind Slave = ModuleKind::KM064;
constexpr ModuleKind Mcr = ModuleKind::MCR;
constexpr ModuleKind Iccr = ModuleKind::ICCR;

using Chain = std::vector<ModuleKind>;

SetupDocument Document(const Chain& chain)
{
    SetupDocument document;
    for (const ModuleKind kind : chain)
        InsertModule(document, kind, document.Modules.size());
    return document;
}

TEST(LayoutCommands, PlacesStandBehindTheMasterInBothDirections)
{
    const auto check = [&](const char* why, const Chain& before, ModuleKind placed, std::size_t place,
                           const Chain& after) {
        EXPECT_EQ(MainChain(PlaceModule(Document(before), placed, place).Modules), after) << why;
    };
    check("the first module", {}, Master, 0, {Master});
    check("a master comes first in a file without one", {Slave, Mcr}, Master, 9, {Master, Slave, Mcr});
    check("behind the master", {Master, Slave}, Mcr, 1, {Master, Mcr, Slave});
    check("first where there is no master", {Mcr}, Slave, 0, {Slave, Mcr});
    check("never before the master", {Master, Slave}, Mcr, 0, {Master, Mcr, Slave});
    check("at the end", {Master, Slave}, Mcr, 2, {Master, Slave, Mcr});
    check("moved left", {Master, Slave, Mcr, Iccr}, Iccr, 1, {Master, Iccr, Slave, Mcr});
    check("moved right", {Master, Slave, Mcr, Iccr}, Slave, 3, {Master, Mcr, Iccr, Slave});
    check("moved to where it is", {Master, Slave, Mcr, Iccr}, Mcr, 2, {Master, Slave, Mcr, Iccr});
    const ModuleList modules = Document({Master, Slave, Iccr}).Modules;
    EXPECT_TRUE(HasChoice(Mcr, modules));
    EXPECT_FALSE(HasChoice(Master, modules) || HasChoice(Mcr, Document({Master}).Modules));
    EXPECT_EQ(PlaceOfHit({StripButton::KM064, false}, Mcr, modules), 1U);
    EXPECT_EQ(PlaceOfHit({StripButton::KM064, true}, Mcr, modules), 2U);
}

TEST(LayoutCommands, DeletingTheMasterTakesAllAndAsksOnlyForMore)
{
    const SetupDocument full = Document({Master, Mcr, Iccr});
    EXPECT_EQ(PlanDeletion(full.Modules, StripButton::Master), Deletion::WholeChain);
    EXPECT_EQ(Delete(full, StripButton::Master), SetupDocument{});
    EXPECT_EQ(PlanDeletion(full.Modules, StripButton::Keypad), Deletion::Nothing);
    EXPECT_EQ(Delete(full, StripButton::Keypad), full);
    EXPECT_EQ(MainChain(Delete(full, StripButton::ICCR).Modules), (Chain{Master, Mcr}));
    EXPECT_EQ(PlanDeletion(Document({Master}).Modules, StripButton::Master), Deletion::Module);
    EXPECT_EQ(PlanDeletion(full.Modules, StripButton::KM064), Deletion::Nothing) << "not there";
}

TEST(ModuleOptions, KeepCodeMapAndOptionsInStep)
{
    const SetupDocument document = Document({Master, Mcr});
    EXPECT_EQ(ReadMcrOptions(document), (McrOptions{DeviceCode::MCR123, {'^', '^', '^'}, true}));
    const SetupDocument changed =
        WithOptions(document, McrOptions{DeviceCode::MCR23, {';', '^', '_'}, false});
    EXPECT_EQ(changed.Modules.back().Options, "2,3  ;^^OFF") << "a separator that no file carries is none";
    EXPECT_EQ(changed.DeviceMap, "\xD6\x17\x04\x02");
    const SetupDocument dark = WithOptions(document, MasterOptions{false, false});
    EXPECT_EQ(dark.Modules[0].Options, Options::No);
    EXPECT_EQ(dark.Modules[1].Options, Options::No);
    EXPECT_EQ(dark.DeviceMap, "\xD6\x1F\x04\x03");
    EXPECT_EQ(WithOptions(document, MasterOptions{true, {}}).DeviceMap, document.DeviceMap);
    EXPECT_EQ(ReadMasterOptions(Document({Mcr})), std::nullopt);
    const ModuleList told = ModulesOfMap(document.DeviceMap);
    EXPECT_EQ(told.front().Options + told.back().Options, "1,2,3");
}

}  // namespace
}  // namespace kelvora
