#include "journal/Journal.h"

#include <algorithm>
#include <utility>

#include "platform/LocalTime.h"

namespace kelvora {

JournalContent ReadJournal(const JournalStore& store)
{
    JournalContent content;
    store.Read([&content](std::string_view text) { TakeJournalText(content, text); });
    return content;
}

Journal::Journal(JournalStore& store, JournalOrigin origin, Hash sha256, Clock clock)
    : store_(store), origin_(std::move(origin)), sha256_(std::move(sha256)), clock_(std::move(clock))
{
}

Journal::Begun Journal::Begin(std::string operation, int line) const
{
    Begun begun{{}, clock_()};
    begun.entry.time = ZonedTimeText(begun.start);
    begun.entry.who = origin_.who;
    begun.entry.program = origin_.program;
    begun.entry.version = origin_.version;
    begun.entry.operation = std::move(operation);
    begun.entry.line = line;
    return begun;
}

void Journal::End(Begun& begun) const
{
    // The clock may have been set back meanwhile.
    begun.entry.seconds = std::max(0.0, std::chrono::duration<double>(clock_() - begun.start).count());
    store_.Append(JournalLine(begun.entry));
}

}  // namespace kelvora
