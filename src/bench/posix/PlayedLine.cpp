#include "bench/posix/PlayedLine.h"

#include <chrono>
#include <utility>

namespace kelvora::bench {

namespace {

/// A file that is synced takes longer than a module may take to acknowledge: what modules have stored is kept
/// a little later.
constexpr std::chrono::milliseconds SaveDelay{250};

/// What the file says; without a file `fresh`, which is then written: a file that cannot be kept is told at
/// once. What is wrong with one names it.
LineState LoadState(Files& files, const std::string& path, const LineState& fresh)
{
    try {
        if (files.Exists(path))
            return ReadState(files.Read(path));
        files.Write(path, FormatState(fresh));
        return fresh;
    } catch (const StateError& error) {
        throw StateError(path + ", " + error.what());
    } catch (const FileError& error) {
        throw StateError(path + ": " + error.what());
    }
}

}  // namespace

PlayedLine::PlayedLine(PollLoop& loop, CloseWatch& closes, const LineOptions& options, Files& files,
                       std::ostream& err)
    : loop_(loop),
      files_(files),
      err_(err),
      saving_(loop),
      line_(loop, {}, options),
      pty_(loop, closes, line_)
{
    line_.TakeAway();
    line_.onStored = [this] { saving_.Set(loop_.Now() + SaveDelay, [this] { Save(); }); };
    line_.onCommit = [this] {
        saving_.Cancel();
        return Save();
    };
    line_.onHeld = [this] { Tell(line_.IsHeld() ? "held" : "released"); };
    line_.onCommand = [this](std::string_view command) {
        if (changes_)
            changes_->Hear(command);
    };
}

PlayedLine::~PlayedLine()
{
    if (saving_.IsSet())
        Save();
}

void PlayedLine::Put(const Till& till)
{
    TakeAway();
    LineState memory = FreshLine(till.modules, till.faults.seed);
    if (!till.statePath.empty()) {
        StateLock lock(till.statePath);
        memory = LoadState(files_, till.statePath, memory);
        keeper_.emplace(Keeper{till.statePath, std::move(lock)});
    }
    line_.Put(std::move(memory), till.name, till.faults);
}

void PlayedLine::TakeAway()
{
    if (saving_.IsSet()) {
        saving_.Cancel();
        Save();
    }
    line_.TakeAway();
    keeper_.reset();
}

void PlayedLine::Follow(std::vector<TillEvent> events)
{
    changes_.emplace(loop_, std::move(events), [this](const TillEvent& event) { Happen(event); });
}

void PlayedLine::Happen(const TillEvent& event)
{
    if (!event.till) {
        TakeAway();
        Tell("gone");
        return;
    }
    try {
        Put(*event.till);
        Tell("there " + event.till->name);
    } catch (const std::runtime_error& error) {  // StateError and std::system_error
        err_ << "kelvora-bench: " << error.what() << '\n' << std::flush;
        Tell("gone");
    }
}

bool PlayedLine::Save()
{
    if (!keeper_)
        return true;
    try {
        files_.Write(keeper_->path, FormatState(line_.Memory()));
        return true;
    } catch (const FileError& error) {
        err_ << "kelvora-bench: " << error.Path() << ": " << error.what() << '\n' << std::flush;
        return false;
    }
}

void PlayedLine::Tell(std::string_view event)
{
    if (onEvent)
        onEvent(event);
}

}  // namespace kelvora::bench
