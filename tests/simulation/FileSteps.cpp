// What a person does with the files of setup windows, and with a copy of the program as a whole. What of it
// is unsaved is kept as windows/forms/RecoveryForms does it.
#include <algorithm>

#include "catalogue/Messages.h"
#include "setup/SetupDifferences.h"
#include "setup/SetupReader.h"
#include "setup/SetupWriter.h"
#include "simulation/Session.h"

namespace kelvora::simulation {

namespace {

// Whether a file can say it: lines that were scanned may have parts missing, and modules of unknown kinds.
bool FitsFile(const SetupDocument& document)
{
    const auto has = [&](ModuleKind kind) { return FindModule(document.Modules, kind).has_value(); };
    return UnknownDeviceCodes(document).empty() && has(ModuleKind::KM096) == has(ModuleKind::Backlight) &&
           has(ModuleKind::KM096) == has(ModuleKind::Code4);
}

}  // namespace

void Session::Open()
{
    SetupDesk& desk = copy_->program.desk;
    const auto file = GetConfigFileName(desk.files, desk.defaults, {});
    if (!file || desk.isOpenElsewhere(file->path, {}))
        return;
    const auto text = world_.disk.Content(file->path);
    auto opened = OpenSetup(desk.files, *file);
    if (text && IsWholeFile(*text) && world_.Moment())
        Require(opened && IsFileOf(opened->document, *text), Rule::Whole,
                file->path + " was saved and is not opened as it was");
    if (opened)
        AddWindow(SetupMode::Open).session.Load(std::move(opened));
}

void Session::Save()
{
    SaveWith(&SetupSession::Save);
}

void Session::SaveAs()
{
    SaveWith(&SetupSession::SaveAs);
}

// Sometimes the other copy saves the same file meanwhile.
bool Session::SaveMeanwhile(const Window& window)
{
    Copy* const other = copies_[copy_ == copies_[0].get() ? 1 : 0].get();
    if (!other || !world_.random.Once(3))
        return false;
    const auto same = std::ranges::find_if(other->windows, [&](const auto& each) {
        return !each->session.File().path.empty() && each->session.File().path == window.session.File().path;
    });
    if (same == other->windows.end())
        return false;
    world_.InTheMidst(world_.random.Scale(5), other, [&second = **same] {
        if (second.session.Save())
            second.clean = second.at;
    });
    return true;
}

void Session::SaveWith(bool (SetupSession::*save)())
{
    Window& window = Any();
    const auto before = world_.disk.Contents();
    const bool isContested = SaveMeanwhile(window);
    const bool isSound = world_.disk.faults.AreNone();
    const bool isSaved = (window.session.*save)();
    const std::string& guarded = world_.disk.faults.readOnlyFile;
    Require(
        world_.IsDead() || !before.contains(guarded) || world_.disk.Content(guarded) == before.at(guarded),
        Rule::Truth, guarded + " may not be written, and was");
    const std::string failure = copy_->program.desk.Words().Caption(Message::FileNotSaved);
    Require(
        !isSound || world_.IsDead() ||
            std::ranges::none_of(world_.told, [&](const auto& told) { return told.starts_with(failure); }),
        Rule::Truth, "a save has failed, and nothing is wrong with the disk");
    if (!world_.Moment() || !isSaved)
        return;
    window.clean = window.at;
    ++done_["save"];
    if (isContested)
        return;
    const std::string& path = window.session.File().path;
    Require(world_.disk.Content(path) == FileText(window), Rule::Kept,
            path + " is not the setup that was saved");
    const SetupDocument& document = window.session.document;
    Require(window.session.HeldAs().saved == WriteSetup(document.Modules), Rule::Kept,
            path + " is taken for what it does not hold");
    Require(!FitsFile(document) || CompareSetups(ReadSetup(*world_.disk.Content(path)), document).empty(),
            Rule::Kept, path + " says another setup");
    if (const auto old = before.find(path); old != before.end())
        rules_.JudgeReplaced(path, old->second);
}

std::string Session::FileText(const Window& window)
{
    return WriteSetup(window.session.document.Modules) + "\r\n";
}

bool Session::MayClose(Window& window)
{
    const bool isChanged = window.IsChanged();
    copy_->person.answers.clear();
    const Closing closing = window.session.AskToClose(isChanged);
    if (!world_.Moment() || closing == Closing::Stay)
        return false;
    Require(closing != Closing::Saved || world_.disk.Content(window.session.File().path) == FileText(window),
            Rule::Unsaved, "a changed setup was closed and is not saved, as was told");
    const auto given = [&](enum Answer answer) {
        return std::ranges::count(copy_->person.answers, answer,
                                  [](const auto& each) { return each.second; });
    };
    // Not to save it; or to save it, and to close it when that has failed.
    Require(!isChanged || closing == Closing::Saved || given(Answer::No) > 0 || given(Answer::Yes) > 1,
            Rule::Unsaved, "a changed setup was closed without a question");
    if (closing == Closing::Saved)
        window.clean = window.at;
    return true;
}

void Session::Close()
{
    Window& window = Any();
    if (!MayClose(window))
        return;
    const int number = window.session.settings.PanelIndex;
    std::erase_if(copy_->windows, [&](const auto& each) { return each.get() == &window; });
    unsaved_.NoteDropping(copy_, number);
    copy_->recovery.Drop(number);
}

// The program ends: none of the windows closes before all have been asked.
void Session::Quit()
{
    if (!std::ranges::all_of(copy_->windows, [&](const auto& window) { return MayClose(*window); }))
        return;
    for (const auto& window : copy_->windows)
        unsaved_.NoteDropping(copy_, window->session.settings.PanelIndex);
    copy_->recovery.DropAll();
    EndCopy(*copy_);
}

// It is ended from outside: what is unsaved is kept.
void Session::Terminate()
{
    KeepUnsaved();
    if (world_.Moment())
        EndCopy(*copy_);
}

void Session::EndCopy(Copy& ended)
{
    auto& copy = copies_[&ended == copies_[0].get() ? 0 : 1];
    unsaved_.NoteDeath(copy.get());
    if (copy_ == copy.get())
        copy_ = nullptr;
    copy.reset();
}

void Session::KeepUnsaved()
{
    for (const auto& window : copy_->windows) {
        const SetupSession& session = window->session;
        Require(window->IsChanged() || session.File().path.empty() ||
                    session.HeldAs().saved == WriteSetup(session.document.Modules),
                Rule::Unsaved, session.File().path + " lacks what its window takes for saved");
        const auto isOfFile = [&path = session.File().path](const auto& each) {
            return each->session.File().path == path;
        };
        Require(session.File().path.empty() || std::ranges::count_if(copy_->windows, isOfFile) == 1,
                Rule::Unsaved, session.File().path + " is held by two windows");
        const int number = session.settings.PanelIndex;
        const RecoveryCopy copy{{},
                                session.settings.Name,
                                session.File().path,
                                session.HeldAs().saved,
                                WriteSetup(session.document.Modules)};
        if (!window->IsChanged()) {
            unsaved_.NoteDropping(copy_, number);
            copy_->recovery.Drop(number);
            continue;
        }
        if (copy.path.empty() && copy.setup == WriteSetup({}))
            continue;
        try {
            unsaved_.NoteKeeping(copy_, number, copy);
            copy_->recovery.Keep(number, copy);
            unsaved_.NoteKept(copy_, number, true);
        } catch (const FileError&) {
            unsaved_.NoteKept(copy_, number, false);
        }
    }
}

// A copy of the program starts, and offers what others have left.
void Session::Start()
{
    const bool isSound = world_.disk.faults.AreNone();
    try {
        const auto offers = copy_->recovery.Offers();
        if (world_.Moment())
            unsaved_.JudgeOffers(offers);
        for (const RecoveryOffer& offer : offers)
            Answer(offer);
    } catch (const FileError&) {
        Require(world_.IsDead() || !isSound, Rule::Unsaved,
                "what is unsaved is not offered, and nothing went wrong");
    }
    copy_->recovery.Release();
}

void Session::Answer(const RecoveryOffer& offer)
{
    constexpr std::size_t ThrowAway = 4;
    constexpr std::size_t Later = 5;
    const std::size_t answer = world_.random.Below(Later + 1);
    if (!world_.Moment() || answer == Later || offer.damage != RecoveryDamage::None)
        return;
    if (answer == ThrowAway) {
        unsaved_.NoteThrownAway(offer);
        copy_->recovery.ThrowAway(offer);
        return;
    }
    copy_->windows.push_back(std::make_unique<Window>(copy_->program.desk, SetupMode::Open));
    Window& window = *copy_->windows.back();
    // One window alone has a file.
    const bool isFree = !copy_->program.desk.isOpenElsewhere(offer.copy.path, {});
    window.session.Load(
        OpenedSetup{offer.base, isFree ? MakeSetupFile(offer.copy.path) : SetupFile(), offer.copy.name});
    window.Push(offer.document);
    const int number = window.session.settings.PanelIndex;
    copy_->recovery.Take(offer, number);
    if (!world_.IsDead())
        ++done_["recovery"];
    if (!world_.IsDead())
        unsaved_.NoteTaken(offer, copy_, number);
}

}  // namespace kelvora::simulation
