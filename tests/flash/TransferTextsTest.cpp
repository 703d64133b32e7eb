#include "flash/TransferTexts.h"

#include <gmock/gmock.h>

#include "comms/Reply.h"

namespace kelvora {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using State = TransferResult::State;

TEST(TransferTexts, TellWhatTheDeviceHoldsAndWhy)
{
    const LineResult done;
    LineResult held;
    held.warnings = {{LineWarning::Step::NotReleased, {}}};
    const LineResult stopped{LineOutcome::Stopped, {}, {}, {}};
    const LineResult dead{
        LineOutcome::Failed, {PortFailure::None, ReplyErrorNumber::GaveUp, {}, {}, "0FB3"}, {}, {}};
    const TransferRefusal other{TransferRefusal::Reason::OtherModules, 0, {}, "\xBF\x55", "\xD6\x17\x04\x03"};
    using enum BoxIcon;
    using enum TransferResult::Reason;
    const auto check = [&](State state, TransferResult::Reason reason, bool isRestore, const LineResult& line,
                           BoxIcon icon, const char* text, const char* extra) {
        TransferResult result{
            isRestore, state, reason, line, other, {}, "/backups/a.mem", "No space left on device", {}};
        if (isRestore)
            result.plan.emplace().unheld = {{UnheldSetting::What::Key, ModuleKind::KM096, 7, '1'}};
        const OutcomeText outcome = DescribeTransfer(MessageCatalogue(), {1, "9600,n,8,1", 0}, result);
        EXPECT_THAT(outcome.text, HasSubstr(text));
        EXPECT_THAT(outcome.extra, HasSubstr(extra));
        EXPECT_EQ(outcome.extra.empty(), *extra == '\0') << outcome.extra;
        EXPECT_EQ(outcome.icon, icon) << text;
    };
    check(State::New, Done, false, done, Information, "download is done", "in:\r\n/backups/a.mem");
    check(State::New, Done, true, done, Information, "dump is restored",
          "it is left out:\r\nComposite Keyboard, Key 7");
    check(State::Same, Done, false, done, Information, "holds this image already", "");
    check(State::Old, Declined, false, done, Information, "was not changed", "answer was no");
    check(State::Old, Declined, false, held, Exclamation, "was not changed", "did not confirm");
    check(State::Old, Line, false, stopped, Information, "was not changed", "was stopped");
    check(State::Old, Line, false, dead, Exclamation, "was not changed", "COM1: 9600,n,8,1\r\n0FB3");
    check(State::Unknown, Line, false, dead, Critical, "run Verify", "does not answer");
    check(State::Unknown, Line, true, dead, Critical, "restore it again", "does not answer");
    check(State::New, Line, false, dead, Exclamation, "download is done", "What failed came after it");
    check(State::Old, NotKept, false, done, Exclamation, "was not changed", "No space left on device");
    check(State::Foreign, DeviceChanged, false, done, Exclamation, "Nothing was", "changed while");
    check(State::Old, Refused, false, done, Exclamation, "was not changed",
          "On the line: Slave Keyboard, 85\r\nWanted there: Composite Keyboard, MCR");
}

TEST(TransferTexts, WhatWeighsMostIsToldFirst)
{
    using What = ImageDifference::What;
    const auto key = [](ModuleKind kind, std::size_t address, int number) {
        return ImageDifference{What::Key, address, address + 1, 2, kind, number, '1', '0'};
    };
    TransferPlan plan;
    plan.deviceMap = "\xD6\x17\x04\xBF\x03";
    plan.imageChanges = {{What::Bytes, 2, 2, {}, ModuleKind::None, 0, 0, 0},
                         {What::Fiscal, 6, 6, 0, ModuleKind::KM096, 0, '1', '0'},
                         {What::Module, 130, 130, 1, ModuleKind::None, 2, 23, 31},
                         {What::Module, 138, 138, 1, ModuleKind::None, 6, 8, 0},
                         key(ModuleKind::KM064, 480, 97),
                         key(ModuleKind::KM096, 256, 12),
                         key(ModuleKind::KM096, 258, 2),
                         {What::Separator, 1024, 1024, 3, ModuleKind::MCR, 1, '#', 0}};
    EXPECT_THAT(ChangeLines(MessageCatalogue(), plan),
                ElementsAre(HasSubstr("position 6: ICCR 8 -> none"), HasSubstr("Keyboard, Key 2:"),
                            HasSubstr("Keyboard, Key 12:"), HasSubstr("Slave Keyboard, Key 97:"),
                            HasSubstr("fiscal keyboard"), HasSubstr("track 1: # (23) -> none"),
                            HasSubstr("position 2: Backlight yes -> Backlight no"), "Bytes 0002"));
    EXPECT_EQ(JoinLines(MessageCatalogue(), {"a", "b", "c"}, 2), "\r\na\r\nb\r\nMore differences: 1");
    EXPECT_EQ(ContentsText(MessageCatalogue(), plan), "");
    plan.contentsLost = 12;
    EXPECT_THAT(ContentsText(MessageCatalogue(), plan), testing::EndsWith("that the device loses: 12"));
    plan.isOfSetup = true;
    EXPECT_THAT(ContentsText(MessageCatalogue(), plan),
                testing::StartsWith("This dump was made from a setup. "));
}

TEST(TransferTexts, ADumpSaysWhereItIsFromAndWhetherTheLineIsAnother)
{
    const MessageCatalogue english;
    const FlashDump dump{{}, {{{"COM1, 2026-03-09 07:05:00", "\xBF"}}, DumpKind::Device, "TILL 7", {}}};
    const std::string told = "device, TILL 7, COM1, 2026-03-09 07:05:00";
    EXPECT_EQ(DumpText(english, dump, "TILL 7"), told);
    EXPECT_EQ(DumpText(english, dump, "TILL 8"), told + "\r\nOn the line: TILL 8");
    EXPECT_EQ(DumpText(english, FlashDump{}, "TILL 8"), "");
}

}  // namespace
}  // namespace kelvora
