// Opening a journal of 100,000 entries: reading its files, and taking every line apart.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "journal/posix/JournalFolder.h"
#include "platform/posix/PosixFiles.h"

namespace kelvora {

namespace {

constexpr int Entries = 100'000;

/// In seconds.
constexpr double MostTime = 0.5;

std::string UsualLine(int number)
{
    JournalEntry entry;
    entry.time = "2026-03-09T07:05:00+01:00";
    entry.who = "anna";
    entry.program = "kelvora-cli";
    entry.version = "1.2.3";
    entry.operation = JournalOperation::Download;
    entry.line = number % 4 + 1;
    entry.device = "/dev/serial/by-id/usb-adapter-A1";
    entry.terminal = "TILL " + std::to_string(number);
    entry.modules = "KM096, KM064, MCR, ICCR";
    entry.file = "/home/anna/setups/shop12/till0712.dat";
    entry.sha256 = std::string(64, 'a');
    entry.crcBefore = 1;
    entry.crcAfter = 2;
    entry.result = JournalEntry::Result::Done;
    entry.backup = "/home/anna/.local/share/Kelvora/backups/2026-03-09 07-05-00 COM1.mem";
    entry.message = "The download is done. The old content is kept in: " + entry.backup;
    entry.seconds = 31.2;
    return JournalLine(entry);
}

// Files as full as the program leaves them.
void Fill(const std::string& folder)
{
    PosixFiles files;
    std::string text;
    int full = 0;
    for (int number = 0; number < Entries; ++number) {
        const std::string line = UsualLine(number);
        if (text.size() + line.size() > JournalFolder::FileLimit) {
            files.Write(folder + "/journal-0000" + std::to_string(++full) + ".jsonl", text);
            text.clear();
        }
        text += line;
    }
    files.Write(folder + "/journal.jsonl", text);
}

void OpenJournal(benchmark::State& state)
{
    std::string folder = std::filesystem::temp_directory_path() / "kelvora-journal-XXXXXX";
    if (!mkdtemp(folder.data()))
        return state.SkipWithError("no folder for the journal");
    Fill(folder);
    PosixFiles files;
    const JournalFolder journal(files, folder);
    double least = MostTime * 100;
    for ([[maybe_unused]] auto iteration : state) {
        const auto start = std::chrono::steady_clock::now();
        const JournalContent content = ReadJournal(journal);
        least =
            std::min(least, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        if (content.entries.size() != Entries || content.damaged != 0)
            state.SkipWithError("the journal was not read whole");
    }
    std::filesystem::remove_all(folder);
    state.counters["least seconds"] = least;
    if (least > MostTime)
        state.SkipWithError("opening 100,000 entries takes more than half a second");
}
BENCHMARK(OpenJournal)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(2);

}  // namespace

}  // namespace kelvora
