// How a person changes setups in their windows.
#include "keymap/KeyMapSession.h"
#include "layout/CommandRules.h"
#include "layout/LayoutCommands.h"
#include "layout/ModuleOptions.h"
#include "setup/DeviceCode.h"
#include "setup/SetupWriter.h"
#include "simulation/Session.h"

namespace kelvora::simulation {

namespace {

constexpr std::size_t MostWindows = 4;

McrOptions Changed(McrOptions options, Random& random)
{
    constexpr std::string_view Separators = "^;,A#=";
    options.tracks = static_cast<std::uint8_t>(DeviceCode::MCR12 + random.Below(3));
    options.separators.at(random.Below(3)) = random.Of(Separators);
    options.autoread = random.Once(2);
    return options;
}

MasterOptions Changed(MasterOptions options, Random& random)
{
    options.fiscal = random.Once(2);
    if (options.backlight)
        options.backlight = random.Once(2);
    return options;
}

// Some clicks in a key form.
void ClickKeys(KeyMapSession& keys, Random& random)
{
    for (std::size_t clicks = random.Below(6) + 1; clicks > 0; --clicks) {
        const std::string before = keys.Map();
        const std::size_t place = random.Below(static_cast<std::size_t>(keys.Positions()));
        keys.Choose(static_cast<int>(place) + 1, random.Once(3) ? Choosing::Extend : Choosing::Only);
        if (random.Once(3))
            keys.ToggleUnused();
        else
            keys.SetType(static_cast<int>(random.Below(4)));
        if (keys.Map() == before)
            continue;
        const std::string after = keys.Map();
        keys.Undo();
        Require(keys.Map() == before, Rule::Undo, "a key's type did not come back");
        keys.Redo();
        Require(keys.Map() == after, Rule::Undo, "a key's type was not made again");
        if (random.Once(4))
            keys.Undo();
    }
}

}  // namespace

Window& Session::AddWindow(SetupMode mode)
{
    if (copy_->windows.size() == MostWindows)
        Close();
    copy_->windows.push_back(std::make_unique<Window>(copy_->program.desk, mode));
    return *copy_->windows.back();
}

Window& Session::Any()
{
    if (copy_->windows.empty())
        New();
    return *world_.random.Of(copy_->windows);
}

// What the menus offer in that window, or without one.
CommandState Session::Offered(const Window* window) const
{
    return CommandStateOf({.modules = window ? &window->session.document.Modules : nullptr,
                           .busy = copy_->program.operation.IsBusy(),
                           .canScan = true,
                           .canUndo = window && window->at > 0,
                           .canRedo = window && window->at < window->edits.size()});
}

void Session::New()
{
    AddWindow(SetupMode::New).session.Load(std::nullopt);
}

void Session::Edit(Window& window, SetupDocument after)
{
    if (after != window.session.document)
        window.Push(std::move(after));
}

void Session::EditKeys()
{
    Window& window = Any();
    SetupSession& session = window.session;
    for (const ModuleKind kind : {ModuleKind::KM096, ModuleKind::KM064, ModuleKind::ICCR}) {
        const bool isThere = FindModule(session.document.Modules, kind).has_value();
        Require(session.HandOver(kind) == isThere && (isThere || !session.WithKeyMap(kind, {})),
                Rule::Enabled, "the keys of a module can be had where it is not");
        if (world_.random.Once(2) || !isThere)
            continue;
        KeyMapSession keys(kind);
        keys.Load(session.settings.Xchange);
        ClickKeys(keys, world_.random);
        auto changed = session.WithKeyMap(kind, keys.Map());
        Require(changed.has_value() == keys.IsChanged(), Rule::Truth, "other keys are taken than were given");
        if (changed)
            Edit(window, *std::move(changed));
    }
}

void Session::EditOptions()
{
    ChangeOptions(Any());
}

void Session::ChangeOptions(Window& window)
{
    const SetupDocument& document = window.session.document;
    const auto mcr = ReadMcrOptions(document);
    const auto master = ReadMasterOptions(document);
    if (mcr && (!master || world_.random.Once(2))) {
        const McrOptions wanted = Changed(*mcr, world_.random);
        Edit(window, WithOptions(document, wanted));
        Require(ReadMcrOptions(window.session.document) == wanted, Rule::Truth,
                "the reader's options are not taken");
    } else if (master) {
        const MasterOptions wanted = Changed(*master, world_.random);
        Edit(window, WithOptions(document, wanted));
        Require(ReadMasterOptions(window.session.document) == wanted, Rule::Truth,
                "the options are not taken");
    }
}

void Session::Add()
{
    Window& window = Any();
    const ModuleList& modules = window.session.document.Modules;
    const LayoutState state = Offered(&window).layout;
    for (const auto& [kind, isEnabled] :
         {std::pair(ModuleKind::KM096, state.addMaster), std::pair(ModuleKind::KM064, state.addKB64),
          std::pair(ModuleKind::MCR, state.addMCR), std::pair(ModuleKind::ICCR, state.addICCR)}) {
        if (!isEnabled || world_.random.Once(3))
            continue;
        const PlaceRange range = PlacesFor(kind, modules);
        const std::size_t place = range.first + world_.random.Below(range.last - range.first + 1);
        SetupDocument after = PlaceModule(window.session.document, kind, place);
        Require(after != window.session.document, Rule::Enabled, "a module can be added and is not");
        return Edit(window, std::move(after));
    }
}

void Session::Delete()
{
    Window& window = Any();
    const auto strip = LayOutStrip(window.session.document.Modules);
    if (strip.empty() || !Offered(&window).layout.del)
        return;
    const StripButton button = world_.random.Of(strip).button;
    if (!TakesFocus(button) || PlanDeletion(window.session.document.Modules, button) == Deletion::Nothing)
        return;
    SetupDocument after = kelvora::Delete(window.session.document, button);
    Require(after != window.session.document, Rule::Enabled, "a module can be deleted and is not");
    Edit(window, std::move(after));
}

void Session::Move()
{
    Window& window = Any();
    const SetupDocument& document = window.session.document;
    const auto chain = MainChain(document.Modules);
    if (chain.empty() || !Offered(&window).layout.move)
        return;
    const ModuleKind kind = world_.random.Of(chain);
    const PlaceRange range = PlacesFor(kind, document.Modules);
    SetupDocument after =
        PlaceModule(document, kind, range.first + world_.random.Below(range.last - range.first + 1));
    for (const ModuleRecord& record : document.Modules) {
        const ModuleRecord& moved = after.Modules.at(FindModule(after.Modules, record.Kind).value());
        Require(moved.KeyMap == record.KeyMap && moved.Options == record.Options, Rule::Truth,
                "a module has lost its keys or options on the way");
    }
    Edit(window, std::move(after));
}

void Session::Undo()
{
    Window& window = Any();
    if (!Offered(&window).undo)
        return;
    const std::string after = WriteSetup(window.session.document.Modules);
    window.Undo();
    Require(WriteSetup(window.session.document.Modules) == window.edits.at(window.at).before, Rule::Undo,
            "the setup is not what it was");
    if (world_.random.Once(2))
        return;
    window.Redo();
    Require(WriteSetup(window.session.document.Modules) == after, Rule::Undo,
            "the setup is not what it became");
}

void Session::Redo()
{
    Window& window = Any();
    if (Offered(&window).redo)
        window.Redo();
}

}  // namespace kelvora::simulation
