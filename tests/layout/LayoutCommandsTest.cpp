#include "layout/LayoutCommands.h"

#include <gtest/gtest.h>

#include <random>

#include "keymap/Keyboard.h"
#include "layout/LayoutRules.h"
#include "layout/ModuleOptions.h"
#include "setup/DeviceCode.h"
#include "setup/Options.h"
#include "setup/SetupReader.h"
#include "setup/SetupWriter.h"

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
    struct Case {
        const char* why;
        Chain before;
        ModuleKind placed;
        std::size_t place;
        Chain after;
    };
    const std::vector<Case> cases{
        {"the first module", {}, Master, 0, {Master}},
        {"a master comes first in a file without one", {Slave, Mcr}, Master, 9, {Master, Slave, Mcr}},
        {"behind the master", {Master, Slave}, Mcr, 1, {Master, Mcr, Slave}},
        {"never before the master", {Master, Slave}, Mcr, 0, {Master, Mcr, Slave}},
        {"at the end", {Master, Slave}, Mcr, 2, {Master, Slave, Mcr}},
        {"moved left", {Master, Slave, Mcr, Iccr}, Iccr, 1, {Master, Iccr, Slave, Mcr}},
        {"moved right", {Master, Slave, Mcr, Iccr}, Slave, 3, {Master, Mcr, Iccr, Slave}},
        {"moved to where it is", {Master, Slave, Mcr, Iccr}, Mcr, 2, {Master, Slave, Mcr, Iccr}},
    };
    for (const Case& row : cases)
        EXPECT_EQ(MainChain(PlaceModule(Document(row.before), row.placed, row.place).Modules), row.after)
            << row.why;
}

TEST(LayoutCommands, DropOnAButtonMeansBeforeOrAfterIt)
{
    const ModuleList modules = Document({Master, Slave, Mcr}).Modules;
    EXPECT_EQ(PlaceOfHit({StripButton::Master, false}, Iccr, modules), 1U)
        << "nothing goes before the master";
    EXPECT_EQ(PlaceOfHit({StripButton::Master, true}, Iccr, modules), 1U);
    EXPECT_EQ(PlaceOfHit({StripButton::MCR, false}, Iccr, modules), 2U);
    EXPECT_EQ(PlaceOfHit({StripButton::MCR, true}, Iccr, modules), 3U);
    EXPECT_EQ(PlaceOfHit({StripButton::MCR, true}, Slave, modules), 2U) << "the moved one does not count";
}

TEST(LayoutCommands, PointerStaysBetweenTheOuterButtons)
{
    const auto strip = LayOutStrip(Document({Master, Mcr, Iccr}).Modules);
    // 20 + 2940, 20 + 675, 20 + 1140: the last twip of the chip card unit is 4814.
    EXPECT_EQ(ClampToStrip(-500, strip), 20);
    EXPECT_EQ(ClampToStrip(3000, strip), 3000);
    EXPECT_EQ(ClampToStrip(9000, strip), 4814);
    EXPECT_EQ(ClampToStrip(9000, {}), 9000);
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
    EXPECT_EQ(ReadMasterOptions(Document({Mcr})), std::nullopt);
}

// One random command, as the menu would allow it.
SetupDocument RandomStep(const SetupDocument& document, std::mt19937& random)
{
    constexpr std::array Kinds{Master, Slave, Mcr, Iccr};
    const ModuleKind kind = Kinds.at(random() % Kinds.size());
    const auto index = FindModule(document.Modules, kind);
    const LayoutState state = LayoutStateOf(document.Modules);
    if (!index)
        return state.addMaster == (kind == Master) ? PlaceModule(document, kind, random() % 5) : document;
    switch (random() % 8) {
        case 0:
            return Delete(document, *ButtonOf(kind));
        case 1:
        case 2:
            return state.move ? PlaceModule(document, kind, random() % 5) : document;
        case 3:
            return WithOptions(document, McrOptions{static_cast<std::uint8_t>(1 + random() % 3),
                                                    {static_cast<char>('!' + random() % 64), '^', ';'},
                                                    random() % 2 == 0});
        case 4:
            return WithOptions(document, MasterOptions{random() % 2 == 0, random() % 2 == 0});
        default:
            break;
    }
    SetupDocument changed = document;
    ModuleRecord& record = changed.Modules[*index];
    const int position = 1 + static_cast<int>(random() % (record.KeyMap.size()));
    const unsigned mask = AllowedKeyTypes(position, record.Columns, record.KeyMap);
    const unsigned type = random() % 4;
    if (kind != Mcr && (mask >> type & 1U) != 0)
        SetKeyType(position, static_cast<char>('1' + type), record.Columns, record.KeyMap);
    return changed;
}

TEST(LayoutCommands, AnySequenceKeepsTheSetupWholeAndSavable)
{
    std::mt19937 random(20);
    SetupDocument document;
    for (int step = 0; step < 4000; ++step) {
        document = RandomStep(document, random);
        ASSERT_FALSE(HasRepeatedKind(document.Modules)) << step;
        ASSERT_EQ(document.DeviceMap.size(), document.Modules.size()) << step;
        for (std::size_t i = 0; i < document.Modules.size(); ++i) {
            ASSERT_EQ(document.Modules[i].Position, i) << step;
            ASSERT_EQ(static_cast<std::uint8_t>(document.DeviceMap[i]), document.Modules[i].DeviceCode)
                << step;
        }
        if (!document.Modules.empty()) {
            ASSERT_EQ(document.Modules.front().Kind, Master) << step;
        }
        ASSERT_EQ(ReadSetup(WriteSetup(document.Modules)), document) << step;
    }
}

}  // namespace
}  // namespace kelvora
