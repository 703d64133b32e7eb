// What a person does in setup windows.
#include <algorithm>

#include "keymap/KeyMapSession.h"
#include "layout/CommandRules.h"
#include "layout/LayoutCommands.h"
#include "layout/ModuleOptions.h"
#include "platform/TextFiles.h"
#include "setup/DeviceCode.h"
#include "setup/SetupDifferences.h"
#include "setup/SetupFileNames.h"
#include "setup/SetupReader.h"
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

// Whether a file can say it: lines that were scanned may have parts missing, and modules of unknown kinds.
bool FitsFile(const SetupDocument& document)
{
    const auto has = [&](ModuleKind kind) { return FindModule(document.Modules, kind).has_value(); };
    return UnknownDeviceCodes(document).empty() && !HasRepeatedKind(document.Modules) &&
           has(ModuleKind::KM096) == has(ModuleKind::Backlight) &&
           has(ModuleKind::KM096) == has(ModuleKind::Code4);
}

// Some clicks in a key form.
void ClickKeys(KeyMapSession& keys, Random& random)
{
    for (std::size_t clicks = random.Below(6) + 1; clicks > 0; --clicks) {
        const std::string before = keys.Map();
        keys.Choose(static_cast<int>(random.Below(static_cast<std::size_t>(keys.Positions()))) + 1,
                    random.Once(3) ? Choosing::Extend : Choosing::Only);
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

void Session::New()
{
    AddWindow(SetupMode::New).session.Load(std::nullopt);
}

void Session::Open()
{
    SetupDesk& desk = copy_->program.desk;
    const auto file = GetConfigFileName(desk.files, desk.defaults, {});
    if (!file || desk.isOpenElsewhere(file->path, {}))
        return;
    const auto text = world_.disk.Content(file->path);
    auto opened = OpenSetup(desk.files, *file);
    if (text && IsWholeFile(*text) && world_.Moment())
        Require(opened && WriteSetup(opened->document.Modules) + "\r\n" == *text, Rule::Whole,
                file->path + " was saved and is not opened as it was");
    if (opened)
        AddWindow(SetupMode::Open).session.Load(std::move(opened));
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
        if (world_.random.Once(2) || !session.HandOver(kind))
            continue;
        KeyMapSession keys(kind);
        keys.Load(session.settings.Xchange);
        ClickKeys(keys, world_.random);
        session.settings.Xchange = keys.Map();
        if (auto changed = session.TakeBack(kind))
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
    const LayoutState state = LayoutStateOf(modules);
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
    if (strip.empty() || !LayoutStateOf(window.session.document.Modules).del)
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
    if (chain.empty() || !LayoutStateOf(document.Modules).move)
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
    if (window.at == 0)
        return;
    const std::string after = WriteSetup(window.session.document.Modules);
    const std::string before = WriteSetup(window.edits.at(window.at - 1).before.Modules);
    window.Undo();
    Require(WriteSetup(window.session.document.Modules) == before, Rule::Undo,
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
    if (window.at < window.edits.size())
        window.Redo();
}

void Session::Save()
{
    SaveWith(&SetupSession::Save);
}

void Session::SaveAs()
{
    SaveWith(&SetupSession::SaveAs);
}

void Session::SaveWith(bool (SetupSession::*save)())
{
    Window& window = Any();
    const auto before = world_.disk.All();
    std::map<std::string, std::string> contents;
    for (const auto& [path, inode] : before)
        contents[path] = inode->content;
    const bool isSaved = (window.session.*save)();
    if (!world_.Moment() || !isSaved)
        return;
    window.clean = window.at;
    ++saves_;
    const std::string& path = window.session.File().path;
    Require(world_.disk.Content(path) == WriteSetup(window.session.document.Modules) + "\r\n", Rule::Kept,
            path + " is not the setup that was saved");
    const SetupDocument& document = window.session.document;
    Require(!FitsFile(document) || CompareSetups(ReadSetup(*world_.disk.Content(path)), document).empty(),
            Rule::Kept, path + " says another setup");
    if (contents.contains(path))
        Require(world_.disk.Content(BackupName(path)) == contents[path], Rule::Kept,
                path + " was replaced and is not in its backup");
}

void Session::Close()
{
    Window& window = Any();
    const bool isChanged = window.IsChanged();
    const Closing closing = window.session.AskToClose(isChanged);
    if (!world_.Moment() || closing == Closing::Stay)
        return;
    Require(closing != Closing::Saved || world_.disk.Content(window.session.File().path) ==
                                             WriteSetup(window.session.document.Modules) + "\r\n",
            Rule::Unsaved, "a changed setup was closed and is not saved, as was told");
    const auto isNo = [](const auto& answer) { return answer.second != Answer::Cancel; };
    Require(!isChanged || closing == Closing::Saved || std::ranges::any_of(copy_->person.answers, isNo),
            Rule::Unsaved, "a changed setup was closed without a question");
    std::erase_if(copy_->windows, [&](const auto& each) { return each.get() == &window; });
}

}  // namespace kelvora::simulation
