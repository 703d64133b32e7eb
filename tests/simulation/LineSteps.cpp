// What a person does with a till from a window, as layout/forms/FlashForms and frmConfigScan do it.
#include <algorithm>

#include "flash/Backups.h"
#include "flash/TransferTexts.h"
#include "layout/FlashTools.h"
#include "layout/LineScan.h"
#include "layout/ScanTexts.h"
#include "simulation/Session.h"

namespace kelvora::simulation {

namespace {

bool IsReleaseTold(const LineWarnings& warnings)
{
    return std::ranges::any_of(
        warnings, [](const LineWarning& warning) { return warning.step == LineWarning::Step::NotReleased; });
}

}  // namespace

Rules::Work Session::BeginWork(int port)
{
    return {.till = *world_.tills.at(static_cast<std::size_t>(port) - 1),
            .start = world_.loop.Worked(),
            .isSound = world_.disk.faults.AreNone()};
}

void Session::Stop(Rules::Work& work, RunningOperation& running)
{
    if (!running.IsWorking())
        return;
    running.AskToStop();
    work.stop = work.stop.value_or(world_.loop.Worked());
}

// While it runs the user may want it to stop, something else may happen, and nothing but what it wants may
// come into the till.
void Session::WaitIn(Rules::Work& work, RunningOperation& running)
{
    world_.onCommit = [this, &work](Till& till) {
        Require(&till == &work.till, Rule::Flash, "another till was written");
        rules_.JudgeCommit(work);
    };
    Random& chance = world_.meanwhile;
    // A stop that comes with the commit is among the rarest, and the most harmful.
    const bool stopsCommit = chance.Once(8);
    work.till.line.onCommand = [this, &work, &running, stopsCommit](std::string_view command) {
        constexpr std::string_view Close = "0FB3";
        work.isHolding = work.isHolding || command == "$9918";
        work.isCommitting =
            work.isCommitting || (command.starts_with(Close) && command.size() > Close.size());
        if (stopsCommit && work.isCommitting)
            Stop(work, running);
    };
    const std::size_t stopAfter = world_.random.Once(5) ? world_.waits + world_.random.Scale(12) : 0;
    const std::size_t midst = chance.Once(3) ? world_.waits + chance.Scale(12) : 0;
    const std::size_t heals = chance.Once(3) ? world_.waits + chance.Scale(12) : 0;
    world_.whileWaiting = [this, &work, &running, stopAfter, midst, heals] {
        if (world_.waits == stopAfter)
            Stop(work, running);
        if (world_.waits == midst)
            Meanwhile(work, running);
        if (world_.waits == heals && !work.till.isClean)
            work.till.SetFaults({});
    };
}

void Session::WaitNoMore()
{
    world_.onCommit = nullptr;
    world_.whileWaiting = nullptr;
    for (const auto& till : world_.tills)
        till->line.onCommand = nullptr;
}

bool Session::IsLong(Rules::Work& work) const
{
    constexpr std::size_t Patience = 3000;
    if (world_.waits <= Patience)
        return false;
    work.stop = work.stop.value_or(world_.loop.Worked());
    return true;
}

// The journal keeps it, or says why not.
void Session::EndNote(OperationNote& note)
{
    WaitNoMore();
    const std::size_t told = world_.told.size();
    const bool isSound = world_.disk.faults.AreNone();
    const std::size_t entries = rules_.JournalEntries();
    copy_->program.notes.Keep(note);
    if (!world_.Moment())
        return;
    // What fails for the same reason again is told once.
    if (world_.told.size() > told)
        Require(rules_.JournalEntries() == entries, Rule::Truth,
                "the journal keeps an entry, and was told not to");
    else if (isSound)
        rules_.NoteJournalled();
}

void Session::ScanInto(Window& window, std::optional<WindowFile> before)
{
    SetupDesk& desk = copy_->program.desk;
    const int port = window.session.settings.CommsPort;
    Rules::Work work = BeginWork(port);
    WaitIn(work, desk.operation);
    OperationNote note = desk.notes.Begin(JournalOperation::Scan, port);
    ScanOutcome outcome;
    {
        const LineOperation running(desk.operation, "scan", "scan");
        outcome = window.session.Scan(running.Hooks());
    }
    note.Tell(TargetOf(window.session.settings), outcome.line);
    if (before || !outcome.document.Modules.empty())
        window.Push(outcome.document, std::move(before));
    EndNote(note);
    if (!world_.Moment())
        return;
    Require(!outcome.image || *outcome.image == work.till.Flash(), Rule::Truth,
            "the scan has read another image");
    Require(outcome.line.deviceMap.empty() || outcome.line.deviceMap == work.till.DeviceMap(), Rule::Truth,
            "the scan has read other modules");
    Require(outcome.line.IsDone() || rules_.MayFail(work), Rule::Truth, "it failed, and nothing went wrong");
    if (outcome.IsWhole() && outcome.notices.empty()) {
        Rules::JudgeScan(outcome.document, *outcome.image);
        ++done_["scan"];
    }
    rules_.JudgeEnd(work, IsReleaseTold(outcome.line.warnings));
    for (const LaterMessage& message :
         DescribeScan(desk.Catalogue(), TargetOf(window.session.settings), outcome))
        desk.Words().Show(message.message, {message.icon}, message.extra);
}

void Session::Scan()
{
    Window& window = AddWindow(SetupMode::Scan);
    window.session.settings.CommsPort = static_cast<std::int16_t>(world_.random.Below(2) + 1);
    window.session.Load(std::nullopt);
    ScanInto(window, std::nullopt);
}

void Session::Rescan()
{
    Window& window = Any();
    const WindowFile before = window.session.HeldAs();
    window.session.StartScanning();
    ScanInto(window, before);
}

void Session::Transfer(Window& window, const WantedContent& wanted, const std::string& path)
{
    SetupDesk& desk = copy_->program.desk;
    SetupSession& session = window.session;
    const int port = session.settings.CommsPort;
    Rules::Work work = BeginWork(port);
    work.wanted = wanted;
    WaitIn(work, desk.operation);
    Backups backups(desk.files.OnDisk(), desk.dataFolder + "/backups");
    const TransferSteps steps{[&](const TransferPlan& plan) {
                                  return backups.Keep({port, plan.deviceMap, plan.terminal, plan.held});
                              },
                              [&](const TransferPlan& /*plan*/, const std::string& /*backup*/) {
                                  const OperationQuestion asking(desk.operation);
                                  Require(!work.till.line.IsHeld() || !work.till.isClean || world_.IsDead(),
                                          Rule::Released, "the till waits for the user");
                                  work.isForeign = world_.random.Once(10);
                                  if (work.isForeign)
                                      ReplaceTill(work.till);
                                  work.isAllowed = world_.Moment() && !world_.random.Once(6);
                                  return work.isAllowed ? TransferAnswer::Yes : TransferAnswer::No;
                              }};
    OperationNote note =
        desk.notes.Begin(path.empty() ? JournalOperation::Download : JournalOperation::Restore, port);
    path.empty() ? NoteFile(note, session) : NoteFile(note, desk.files.OnDisk(), path);
    TransferResult result;
    {
        const LineOperation running(desk.operation, "download", "download");
        result = DownloadFrom(session, wanted, running.Hooks(), steps);
    }
    note.Tell(TargetOf(session.settings), result);
    EndNote(note);
    if (!world_.Moment())
        return;
    rules_.JudgeTransfer(work, result);
    if (result.state == TransferResult::State::New)
        ++done_[path.empty() ? "download" : "restore"];
    if (result.reason == TransferResult::Reason::Declined && result.line.warnings.empty())
        return;
    const OutcomeText outcome = DescribeTransfer(desk.Catalogue(), TargetOf(session.settings), result);
    desk.Words().Tell(outcome.text, {outcome.icon});
}

void Session::Download()
{
    Window& window = Any();
    const Till& till = *world_.tills.at(static_cast<std::size_t>(window.session.settings.CommsPort) - 1);
    // Mostly a person downloads what was scanned there and then changed.
    if (RefusalFor(window.session.document, till.DeviceMap()) && !world_.random.Once(4)) {
        ScanInto(window, window.session.HeldAs());
        if (!world_.Moment())
            return;
        ChangeOptions(window);
    }
    Transfer(window, window.session.document, {});
}

void Session::Restore()
{
    Window& window = Any();
    auto opened = OpenDump(window.session);
    if (!opened)
        return;
    opened->dump.isForTheLine = NeedsUsersWord(opened->dump);
    Transfer(window, opened->dump, opened->path);
}

void Session::Verify()
{
    Window& window = Any();
    SetupDesk& desk = copy_->program.desk;
    Rules::Work work = BeginWork(window.session.settings.CommsPort);
    const FlashImage* const held = window.session.BaseImage();
    const auto base = held ? std::optional(*held) : std::nullopt;
    WaitIn(work, desk.operation);
    OperationNote note = desk.notes.Begin(JournalOperation::Verify, window.session.settings.CommsPort);
    VerifyResult result;
    {
        const LineOperation running(desk.operation, "verify", "verify");
        result = VerifyAgainst(window.session, running.Hooks());
    }
    note.Tell(TargetOf(window.session.settings), result);
    EndNote(note);
    work.wanted = window.session.document;
    if (result.deviceImage) {
        const bool goesWithBase = base && result.outcome == VerifyResult::Outcome::Different;
        Require(*window.session.DeviceImage() == *result.deviceImage &&
                    *window.session.BaseImage() == (goesWithBase ? *base : *result.deviceImage),
                Rule::Truth, "the window holds another image than was read");
    }
    if (world_.Moment())
        rules_.JudgeVerify(work, result, base ? &*base : nullptr);
    if (result.outcome == VerifyResult::Outcome::Same)
        ++done_["verify"];
}

void Session::DumpSetup()
{
    SetupSession& session = Any().session;
    DumpSetupImage(session);
    FlashImage erased{};
    erased.fill(ErasedByte);
    const FlashImage* const base = session.BaseImage();
    rules_.JudgeDump(Rules::Wanted(session.document, base ? *base : erased));
}

void Session::DumpDevice()
{
    SetupSession& session = Any().session;
    DumpDeviceImage(session);
    const FlashImage* const image = session.DeviceImage();
    rules_.JudgeDump(image ? *image : FlashImage());
}

}  // namespace kelvora::simulation
