#include "simulation/Rules.h"

#include <algorithm>

#include "flash/DumpSource.h"
#include "flash/SetupImage.h"
#include "flash/TakeFromImage.h"
#include "journal/JournalText.h"
#include "platform/TextFiles.h"
#include "setup/SetupError.h"
#include "setup/SetupReader.h"
#include "setup/SetupWriter.h"

namespace kelvora::simulation {

namespace {

constexpr const char* JournalPath = "/sim/data/journal.jsonl";
constexpr const char* BackupFolder = "/sim/data/backups";

/// A line that works, at 9600 baud; one that does not; a stop, before a commit.
constexpr std::chrono::seconds CleanBound{90};
constexpr std::chrono::minutes WorstBound{60};
constexpr std::chrono::seconds StopBound{8};

std::string Seconds(EventLoop::Time::duration time)
{
    return std::to_string(std::chrono::duration_cast<std::chrono::seconds>(time).count()) + " s";
}

}  // namespace

std::optional<FlashDump> DumpOf(const std::string& text)
{
    try {
        return ReadDump(text);
    } catch (const DumpError&) {
        return std::nullopt;
    }
}

bool IsFileOf(const SetupDocument& document, const std::string& text)
{
    // A light that the line has not named is in no file, and in what is read from it.
    const auto withoutLight = [](std::string all) {
        const std::size_t at = all.find("Backlight = ");
        return at == std::string::npos ? all : all.erase(at, all.find('\n', at) + 1 - at);
    };
    return withoutLight(text) == withoutLight(WriteSetup(document.Modules) + "\r\n");
}

bool IsWholeFile(const std::string& text)
{
    if (text.starts_with('\'') || text.starts_with("0000:")) {
        const auto dump = DumpOf(text);
        return dump && text.starts_with(FormatFlashDump(*dump));
    }
    try {
        return IsFileOf(ReadSetup(text), text);
    } catch (const SetupError&) {
        return false;
    }
}

void Rules::NoteSaving(const WatchedFiles::Saving& saving)
{
    if (world_.IsDead())
        return;
    auto& versions = versions_[saving.path];
    if (saving.isDone) {
        --saving_[saving.path];
        // Of two at once either may have been the last.
        if (!contested_.contains(saving.path))
            versions = {saving.text};
        saved_.insert(saving.path);
        touched_.insert(saving.path);
        return;
    }
    if (++saving_[saving.path] > 1)
        contested_.insert(saving.path);
    const bool isBackup = saving.path.starts_with(BackupFolder);
    Require(!isBackup || !world_.disk.Content(saving.path), Rule::Backup, saving.path + " is written over");
    if (versions.empty())
        versions.push_back(world_.disk.Content(saving.path));
    versions.push_back(saving.text);
}

void Rules::NoteForeign(const std::string& path, const std::optional<std::string>& text)
{
    versions_[path] = {text};
    touched_.insert(path);
    if (text)
        foreign_.insert(*text);
}

// What somebody else has spoiled is whole as they left it.
bool Rules::IsWhole(const std::string& text) const
{
    return foreign_.contains(text) || IsWholeFile(text);
}

void Rules::NoteWritten(const std::string& path, bool isTold)
{
    const auto now = world_.disk.Content(path);
    auto& versions = versions_[path];
    Require(!now || std::ranges::count(versions, now) > 0 || IsWhole(*now), Rule::Whole,
            path + " was written in part");
    // What is not safe yet may still be as it was.
    if (isTold || world_.disk.Certain(path) == now)
        versions = {now};
    else
        versions.push_back(now);
    touched_.insert(path);
    if (isTold)
        saved_.insert(path);
}

void Rules::JudgeReplaced(const std::string& path, const std::optional<std::string>& before) const
{
    Require(!before || before == world_.disk.Content(path) || before == world_.disk.Content(BackupName(path)),
            Rule::Kept, path + " was replaced and is not in its backup");
}

void Rules::EndStep()
{
    for (const std::string& path : saved_) {
        if (!world_.IsDead() && world_.disk.faults.failedSyncs == 0)
            Require(std::ranges::count(versions_[path], world_.disk.Certain(path)) > 0, Rule::Kept,
                    path + " was said to be saved and may be lost");
        if (!world_.IsDead() && world_.disk.faults.AreNone() && !contested_.contains(path))
            Require(!HasLeft(path), Rule::Whole, path + " was saved, and what a kill has left of it stays");
    }
    saved_.clear();
    touched_.clear();
    saving_.clear();
    for (auto& [path, versions] : versions_) {
        const auto now = world_.disk.Content(path);
        // What the command line makes is not watched: where nothing was, or may be, a whole file may.
        if (now && versions.size() == 1 && !versions.front() && IsWhole(*now))
            versions = {now};
        const bool mayBeNew = std::ranges::count(versions, std::optional<std::string>()) > 0;
        if (now && (mayBeNew || contested_.contains(path)) && IsWhole(*now))
            versions.push_back(now);
        Require(std::ranges::count(versions, now) > 0, versions.size() == 1 ? Rule::Kept : Rule::Whole,
                path + (now ? " is no version that was saved" : " is gone"));
        if (world_.WasPowerCut())
            versions = {now};
    }
    contested_.clear();
    const std::size_t entries = JournalEntries();
    Require(entries >= journalled_, Rule::Kept,
            "the journal has " + std::to_string(entries) + " of " + std::to_string(journalled_) + " entries");
}

// What is written first stands beside the file, under names that differ in their number alone.
bool Rules::HasLeft(const std::string& path) const
{
    const auto from = world_.disk.renamed.find(path);
    if (from == world_.disk.renamed.end())
        return false;
    const std::string start = from->second.substr(0, from->second.rfind('-'));
    const auto names = world_.disk.Contents();
    return std::ranges::any_of(names, [&](const auto& name) { return name.first.starts_with(start); });
}

std::size_t Rules::JournalEntries()
{
    const std::string text = world_.disk.Content(JournalPath).value_or("");
    if (text == journalText_)
        return journalEntries_;
    JournalContent content;
    TakeJournalText(content, text);
    journalText_ = text;
    return journalEntries_ = content.entries.size();
}

void Rules::NoteJournalled()
{
    const std::size_t before = journalEntries_;
    Require(JournalEntries() > before, Rule::Kept, "an entry of the journal is not there, as was told");
    journalled_ = journalEntries_;
}

FlashImage Rules::Wanted(const WantedContent& wanted, const FlashImage& held)
{
    if (const auto* const dump = std::get_if<FlashDump>(&wanted))
        return dump->image;
    const auto built = BuildSetupImage(std::get<SetupDocument>(wanted), &held);
    const auto* const image = std::get_if<FlashImage>(&built);
    return image ? *image : held;
}

bool Rules::IsKept(const FlashImage& image) const
{
    for (const std::string& name : world_.disk.List(BackupFolder))
        if (const auto text = world_.disk.Certain(std::string(BackupFolder) + "/" + name))
            if (const auto dump = DumpOf(*text); dump && dump->image == image)
                return true;
    return false;
}

void Rules::JudgeCommit(const Work& work)
{
    FlashImage held{};
    std::ranges::copy(work.till.held, held.begin());
    Require(work.wanted.has_value(), Rule::Flash, "it was written by an operation that only reads");
    Require(work.isAllowed, Rule::Flash, "it was written before the user had said so");
    Require(work.till.Flash() == Wanted(*work.wanted, held), Rule::Flash, "it holds what nobody wanted");
    Require(IsKept(held), Rule::Backup, "what the device held is not safe");
}

// Whether anything has gone wrong, or was to end it.
bool Rules::MayFail(const Work& work) const
{
    return !work.till.isClean || !work.isSound || !world_.disk.faults.AreNone() || work.stop ||
           work.isForeign || world_.IsDead();
}

void Rules::JudgeTransfer(const Work& work, const TransferResult& result)
{
    using State = TransferResult::State;
    const FlashImage now = work.till.Flash();
    const bool isHeld = now == (result.plan ? result.plan->held : work.before);
    const bool isWanted = result.plan && now == Wanted(*work.wanted, result.plan->held);
    switch (result.state) {
        case State::Same:
            Require(isWanted || work.isForeign, Rule::Truth,
                    "the device does not hold what is wanted, as was told");
            [[fallthrough]];
        case State::Old:
            Require(isHeld || work.isForeign, Rule::Truth,
                    "the device does not hold what it held, as was told");
            break;
        case State::New:
            Require(isWanted, Rule::Truth, "the device does not hold the new content, as was told");
            if (const auto* const setup = std::get_if<SetupDocument>(&*work.wanted))
                JudgeHeld(*setup, now);
            break;
        case State::Unknown:
            Require(isHeld || isWanted, Rule::Truth, "the device holds neither content");
            Require(!work.till.isClean, Rule::Truth,
                    "what the device holds is not told, and nothing went wrong");
            break;
        case State::Foreign:
            // What somebody else has written may be what was wanted.
            Require(!isHeld && (!isWanted || work.isForeign), Rule::Truth, "nobody has changed the device");
            break;
    }
    Require(!result.image || *result.image == now || work.isForeign, Rule::Truth,
            "the device was read as what it is not");
    using Reason = TransferResult::Reason;
    const bool isOwnEnd = result.reason == Reason::Refused || result.reason == Reason::Declined ||
                          result.reason == Reason::ContentsKept;
    Require(isOwnEnd || result.state == State::New || result.state == State::Same || MayFail(work),
            Rule::Truth, "it failed, and nothing went wrong");
    JudgeEnd(work, std::ranges::any_of(result.line.warnings, [](const LineWarning& warning) {
                 return warning.step == LineWarning::Step::NotReleased;
             }));
}

// By the way that a scan takes, which is not that of the building.
void Rules::JudgeHeld(const SetupDocument& setup, const FlashImage& flash)
{
    if (!WhatTheDeviceCannotHold(setup).empty() || !UnknownDeviceCodes(setup).empty())
        return;
    const SetupDocument held = TakeFromImage(ReadDeviceMap(DeviceCodesOf(flash)), flash).document;
    Require(WriteSetup(held.Modules) == WriteSetup(setup.Modules), Rule::Truth,
            "the device holds another setup");
}

void Rules::JudgeVerify(const Work& work, const VerifyResult& result, const FlashImage* base)
{
    using enum VerifyResult::Outcome;
    const FlashImage now = work.till.Flash();
    const FlashImage wanted = Wanted(*work.wanted, base ? *base : now);
    if (result.outcome == Same || result.outcome == Different)
        Require((FirstDifference(wanted, now, false) == 0) == (result.outcome == Same), Rule::Truth,
                result.outcome == Same ? "the device differs" : "the device does not differ");
    Require(result.outcome != NotRead || MayFail(work), Rule::Truth, "it failed, and nothing went wrong");
    JudgeEnd(work, false);
}

void Rules::JudgeDump(const FlashImage& image) const
{
    for (const std::string& path : saved_) {
        const auto dump = DumpOf(world_.disk.Content(path).value_or(""));
        Require(!path.ends_with(".mem") || (dump && dump->image == image), Rule::Truth,
                path + " holds another image");
    }
}

void Rules::JudgeScan(const SetupDocument& document, const FlashImage& flash)
{
    // Where the line names other parts than the image, the setup has those of the line.
    if (DeviceCodesOf(flash) != document.DeviceMap)
        return;
    const auto built = BuildSetupImage(document, &flash);
    const auto* const image = std::get_if<FlashImage>(&built);
    Require(!image || *image == flash, Rule::Truth,
            "a scan has made another setup than the till's, see address " +
                std::to_string(image ? FirstDifference(*image, flash, true) : 0));
}

void Rules::JudgeEnd(const Work& work, bool isWarned)
{
    Require(!work.isHolding || !work.till.line.IsHeld() || (isWarned && !work.till.isClean), Rule::Released,
            "the terminal leaves its devices alone still");
    Require(!isWarned || !work.till.isClean, Rule::Truth, "a line is said to be held that is not");
    Require(work.till.user == nullptr, Rule::Released, "the port is open still");
    const auto time = world_.loop.Worked() - work.start;
    Require(time < (work.till.isClean ? CleanBound : WorstBound), Rule::Bound, "it took " + Seconds(time));
    JudgeStop(work);
}

void Rules::JudgeStop(const Work& work) const
{
    if (!work.stop || work.isCommitting || world_.IsDead())
        return;
    const auto time = world_.loop.Worked() - *work.stop;
    Require(time < StopBound, Rule::Bound, "it went on for " + Seconds(time) + " after it was to stop");
}

}  // namespace kelvora::simulation
