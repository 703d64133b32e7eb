#include "flash/FlashTransfer.h"

#include <gmock/gmock.h>

#include "comms/Crc.h"
#include "fakes/BenchLine.h"
#include "fakes/FakeFiles.h"
#include "flash/Backups.h"
#include "flash/Images.h"
#include "flash/TakeFromImage.h"
#include "platform/NumberText.h"

namespace kelvora {
namespace {

using Reason = TransferResult::Reason;
using State = TransferResult::State;
using std::chrono::milliseconds;

// A simulated line to download into, with what the user answers and what was kept.
struct TransferLine {
    TransferLine()
    {
        bench.link.watcher = [this](const LineTraffic& traffic) {
            if (traffic.direction != LineTraffic::Direction::Sent)
                return;
            sent.push_back(std::string(traffic.bytes.substr(5, traffic.bytes.size() - 10)));
            if (onSent)
                onSent(sent.back());
        };
    }

    FlashImage Flash() const { return *ImageFrom(bench.Flash()); }

    /// The setup of the line as it is.
    auto Setup() const { return TakeFromImage(ReadDeviceMap(std::string(WholeChain)), Flash()).document; }

    /// That setup with two keys in blocks of their own, and an option, as they are not in the device.
    SetupDocument OtherSetup() const
    {
        SetupDocument document = Setup();
        Module(document, ModuleKind::KM096).KeyMap[1] = '0';
        Module(document, ModuleKind::KM064).KeyMap[7] = '0';
        Module(document, ModuleKind::MCR).Options[5] = ';';
        return document;
    }

    TransferResult Run(const WantedContent& wanted)
    {
        const auto keep = [this](const TransferPlan& plan) {
            return backups.Keep({1, plan.deviceMap, plan.terminal, plan.held});
        };
        const auto ask = [this](const TransferPlan& plan, const std::string& /*backup*/) {
            asked.push_back(plan);
            sent.push_back("?");
            EXPECT_FALSE(bench.port.IsOpen()) << "the line is held while the user thinks";
            if (whileAsked)
                whileAsked();
            return answer;
        };
        TransferResult result = Download(comms, {1, "9600,n,8,1", 0}, hooks, wanted, {keep, ask});
        EXPECT_FALSE(bench.port.IsOpen());
        return result;
    }

    FakeEventLoop loop;
    BenchLine bench{loop, {.isPaced = false}};
    Comms comms{loop, {&bench.link, nullptr, nullptr, nullptr}};
    LineHooks hooks;
    FakeFiles files;
    Backups backups{files, "/backups", [] { return std::chrono::local_seconds(std::chrono::seconds(0)); }};
    TransferAnswer answer = TransferAnswer::Yes;
    std::function<void()> whileAsked;
    std::vector<TransferPlan> asked;
    std::vector<std::string> sent;  ///< commands, repeated ones again
    std::function<void(const std::string& command)> onSent;
};

// The commands that a download sends, without the repeated blocks and without data.
std::string CommandsOf(TransferLine& line, const WantedContent& wanted)
{
    line.sent.clear();
    line.Run(wanted);
    std::string commands;
    for (const std::string& command : line.sent)
        if (command != "20" || !commands.ends_with("20 "))
            commands += (command.size() > 20 ? command.substr(0, 8) : command) + " ";
    return commands;
}

TEST(FlashTransfer, StagesTheBlocksThatDifferAndCommitsOnce)
{
    TransferLine line;
    const FlashImage before = line.Flash();
    FlashDump dump{before, {}};
    dump.image[0] ^= 1;
    dump.image[8191] ^= 1;
    const std::string crc = HexText(Crc32(TextOf(dump.image)), 8);
    EXPECT_EQ(CommandsOf(line, dump),
              "$9900 $9918 $9902 000 0FB0 20 0F02 0FB1 0FB3 $9911 $9904!3 ? "
              "$9918 0F02 0FB0 0FB10000 0FB11FC0 0FB1 0FB3" +
                  crc + " $9911 $9904!3 ");
    EXPECT_EQ(line.Flash(), dump.image);
    EXPECT_EQ(CommandsOf(line, dump), "$9900 $9918 $9902 000 0FB0 20 0F02 0FB1 0FB3 $9911 $9904!3 ");
}

TEST(FlashTransfer, ARefusalLeavesTheLineAsItWasFound)
{
    TransferLine line;
    EXPECT_EQ(CommandsOf(line, ReadDeviceMap("\xBF\x03")), "$9900 $9918 $9902 $9911 $9904!3 ");
    EXPECT_EQ(CommandsOf(line, SetupDocument{}), "") << "for no line at all";
    line.whileAsked = [&line] { line.bench.line.Terminal().AnswerNext("0F02", "M0F02!0(00000000"); };
    EXPECT_THAT(CommandsOf(line, line.OtherSetup()), testing::EndsWith("? $9918 0F02 $9911 $9904!3 "));
    // A stop right after the answer: what the terminal did not confirm before is still owed to it.
    line.whileAsked = [&line] { line.hooks.stopRequested = [] { return true; }; };
    line.bench.line.Terminal().AnswerNext("$9911", "Ebusy");
    EXPECT_THAT(CommandsOf(line, line.OtherSetup()), testing::EndsWith("? $9911 "));
}

TEST(FlashTransfer, ASetupIsBroughtIntoTheDeviceAfterABackupAndAQuestion)
{
    TransferLine line;
    const FlashImage before = line.Flash();
    std::vector<LineProgress> progress;
    line.hooks.progress = [&](const LineProgress& step) { progress.push_back(step); };
    const SetupDocument setup = line.OtherSetup();
    const TransferResult result = line.Run(setup);
    EXPECT_EQ(result.state, State::New);
    EXPECT_EQ(result.reason, Reason::Done);
    EXPECT_EQ(result.image, line.Flash());
    EXPECT_EQ(line.Setup(), setup);
    EXPECT_EQ(line.backups.Read(result.backup).image, before);
    EXPECT_FALSE(result.line.terminalName.empty());
    EXPECT_EQ(line.backups.Read(result.backup).head.terminal, result.line.terminalName);
    EXPECT_EQ(progress.front().done, 0U);
    EXPECT_EQ(progress.back().done, 3 * 64U);
    EXPECT_EQ(progress.back().total, 3 * 64U);

    const TransferResult again = line.Run(setup);
    EXPECT_EQ(again.state, State::Same);
    EXPECT_EQ(line.asked.size(), 1U);
    EXPECT_EQ(line.files.content.size(), 1U);
}

// What ends a download, and what is then said. Nothing but a commit changes the device.
TEST(FlashTransfer, EveryEndIsTold)
{
    using Prepare = std::function<void(TransferLine&)>;
    const auto answers = [](const char* name, const char* body) -> Prepare {
        return [=](TransferLine& line) {
            line.whileAsked = [&line, name, body] { line.bench.line.Terminal().AnswerNext(name, body); };
        };
    };
    const auto says = [](TransferAnswer answer) -> Prepare {
        return [=](TransferLine& line) { line.answer = answer; };
    };
    // The commit or its answer is lost, and the line is silent for a while.
    const auto silent = [](const bench::LineCut& cut) -> Prepare {
        return [=](TransferLine& line) {
            line.whileAsked = [&line, cut] {
                line.bench.line.SetFaults({.silentAfter = cut});
                line.loop.After(milliseconds(4500), [&line] { line.bench.line.SetFaults({}); });
            };
        };
    };
    const Prepare unkept = [](TransferLine& line) { line.files.unwritable.insert("/backups"); };
    const Prepare gone = [](TransferLine& line) {
        line.whileAsked = [&line] { line.bench.port.refusal = PortFailure::Missing; };
    };
    const Prepare meaningless = [&](TransferLine& line) {
        answers("0FB3", "M0FB3")(line);
        line.onSent = [&line](const std::string& command) {
            if (command.size() == 12 && command.starts_with("0FB3"))
                line.bench.line.Terminal().AnswerNext("0F02", "M0F02!0(00000000");
        };
    };
    // The commit or its answer is lost with the port, which is away for so long.
    const auto away = [](const bench::LineCut& cut, int time) -> Prepare {
        return [=](TransferLine& line) {
            line.onSent = [&line, cut, time](const std::string& command) {
                if (command.size() != 12 || !command.starts_with("0FB3"))
                    return;
                line.bench.line.SetFaults({.awayAfter = cut});
                line.loop.After(milliseconds(time), [&line] { line.bench.line.SetFaults({}); });
            };
        };
    };
    using enum TransferResult::Reason;
    const auto check = [&](const char* why, const Prepare& prepare, State state, Reason reason,
                           bool isAsked = true, bool warns = false) {
        SCOPED_TRACE(why);
        TransferLine line;
        const FlashImage before = line.Flash();
        const SetupDocument setup = line.OtherSetup();
        prepare(line);
        const TransferResult result = line.Run(setup);
        EXPECT_EQ(result.state, state) << result.line.failure.detail;
        EXPECT_EQ(result.reason, reason);
        EXPECT_EQ(!line.asked.empty(), isAsked);
        EXPECT_EQ(line.Flash(), state == State::New ? Built(setup, before) : before);
        EXPECT_EQ(result.image.has_value(), state != State::Unknown && reason != DeviceChanged);
        EXPECT_EQ(result.line.warnings.empty(), !warns);
        if (state == State::New && !warns)
            EXPECT_EQ(line.sent.back(), "$9904!3");
        // After the reading, and once more where it was held again.
        const int releases = isAsked && line.sent.back() != "?" ? 2 : 1;
        EXPECT_TRUE(warns || std::ranges::count(line.sent, "$9911") == releases) << "the line stays held";
    };
    check("answered No", says(TransferAnswer::No), State::Old, Declined);
    check("answered No for the contents", says(TransferAnswer::KeepContents), State::Old, ContentsKept);
    check("no backup", unkept, State::Old, NotKept, false);
    check("the port is gone after the question", gone, State::Old, Line);
    check("another CRC after that", answers("0F02", "M0F02!0(00000000"), State::Foreign, DeviceChanged);
    check("a block is refused", answers("0FB1", "M0FB1!2"), State::Old, Line);
    check("the commit is refused", answers("0FB3", "M0FB3!2"), State::Old, Line);
    check("a commit without a meaning, and a third image", meaningless, State::Unknown, Line);
    check("the commit is lost, then the terminal answers", silent({320, {}}), State::Old, Line);
    check("the commit's answer is lost, then the terminal answers", silent({{}, 145}), State::New, Done);
    check("the commit is lost with the port", away({0, {}}, 2500), State::Old, Line);
    check("its answer is lost with the port", away({{}, 0}, 4750), State::New, Done);
    check("the port is away for too long", away({0, {}}, 5250), State::Unknown, Line, true, true);
    check("the line fails behind the commit: a warning", answers("$9911", "Ebusy"), State::New, Done, true,
          true);
}

TEST(FlashTransfer, VerifyTellsWhatDiffers)
{
    TransferLine line;
    const LineTarget target{1, "9600,n,8,1", 0};
    const FlashImage scanned = line.Flash();
    const SetupDocument setup = line.Setup();
    EXPECT_EQ(Verify(line.comms, target, {}, setup, &scanned).outcome, VerifyResult::Outcome::Same);
    EXPECT_EQ(Verify(line.comms, target, {}, setup, nullptr).outcome, VerifyResult::Outcome::Same);

    const VerifyResult other = Verify(line.comms, target, {}, line.OtherSetup(), nullptr);
    EXPECT_EQ(other.outcome, VerifyResult::Outcome::Different);
    EXPECT_EQ(other.firstDifference, 0x111) << "the code of key 2, at contact a2";
    EXPECT_EQ(other.differences.size(), 3U);

    FlashImage changed = scanned;
    changed[200] ^= 1;
    changed[0x1A00] ^= 1;
    const VerifyResult contents = Verify(line.comms, target, {}, setup, &changed);
    EXPECT_EQ(contents.firstDifference, 0x1A00) << "what stands outside of the regions does not count";
    EXPECT_EQ(contents.differences.size(), 1U);

    line.bench.port.refusal = PortFailure::InUse;
    EXPECT_EQ(Verify(line.comms, target, {}, setup, &scanned).outcome, VerifyResult::Outcome::NotRead);
    SetupDocument twice = setup;
    ASSERT_TRUE(AppendModule(twice, 191));
    EXPECT_EQ(Verify(line.comms, target, {}, twice, &scanned).outcome, VerifyResult::Outcome::NotBuilt);
}

// A line that is cut at any byte of the commit, which are the last frames but three: what the program says of
// the device is true. The simulation cuts the line elsewhere.
TEST(FlashTransfer, ACutLineLeavesTheDeviceOldOrNewAndTheTruthIsTold)
{
    TransferLine whole;
    whole.whileAsked = [&] { whole.bench.line.SetFaults({}); };
    ASSERT_EQ(whole.Run(whole.OtherSetup()).state, State::New);
    for (const bool isToHost : {false, true}) {
        const std::uint64_t bytes = whole.bench.line.Faults().Passed(isToHost ? bench::Direction::ToHost
                                                                              : bench::Direction::ToDevice);
        std::array<int, 5> seen{};
        for (std::uint64_t cut = bytes - 120; cut < bytes; ++cut) {
            bench::FaultPlan faults;
            bench::LineCut& how = cut % 2 == 1 ? faults.awayAfter : faults.silentAfter;
            (isToHost ? how.toHost : how.toDevice) = cut;
            TransferLine line;
            const FlashImage before = line.Flash();
            const SetupDocument setup = line.OtherSetup();
            line.whileAsked = [&] { line.bench.line.SetFaults(faults); };
            const TransferResult result = line.Run(setup);
            const bool isOld = line.Flash() == before;
            ASSERT_TRUE(isOld || line.Flash() == Built(setup, before)) << cut;
            ASSERT_NE(result.state, isOld ? State::New : State::Old) << cut;
            ASSERT_TRUE(!result.image || *result.image == line.Flash()) << cut;
            ++seen.at(static_cast<std::size_t>(result.state));
        }
        // It is unknown only within the commit and its answer: the two frames are 22 and 17 bytes.
        EXPECT_EQ(seen.at(static_cast<std::size_t>(State::Unknown)), isToHost ? 17 : 22);
        EXPECT_GT(seen.at(static_cast<std::size_t>(State::Old)), 10);
        EXPECT_GT(seen.at(static_cast<std::size_t>(State::New)), 10);
    }
}

}  // namespace
}  // namespace kelvora
