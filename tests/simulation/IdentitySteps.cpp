// What a person does with the modules' identities: by kelvora-cli, and in the wizard as eeprom/forms does it.
#include <algorithm>

#include "eeprom/IdentityChoices.h"
#include "eeprom/IdentityCopy.h"
#include "eeprom/IdentityWrite.h"
#include "platform/LocalTime.h"
#include "simulation/CommandLine.h"

namespace kelvora::simulation {

namespace {

std::string Folder()
{
    return IdentityFolder(DataFolder);
}

}  // namespace

// Nothing is written unasked, or before what the modules hold is safe.
void Session::WatchModules(Rules::Work& work)
{
    const auto old = world_.disk.List(Folder());
    // The modules' protocol has no check: on a line that damages bytes a copy holds what was read.
    const auto isOfNow = [this, &work, before = work.till.line.Memory().modules](const std::string& name) {
        const auto text = world_.disk.Certain(Folder() + "/" + name);
        const auto blocks = text ? ReadIdentityCopy(*text).blocks : std::vector<AddressedBlock>();
        return !blocks.empty() && std::ranges::all_of(blocks, [&](const AddressedBlock& each) {
            return each.address < before.size() &&
                   (!work.till.isClean || std::ranges::equal(each.block, before[each.address]));
        });
    };
    work.till.line.onStored = [this, old, isOfNow, &work] {
        Require(work.isAllowed, Rule::Flash, "an identity was written before the user had said so");
        Require(std::ranges::any_of(world_.disk.List(Folder()),
                                    [&](const std::string& name) {
                                        return std::ranges::count(old, name) == 0 && isOfNow(name);
                                    }),
                Rule::Backup, "what the modules held is not safe");
    };
}

// `isTold`: it was said that they hold what was wanted.
void Session::JudgeModules(const Rules::Work& work, const Modules& before,
                           const std::vector<AddressedBlock>& wanted, bool isTold)
{
    work.till.line.onStored = nullptr;
    const Modules& now = work.till.line.Memory().modules;
    for (std::size_t address = 0; address < now.size() && work.till.isClean; ++address) {
        const auto block = std::ranges::find(wanted, address, &AddressedBlock::address);
        const bool isWanted = block != wanted.end() && std::ranges::equal(now[address], block->block);
        Require(isWanted || now[address] == before[address], Rule::Flash,
                "a module holds what nobody wanted");
        Require(isWanted || block == wanted.end() || !isTold || world_.IsDead(), Rule::Truth,
                "a module was not written, as was told");
    }
}

void Session::WriteIdentity()
{
    CommandLine command(*this);
    const Modules before = command.work.till.line.Memory().modules;
    const auto copies = world_.disk.List(Folder());
    std::vector<AddressedBlock> wanted;
    std::vector<std::string> arguments;
    if (!copies.empty() && world_.random.Once(3)) {
        const std::string path = Folder() + "/" + world_.random.Of(copies);
        arguments = {"identity", "restore", path};
        try {
            wanted = ReadIdentityCopy(world_.disk.Content(path).value_or("")).blocks;
        } catch (const IdentityCopyError&) {
            // A kill has left a part of it: nothing is written of that.
        }
    } else {
        const DeviceIdentity& identity = world_.random.Of(OfferedIdentities);
        wanted = {{world_.random.Below(5), identity.block}};
        arguments = {"identity", "write", std::to_string(wanted.front().address), std::string(identity.name)};
    }
    WatchModules(command.work);
    const int code = command.RunOnLine(arguments);
    JudgeModules(command.work, before, wanted, code == 0);
    if (code == 0)
        ++done_["identity"];
    command.JudgeLine();
}

void Session::Wizard()
{
    SetupDesk& desk = copy_->program.desk;
    const int port = static_cast<int>(world_.random.Below(2)) + 1;
    Rules::Work work = BeginWork(port);
    const Modules before = work.till.line.Memory().modules;
    ModuleProtocol protocol(port == 1 ? copy_->port1 : copy_->port2, world_.loop, copy_->person);
    ModuleMemory memory(protocol);
    memory.isInterrupted = [&] { return desk.operation.IsStopAsked() || IsLong(work); };
    desk.operation.GoOn();
    OperationNote reading = desk.notes.Begin(JournalOperation::ReadIdentities, port);
    WaitIn(work, desk.operation);
    if (protocol.OpenCommsLine()) {
        desk.operation.Take({});
        memory.FindModules(SearchRepeats::UntilInterrupted);
        rules_.JudgeStop(work);
        // What was found is read all the same.
        work.stop.reset();
        memory.ReadEeprom();
    }
    EndNote(reading);
    IdentityChoices choices = ChoicesOf(memory);
    for (auto& choice : choices)
        if (world_.random.Once(3))
            choice = world_.random.Below(OfferedIdentities.size());
    if (const auto wanted = PlanChoices(memory, choices); memory.HasLine() && !wanted.empty()) {
        WatchModules(work);
        WriteSurroundings surroundings{copy_->person, desk.Catalogue(),    desk.files.OnDisk(), Folder(),
                                       port,          protocol.Settings(), LocalTime(),         {}};
        surroundings.ask = [&](const WriteQuestion& /*question*/) {
            return work.isAllowed = world_.Moment() && !world_.random.Once(6);
        };
        OperationNote writing = desk.notes.Begin(JournalOperation::WriteIdentities, port);
        const WriteResult result = WriteIdentities(memory, wanted, surroundings);
        EndNote(writing);
        JudgeModules(work, before, wanted, result.outcome == WriteOutcome::Written);
        if (result.outcome == WriteOutcome::Written)
            ++done_["wizard"];
    }
    protocol.Close();
    if (desk.operation.IsBusy())
        desk.operation.GiveBack();
    work.stop.reset();
    if (world_.Moment())
        rules_.JudgeEnd(work, false);
}

}  // namespace kelvora::simulation
