#include "flash/TransferTexts.h"

#include <gmock/gmock.h>

#include "comms/Reply.h"

namespace kelvora {
namespace {

using namespace testing;
using State = TransferResult::State;

TEST(TransferTexts, TellWhatTheDeviceHoldsAndWhy)
{
    const LineResult done;
    LineResult unreleased;
    unreleased.warnings = {{LineWarning::Step::NotReleased, {}}};
    const LineResult stopped{LineOutcome::Stopped, {}, {}, {}};
    const LineResult dead{
        LineOutcome::Failed, {PortFailure::None, ReplyErrorNumber::GaveUp, {}, {}, "0FB3"}, {}, {}};
    const TransferRefusal other{TransferRefusal::Reason::OtherModules, 0, {}, "\xBF\x55", "\xD6\x17\x04\x03"};
    using enum BoxIcon;
    using enum TransferResult::Reason;
    const auto check = [&](State state, TransferResult::Reason reason, bool isRestore, const LineResult& line,
                           BoxIcon icon, const char* text, const std::string& extra) {
        TransferResult result{
            isRestore, state, reason, line, other, {}, "/backups/a.mem", "No space left on device", {}};
        if (isRestore)
            result.plan.emplace().unheld = {{UnheldSetting::What::Key, ModuleKind::KM096, 7, '1'}};
        const OutcomeText outcome = DescribeTransfer(MessageCatalogue(), {1, "9600,n,8,1", 0}, result);
        EXPECT_THAT(outcome.text, HasSubstr(text));
        EXPECT_EQ(outcome.extra, extra) << text;
        EXPECT_EQ(outcome.icon, icon) << text;
    };
    const std::string kept = "The image that the device held before is kept in:\r\n/backups/a.mem";
    const std::string unheld =
        "The device cannot hold this; it is left out:\r\nComposite Keyboard, Key 7: the "
        "keyboard cannot hold this key type: single key";
    const std::string held =
        "The terminal did not confirm that it uses its devices again. If they stay dead, "
        "restart it.";
    const std::string silent =
        "The terminal does not answer. Check that it is on, its cable, the port and the speed, "
        "then try again.\r\nCOM1: 9600,n,8,1\r\n0FB3";
    check(State::New, Done, false, done, Information, "download is done", kept);
    check(State::New, Done, false, unreleased, Exclamation, "download is done", held + "\r\n" + kept);
    check(State::New, Done, true, done, Information, "dump is restored", unheld + "\r\n" + kept);
    check(State::Same, Done, false, done, Information, "holds this image already", "");
    check(State::Old, Declined, false, done, Information, "was not changed", "The answer was no.");
    check(State::Old, Declined, false, unreleased, Exclamation, "was not changed",
          "The answer was no.\r\n" + held);
    check(State::Old, Line, false, stopped, Information, "was not changed", "The work was stopped.");
    check(State::Old, Line, true, dead, Exclamation, "was not changed", silent);
    check(State::Unknown, Line, false, dead, Critical, "run Verify", silent + "\r\n" + kept);
    check(State::Unknown, Line, true, dead, Critical, "restore it again", silent + "\r\n" + kept);
    check(State::New, Line, false, dead, Exclamation, "download is done",
          "The image is safe in the device. What failed came after it:\r\n" + silent + "\r\n" + kept);
    check(State::Old, NotKept, false, done, Exclamation, "was not changed",
          "The backup of the device's image cannot be written; nothing is sent without it. Check folder and "
          "disk."
          "\r\n/backups/a.mem: No space left on device");
    check(State::Foreign, DeviceChanged, false, done, Exclamation, "Nothing was",
          "The device's flash memory changed while you were asked. Look at the changes anew, then decide.");
    check(State::Old, Refused, false, done, Exclamation, "was not changed",
          "The line has other modules, or has them in another order. Nothing is written. Scan the line to "
          "see them."
          "\r\nOn the line: Slave Keyboard, 85\r\nWanted there: Composite Keyboard, MCR");
}

TEST(TransferTexts, WhatWeighsMostIsToldFirst)
{
    using What = ImageDifference::What;
    const auto key = [](ModuleKind kind, std::size_t address, int number) {
        return ImageDifference{What::Key, address, address + 1, 2, kind, number, '1', '0'};
    };
    TransferPlan plan;
    plan.deviceMap = "\xD6\x17\x04\xBF\x03";
    plan.setupChanges = {{SetupDifference::What::Key, ModuleKind::KM096, 1, 7, 7, "1", "0"}};
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
                            HasSubstr("Keyboard, Key 7:"), HasSubstr("Keyboard, Key 12:"),
                            HasSubstr("Slave Keyboard, Key 97:"), HasSubstr("fiscal keyboard"),
                            HasSubstr("track 1: # (23) -> none"),
                            HasSubstr("position 2: Backlight yes -> Backlight no"), "Bytes 0002"));
    EXPECT_EQ(JoinLines(MessageCatalogue(), {"a", "b", "c"}, 2), "\r\na\r\nb\r\nMore differences: 1");
    EXPECT_EQ(JoinLines(MessageCatalogue(), {"a", "b"}, 2), "\r\na\r\nb");
    EXPECT_EQ(ContentsText(MessageCatalogue(), plan), "");
    EXPECT_THAT(TakingQuestion(MessageCatalogue(), plan), StartsWith("What a setup makes is no copy"));
    plan.contentsLost = 1;
    EXPECT_THAT(ContentsText(MessageCatalogue(), plan), EndsWith("that the device loses: 1"));
    EXPECT_THAT(TakingQuestion(MessageCatalogue(), plan), StartsWith("Take this from the device"));
    plan.isOfSetup = true;
    EXPECT_THAT(ContentsText(MessageCatalogue(), plan), StartsWith("This dump was made from a setup. "));
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
