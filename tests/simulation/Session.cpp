#include "simulation/Session.h"

#include <algorithm>
#include <charconv>

namespace kelvora::simulation {

struct StepTable {
    struct Kind {
        std::string_view name;
        unsigned weight;  ///< how often it comes, against the others
        void (Session::*take)();
    };
    static constexpr std::array Kinds{
        Kind{"new", 4, &Session::New},
        Kind{"open", 8, &Session::Open},
        Kind{"keys", 10, &Session::EditKeys},
        Kind{"options", 8, &Session::EditOptions},
        Kind{"add", 10, &Session::Add},
        Kind{"delete", 3, &Session::Delete},
        Kind{"move", 3, &Session::Move},
        Kind{"undo", 5, &Session::Undo},
        Kind{"redo", 3, &Session::Redo},
        Kind{"save", 12, &Session::Save},
        Kind{"save-as", 4, &Session::SaveAs},
        Kind{"close", 5, &Session::Close},
        Kind{"quit", 2, &Session::Quit},
        Kind{"terminate", 1, &Session::Terminate},
        Kind{"scan", 5, &Session::Scan},
        Kind{"rescan", 2, &Session::Rescan},
        Kind{"download", 7, &Session::Download},
        Kind{"verify", 2, &Session::Verify},
        Kind{"dump-setup", 2, &Session::DumpSetup},
        Kind{"dump-device", 2, &Session::DumpDevice},
        Kind{"restore", 4, &Session::Restore},
        Kind{"command", 6, &Session::Command},
        Kind{"identity", 1, &Session::WriteIdentity},
        Kind{"wizard", 1, &Session::Wizard},
        Kind{"edit", 3, &Session::EditFiles},
        Kind{"journal", 1, &Session::ShowJournal},
        Kind{"kill", 5, &Session::Kill},
        Kind{"kill-at-write", 6, &Session::KillAtWrite},
        Kind{"line-fault", 5, &Session::LineFault},
        Kind{"line-heals", 4, &Session::LineHeals},
        Kind{"restart-till", 2, &Session::RestartTill},
        Kind{"disk-fault", 4, &Session::DiskFault},
        Kind{"disk-heals", 4, &Session::DiskHeals},
        Kind{"set-clock", 2, &Session::SetClock},
        Kind{"foreign", 3, &Session::Foreign},
        Kind{"series", 2, &Session::Series},
    };
};

namespace {

constexpr auto& Kinds = StepTable::Kinds;

std::size_t Drawn(Random& random)
{
    unsigned all = 0;
    for (const auto& kind : Kinds)
        all += kind.weight;
    std::size_t left = random.Below(all);
    std::size_t kind = 0;
    while (left >= Kinds[kind].weight)
        left -= Kinds[kind++].weight;
    return kind;
}

}  // namespace

std::string TextOf(const std::vector<Step>& steps)
{
    std::string text;
    for (const Step& step : steps)
        text += (text.empty() ? "" : "; ") + std::string(Kinds.at(step.kind).name) + " " +
                std::to_string(step.number);
    return text;
}

std::vector<Step> StepsOf(std::string_view text)
{
    std::vector<Step> steps;
    while (!text.empty()) {
        const std::string_view one = text.substr(0, text.find(';'));
        text.remove_prefix(std::min(text.size(), one.size() + 2));
        const std::string_view name = one.substr(0, one.find(' '));
        const std::string_view number = one.substr(std::min(one.size(), name.size() + 1));
        const auto* const kind = std::ranges::find(Kinds, name, &StepTable::Kind::name);
        Step step{static_cast<std::size_t>(kind - Kinds.begin())};
        const char* const end = number.data() + number.size();
        const auto read = std::from_chars(number.data(), end, step.number);
        if (kind == Kinds.end() || read.ec != std::errc() || read.ptr != end)
            throw std::invalid_argument("no step: " + std::string(one));
        steps.push_back(step);
    }
    return steps;
}

std::vector<Step> StepsOf(std::uint64_t seed, std::size_t count)
{
    constexpr std::size_t LargestNumber = 1'000'000;
    Random random(seed);
    std::vector<Step> steps;
    while (steps.size() < count)
        steps.push_back({Drawn(random), random.Below(LargestNumber)});
    return steps;
}

Session::Session(std::uint64_t seed) : world_(seed)
{
    for (const char* const folder : {"/sim/shop", "/sim/anna", "/sim/program"})
        world_.disk.MakeFolder(folder);
    world_.disk.SyncAll();
}

Session::~Session()
{
    world_.EndKill();
}

void Session::Play(const Step& step)
{
    world_.random = Random(step.number);
    world_.meanwhile = Random(~step.number);
    const bool isKillSet = world_.IsKillSet();
    auto& copy = copies_.at(world_.random.Once(6) ? 1 : 0);
    const bool isNew = !copy;
    if (isNew)
        copy = std::make_unique<Copy>(world_, [this](const auto& saving) { rules_.NoteSaving(saving); });
    copy_ = copy.get();
    world_.Begin(copy_);
    copy_->person.answers.clear();
    copy_->program.desk.isOpenElsewhere = [this](std::string_view path, std::string_view current) {
        return !path.empty() && path != current &&
               std::ranges::any_of(copy_->windows,
                                   [&](const auto& window) { return window->session.File().path == path; });
    };
    if (isNew)
        Start();
    if (world_.Moment())
        (this->*Kinds.at(step.kind).take)();
    if (copy_) {
        Require(Offered().program, Rule::Enabled, "nothing can be chosen, and no operation runs");
        KeepUnsaved();
    }
    if (isKillSet)
        world_.EndKill();
    if (world_.IsDead())
        TakeDown();
    rules_.EndStep();
    unsaved_.EndStep();
}

// The dead program's windows go, and those of the other copy when the power was cut.
void Session::TakeDown()
{
    for (auto& copy : copies_)
        if (copy && (world_.WasPowerCut() || copy.get() == copy_))
            EndCopy(*copy);
    WaitNoMore();
    if (world_.WasPowerCut())
        world_.disk.faults = {};
}

}  // namespace kelvora::simulation
