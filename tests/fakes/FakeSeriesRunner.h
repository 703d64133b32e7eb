// A series' program on one line, whose words the test says.
#pragma once

#include <string>

#include "series/SeriesEvent.h"
#include "series/qt/SeriesProcess.h"

namespace kelvora {

class FakeSeriesRunner final : public SeriesRunner {
public:
    void Start(const QStringList& given) override { arguments = given; }
    void StopAfter() override { ++stopsAfter; }
    void StopNow() override { ++stopsNow; }

    void Say(const SeriesEvent& event) const
    {
        std::string line = SeriesLine(event);
        line.pop_back();
        onLine(line);
    }

    /// A till's verdict on that line.
    static SeriesEvent Verdict(int line, const std::string& terminal, JournalEntry::Result result)
    {
        SeriesEvent event{.kind = SeriesEvent::Kind::Result, .line = line, .terminal = terminal};
        event.entry.time = "2026-03-09T07:05:00+01:00";
        event.entry.operation = JournalOperation::Download;
        event.entry.line = line;
        event.entry.terminal = terminal;
        event.entry.modules = "KM096, KM064, MCR, ICCR";
        event.entry.file = "/home/shop/till.dat";
        event.entry.result = result;
        event.entry.backup = "/home/shop/.local/share/Kelvora/backups/2026-03-09 07-05-00 COM1.mem";
        event.entry.seconds = 31.26;
        if (result == JournalEntry::Result::Done)
            event.changes = {"MCR, auto-read: yes -> no", "Slave Keyboard, Key 74: single key -> unused"};
        if (result == JournalEntry::Result::Failed)
            event.entry.message = "The modules on the line are not those of the setup.";
        return event;
    }

    QStringList arguments;
    int stopsAfter = 0;
    int stopsNow = 0;
};

}  // namespace kelvora
