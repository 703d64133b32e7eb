#include "bench/posix/PlayedLine.h"

#include <chrono>
#include <utility>

namespace kelvora::bench {

namespace {

/// A file that is synced takes longer than a module may take to acknowledge: what modules have stored is kept
/// a little later.
constexpr std::chrono::milliseconds SaveDelay{250};

}  // namespace

PlayedLine::PlayedLine(PollLoop& loop, LineState memory, const LineOptions& options)
    : loop_(loop), saving_(loop), line_(loop, std::move(memory), options), pty_(loop, line_)
{
    line_.onStored = [this] { saving_.Set(loop_.Now() + SaveDelay, [this] { Save(); }); };
    line_.onCommit = [this] {
        saving_.Cancel();
        return Save();
    };
}

PlayedLine::~PlayedLine()
{
    if (saving_.IsSet())
        Save();
}

void PlayedLine::KeepIn(StateFile file, StateLock lock, std::ostream& err)
{
    keeper_.emplace(Keeper{std::move(file), std::move(lock), err});
}

void PlayedLine::TellOn(std::ostream& out, std::size_t number)
{
    line_.onHeld = [this, &out, number] {
        out << number << (line_.IsHeld() ? " held\n" : " released\n") << std::flush;
    };
}

bool PlayedLine::Save()
{
    if (!keeper_)
        return true;
    try {
        keeper_->file.Save(line_.Memory());
        return true;
    } catch (const FileError& error) {
        keeper_->err << "kelvora-bench: " << error.Path() << ": " << error.what() << '\n' << std::flush;
        return false;
    }
}

}  // namespace kelvora::bench
