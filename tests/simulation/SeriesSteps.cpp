// Tills that come one after another to a line, to which kelvora-cli brings their setups.
#include <algorithm>

#include "flash/TakeFromImage.h"
#include "layout/LineScan.h"
#include "series/SeriesEvent.h"
#include "setup/SetupEdit.h"
#include "setup/SetupReader.h"
#include "setup/SetupWriter.h"
#include "simulation/CommandLine.h"

namespace kelvora::simulation {

namespace {

constexpr std::size_t Names = 3;

std::string FileOf(const std::string& till)
{
    return "/sim/shop/" + till + ".dat";
}

}  // namespace

struct Session::Visits {
    struct Visit {
        std::string till;
        std::size_t verdicts;  ///< of those before it
        FlashImage before;
        FlashImage after{};
    };

    /// The next till comes, alike but for its flash.
    void Connect();
    /// While the series works: a till that has its verdict may go, or be away for a while.
    void Look();
    /// The present till goes.
    void End();
    void Judge();
    void Judge(const Visit& visit, const JournalEntry& entry);
    std::vector<SeriesEvent> Verdicts() const;

    Session& session;
    CommandLine& command;
    std::string file;   ///< for all tills; empty when each has its own
    std::size_t count;  ///< of tills
    bench::FlashBytes flash = command.work.till.line.Memory().flash;
    std::size_t name = 0;  ///< of the last till
    std::vector<Visit> all{};
};

void Session::Visits::Connect()
{
    World& world = session.world_;
    Rules::Work& work = command.work;
    name = (name + 1 + world.random.Below(Names - 1)) % Names;
    const std::string till = "till" + std::to_string(name);
    bench::LineState memory = work.till.line.Memory();
    if (!world.random.Once(3))
        memory.flash = flash;
    ++memory.flash.back();
    work.till.Replace(std::move(memory), till);
    work.before = work.till.Flash();
    work.start = world.loop.Worked();
    work.isHolding = work.isCommitting = false;
    work.wanted.reset();
    if (auto wanted = session.SetupIn(file.empty() ? FileOf(till) : file))
        work.wanted = *std::move(wanted);
    all.push_back({till, Verdicts().size(), work.before});
}

void Session::Visits::End()
{
    const Till& till = command.work.till;
    all.back().after = till.Flash();
    Require(!till.line.IsHeld() || !till.isClean, Rule::Released, "a till has its verdict and is held still");
}

void Session::Visits::Look()
{
    if (all.size() == count || Verdicts().size() == all.back().verdicts || !session.world_.random.Once(20))
        return;
    End();
    Connect();
}

std::vector<SeriesEvent> Session::Visits::Verdicts() const
{
    std::vector<SeriesEvent> verdicts;
    std::istringstream lines(command.out.str());
    SeriesEvent event;
    for (std::string line; std::getline(lines, line);)
        if (ReadSeriesLine(line, event) && event.kind == SeriesEvent::Kind::Result)
            verdicts.push_back(event);
    return verdicts;
}

void Session::Visits::Judge()
{
    const auto verdicts = Verdicts();
    for (std::size_t i = 0; i < all.size(); ++i) {
        const std::size_t end = i + 1 < all.size() ? all[i + 1].verdicts : verdicts.size();
        // A line that goes silent is taken for that of the next till.
        Require(end - all[i].verdicts <= 1 || !command.work.till.isClean, Rule::Truth,
                "a till has two verdicts");
        for (std::size_t at = all[i].verdicts; at < end; ++at)
            Judge(all[i], verdicts[at].entry);
    }
}

void Session::Visits::Judge(const Visit& visit, const JournalEntry& entry)
{
    const std::string& till = entry.terminal;
    // A name may be damaged as well.
    Require(till == visit.till || !command.work.till.isClean, Rule::Truth,
            "the verdict of " + visit.till + " is told of " + till);
    const bool isPass =
        entry.result == JournalEntry::Result::Same || entry.result == JournalEntry::Result::Done;
    if (!isPass || till != visit.till)
        return;
    ++session.done_["series"];
    const auto document = session.SetupIn(file.empty() ? FileOf(till) : file);
    Require(document && visit.after == Rules::Wanted(*document, visit.before), Rule::Truth,
            till + " does not hold its setup, as was told");
}

// A file for tills like this one stands ready.
void Session::PrepareFile(const std::string& path, const Till& till)
{
    constexpr std::array Settings{"fiscal=yes", "fiscal=no"};
    if (ModulesOfMap(till.DeviceMap()).empty())
        return;
    SetupDocument document = TakeFromImage(ReadDeviceMap(till.DeviceMap()), till.Flash()).document;
    ApplyEdit(document, {{}, {ParseSetting(world_.random.Of(Settings))}});
    const std::string text = WriteSetup(document.Modules) + "\r\n";
    world_.disk.Put(path, text);
    rules_.NoteForeign(path, text);
}

void Session::Series()
{
    CommandLine command(*this);
    const std::string file = world_.random.Once(2) ? copy_->person.Path(".dat") : "";
    Visits visits{*this, command, file, world_.random.Below(Names) + 1};
    command.work.takesFiles = true;
    if (!file.empty())
        PrepareFile(file, command.work.till);
    for (std::size_t name = 0; name < Names && file.empty(); ++name)
        if (!world_.random.Once(4))
            PrepareFile(FileOf("till" + std::to_string(name)), command.work.till);
    visits.Connect();
    command.onLook = [&visits] { visits.Look(); };
    std::vector<std::string> arguments{"series", "--json", "--count", std::to_string(visits.count)};
    if (file.empty())
        arguments.insert(arguments.end(), {"--by-name", "/sim/shop"});
    else
        arguments.push_back(file);
    command.RunOnLine(arguments);
    if (!world_.Moment())
        return;
    visits.End();
    visits.Judge();
    command.JudgeLine();
}

}  // namespace kelvora::simulation
