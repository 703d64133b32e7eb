// What happens without anybody's wish: kills, faults of lines and disk, clocks that are set, other people's
// writes.
#include "layout/LineScan.h"
#include "setup/SetupWriter.h"
#include "simulation/Session.h"

namespace kelvora::simulation {

namespace {

bench::FaultPlan Faults(Random& random)
{
    constexpr std::array Rates{0.0, 0.0, 0.0005, 0.005, 0.05};
    bench::FaultPlan plan;
    plan.seed = random.Next();
    plan.drop = random.Of(Rates);
    plan.flip = random.Of(Rates);
    plan.duplicate = random.Of(Rates);
    plan.delay = std::chrono::milliseconds(random.Once(3) ? random.Below(1500) : 0);
    if (random.Once(6))
        plan.stray = std::chrono::milliseconds(random.Below(400) + 20);
    if (random.Once(3))
        (random.Once(2) ? plan.silentAfter : plan.awayAfter).toDevice = random.Scale(14);
    else if (random.Once(3))
        (random.Once(2) ? plan.silentAfter : plan.awayAfter).toHost = random.Scale(15);
    if (random.Once(4)) {
        using enum bench::CommandFault::Kind;
        constexpr std::array FaultKinds{Late, WrongReply, Silent, Status};
        constexpr std::array Commands{"$9900", "$9918", "$9911", "0F02", "0FB1", "0FB3+", "0FB3.", "20"};
        plan.commands.push_back({.kind = random.Of(FaultKinds),
                                 .command = random.Of(Commands),
                                 .number = static_cast<unsigned>(random.Below(3)),
                                 .late = std::chrono::milliseconds(random.Below(40'000)),
                                 .status = random.Once(2) ? "1" : "999"});
        // Noise mostly ends an operation before that command's turn.
        if (random.Once(2))
            return {.seed = plan.seed, .commands = plan.commands};
    }
    return plan;
}

}  // namespace

void Session::Kill()
{
    const std::size_t moments = world_.random.Scale(12);
    world_.KillAfter(moments, world_.random.Once(2));
}

// As the next step, or one after it, is about to change the disk.
void Session::KillAtWrite()
{
    const std::size_t changes = world_.random.Scale(6);
    world_.KillAfter(changes, world_.random.Once(2), true);
}

void Session::LineFault()
{
    world_.random.Of(world_.tills)->SetFaults(Faults(world_.random));
}

void Session::LineHeals()
{
    for (const auto& till : world_.tills) {
        till->SetFaults({});
        till->isClean = true;
    }
}

// By one that differs in a byte.
void Session::ReplaceTill(Till& till)
{
    bench::LineState memory = till.line.Memory();
    ++memory.flash.back();
    till.Replace(std::move(memory), std::string(bench::DefaultTerminalName));
}

void Session::RestartTill()
{
    world_.random.Of(world_.tills)->line.Restart();
}

void Session::DiskFault()
{
    switch (world_.meanwhile.Below(6)) {
        case 0:
            world_.disk.faults.slowness = std::chrono::milliseconds(world_.random.Scale(12));
            break;
        case 1:
            world_.disk.faults.room = static_cast<long>(world_.random.Scale(16));
            break;
        case 2:
            world_.disk.faults.isReadOnly = true;
            break;
        case 3:
            world_.disk.faults.failedRenames = 1;
            break;
        case 4:
            world_.disk.faults.readOnlyFile = copy_->person.Path(".dat");
            break;
        default:
            world_.disk.faults.failedSyncs = 1 + static_cast<int>(world_.random.Below(2));
    }
}

void Session::DiskHeals()
{
    world_.disk.faults = {};
}

void Session::SetClock()
{
    world_.clockAhead += std::chrono::seconds(world_.random.Below(200'000)) - std::chrono::seconds(100'000);
}

// Somebody else writes a file, spoils it, or takes it away.
void Session::Foreign()
{
    const std::string path = copy_->person.Path(".dat");
    std::optional<std::string> text = WriteSetup(Any().session.document.Modules) + "\r\n";
    if (world_.meanwhile.Once(4))
        text->resize(world_.random.Below(text->size()));
    else if (world_.meanwhile.Once(4))
        text.reset();
    world_.disk.Put(path, text);
    rules_.NoteForeign(path, text);
}

// While a program waits on a line.
void Session::Meanwhile(Rules::Work& work, RunningOperation& running)
{
    Require(&running != &copy_->program.operation || !running.IsBusy() ||
                Offered(copy_->windows.empty() ? nullptr : copy_->windows.back().get()) == CommandState{},
            Rule::Enabled, "something can be chosen while the program works on a line");
    switch (world_.meanwhile.Below(7)) {
        case 0:
            work.till.line.Restart();
            work.till.isClean = false;
            break;
        case 1:
            work.till.SetFaults(Faults(world_.meanwhile));
            break;
        case 2:
            world_.disk.faults.room = static_cast<long>(world_.meanwhile.Scale(16));
            break;
        case 3:
            TryLine(work);
            break;
        case 4:
            EndMeanwhile(work, running);
            break;
        default:
            if (!work.takesFiles)
                WorkBeside(running);
    }
}

// Somebody works at a copy of the program whose devices nobody has, or beside it.
void Session::WorkBeside(const RunningOperation& running)
{
    static constexpr std::array Steps{
        &Session::EditKeys,  &Session::EditOptions, &Session::Add,    &Session::Delete, &Session::Move,
        &Session::Undo,      &Session::Redo,        &Session::Save,   &Session::SaveAs, &Session::Close,
        &Session::EditFiles, &Session::ShowJournal, &Session::Foreign};
    Copy* const other = world_.meanwhile.Of(copies_).get();
    if (!other || &running == &other->program.operation)
        return;
    Copy* const waiting = std::exchange(copy_, other);
    const Random chance = std::exchange(world_.random, Random(world_.meanwhile.Next()));
    world_.Beside(other, [this] {
        (this->*world_.random.Of(Steps))();
        KeepUnsaved();
    });
    ++done_["beside"];
    world_.random = chance;
    copy_ = waiting;
}

// The second copy wants the line as well.
void Session::TryLine(const Rules::Work& work)
{
    Copy* const other = copies_[copy_ == copies_[0].get() ? 1 : 0].get();
    if (!other || !work.till.user)
        return;
    PosCfg settings = other->program.desk.defaults;
    settings.CommsPort = &work.till == world_.tills[0].get() ? 1 : 2;
    const LineResult result = Upload(other->program.lines.Terminals(), TargetOf(settings), {});
    Require(result.outcome == LineOutcome::NoPort && result.failure.port == PortFailure::InUse, Rule::Truth,
            "another program's line is not said to be in use");
}

// The program is to end, and its windows to close: none does before its operation has stopped.
void Session::EndMeanwhile(Rules::Work& work, RunningOperation& running)
{
    if (&running != &copy_->program.operation || !running.IsWorking())
        return;
    const std::size_t told = world_.told.size();
    for (const auto& window : copy_->windows)
        Require(window->session.AskToClose(true) == Closing::Stay && world_.told.size() == told,
                Rule::Enabled, "a window closes while the program works on a line");
    KeepUnsaved();
    Stop(work, running);
}

}  // namespace kelvora::simulation
