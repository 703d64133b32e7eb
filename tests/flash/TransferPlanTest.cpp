#include "flash/TransferPlan.h"

#include <gmock/gmock.h>

#include "flash/Images.h"

namespace kelvora {
namespace {

using namespace testing;

SetupDocument SetupOf(std::string_view codes)
{
    return ReadDeviceMap(std::string(codes));
}

TEST(TransferPlan, IsForALineOfTheSameMainModulesAlone)
{
    using Reason = TransferRefusal::Reason;
    const FlashDump chain{ImageOf(WholeChain), {}};
    const FlashDump fresh{Filled(0xFF), {DeviceMapDump{"", std::string(WholeChain)}}};
    const FlashDump strayed{ImageOf("\xBF\x03"), {DeviceMapDump{"", std::string(WholeChain)}}};
    SetupDocument twice = SetupOf(WholeChain);
    AppendModule(twice, 8);
    const auto check = [&](const char* why, const WantedContent& wanted, std::string_view line,
                           std::optional<Reason> refused, int position) {
        const auto refusal = RefusalFor(wanted, line);
        EXPECT_EQ(refusal.has_value(), refused.has_value()) << why;
        if (refusal && refused) {
            EXPECT_EQ(refusal->reason, *refused) << why;
            EXPECT_EQ(refusal->position, position) << why;
            // What no line can mend is told without one.
            const bool isOfLine =
                refusal->reason == Reason::OtherModules || refusal->reason == Reason::UnknownModule;
            EXPECT_EQ(RefusalFor(wanted), isOfLine ? std::nullopt : refusal) << why;
        }
    };
    check("the same", SetupOf(WholeChain), WholeChain, {}, 0);
    check("other tracks, other backlight, a part less", SetupOf(WholeChain), "\xD6\x1F\xBF\x01\x08", {}, 0);
    check("another order", SetupOf("\xBF\x03"), "\x03\xBF", Reason::OtherModules, 0);
    check("a module less", SetupOf("\xBF\x03"), "\xBF", Reason::OtherModules, 0);
    check("an unknown one, third on the line", SetupOf("\xBF\x03"), "\xBF\x03\xFF", Reason::UnknownModule, 2);
    check("an unknown one in both", SetupOf("\xBF\xFF"), "\xBF\xFF", Reason::NotBuilt, 0);
    check("a kind twice", twice, WholeChain, Reason::NotBuilt, 0);
    check("an empty setup", SetupDocument{}, WholeChain, Reason::NoModules, 0);
    check("no devices", SetupDocument{}, "", Reason::NoModules, 0);
    check("a dump of that line", chain, WholeChain, {}, 0);
    check("a dump of another line", chain, "\xBF\x03", Reason::OtherModules, 0);
    check("a dump of a device that was never set up, by its line", fresh, WholeChain, {}, 0);
    check("the same, of another line", fresh, "\xBF", Reason::OtherModules, 0);
    check("a backup whose image names another line, for its own", strayed, WholeChain, {}, 0);
    check("the same, for the one that it names", strayed, "\xBF\x03", {}, 0);
    check("the same, for a third", strayed, "\xBF", Reason::OtherModules, 0);
    check("a dump that names nothing", FlashDump{Filled(0xFF), {}}, WholeChain, Reason::NoModules, 0);
    check("the same, with the user's word", FlashDump{Filled(0xFF), {}, true}, WholeChain, {}, 0);
    check("the user's word against what the dump names", FlashDump{ImageOf("\xBF"), {}, true}, WholeChain,
          Reason::OtherModules, 0);
    check("the same with zeros", FlashDump{Filled(0), {}}, WholeChain, Reason::NoModules, 0);
}

TEST(TransferPlan, SaysOnceWhatChanges)
{
    using What = SetupDifference::What;
    using enum ModuleKind;
    // A device set up for another line, whose reader and tables move: the setups say what the images cannot.
    SetupDocument wanted = SetupOf("\xD6\x1F\x01\xBF\x08");
    Module(wanted, MCR).Options = "1,2  ;^^OFF";
    for (const ModuleKind kind : {KM096, KM064, ICCR})
        Module(wanted, kind).KeyMap[0] = '0';
    FlashImage image = Built(SetupOf("\xD6\x17\xBF\x08\x03"), Filled(0xFF));
    const auto changes = [&] {
        std::vector<std::pair<What, ModuleKind>> told;
        for (const auto& change : PlanTransfer(wanted, wanted.DeviceMap, image).setupChanges)
            told.emplace_back(change.what, change.kind);
        return told;
    };
    EXPECT_THAT(changes(),
                ElementsAre(Pair(What::Order, None), Pair(What::Tracks, MCR), Pair(What::Autoread, MCR),
                            Pair(What::Key, KM064), Pair(What::Key, ICCR)));
    image[448] = image[449] = 0xFF;  // a key of the KM064, whose map is then not known
    EXPECT_THAT(changes(), ElementsAre(Pair(What::Order, None), Pair(What::Tracks, MCR),
                                       Pair(What::Autoread, MCR), Pair(What::Key, ICCR)));
    image = ImageOf("\xBF\xBF");  // which no setup has
    EXPECT_THAT(changes(), IsEmpty());

    // Tracks are in a device code, which the image has.
    image = Built(SetupOf("\xBF\x03"), Filled(0xFF));
    wanted = SetupOf("\xBF\x01");
    Module(wanted, MCR).Options = "1,2  ^^^OFF";
    EXPECT_THAT(changes(), IsEmpty());

    // Keys that were never written have no type that would change.
    Module(wanted, KM064).KeyMap[0] = '0';
    image = Filled(0xFF);
    EXPECT_THAT(changes(), Not(Contains(Pair(What::Key, KM064))));
    const TransferPlan first = PlanTransfer(wanted, wanted.DeviceMap, image);
    EXPECT_FALSE(first.ChangesNothing());
    EXPECT_TRUE(PlanTransfer(wanted, wanted.DeviceMap, first.wanted).ChangesNothing());
}

TEST(TransferPlan, CountsTheKeyContentsThatADumpWouldErase)
{
    FlashImage held = ImageOf(WholeChain);
    for (const std::size_t address : {1024U, 1026U, 1027U, 3000U, 8191U})
        held[address] = 0;
    FlashDump dump{held, {}};
    EXPECT_FALSE(PlanTransfer(dump, std::string(WholeChain), held).TakesContents());
    dump.image = ImageOf(WholeChain);
    EXPECT_EQ(PlanTransfer(dump, std::string(WholeChain), held).contentsLost, 3U);
    dump.image[3000] = 1;
    EXPECT_EQ(PlanTransfer(dump, std::string(WholeChain), held).contentsLost, 2U)
        << "another content is no loss";
    EXPECT_EQ(PlanTransfer(FlashDump{held, {}}, std::string(WholeChain), dump.image).contentsLost, 0U);
    // A setup's own dump is no copy of a device, whatever it holds; a download keeps the contents.
    dump = {held, {{}, DumpKind::Setup, {}, {}}};
    EXPECT_TRUE(PlanTransfer(dump, std::string(WholeChain), held).TakesContents());
    EXPECT_FALSE(PlanTransfer(SetupOf(WholeChain), std::string(WholeChain), held).TakesContents());
}

}  // namespace
}  // namespace kelvora
