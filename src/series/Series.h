// Many tills on one line, one after another: wait for a terminal, bring the setup into it, tell, wait until
// it is taken away. A till is worked on once: only when two calls in a row have met silence, when the port
// has gone, or when another name answers, is it another one that is found.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "comms/LineDrivers.h"
#include "flash/FlashTransfer.h"
#include "journal/OperationNote.h"
#include "series/SeriesEvent.h"
#include "series/SetupChoice.h"

namespace kelvora {

/// What a series needs of its surroundings; all must be set.
struct SeriesWorld {
    std::function<ChosenSetup(const std::string& terminalName)> choose;
    /// As in TransferSteps.
    std::function<std::string(const TransferPlan& plan)> keepBackup;
    /// How often the user has asked for a stop: once ends the series after the present till, twice stops the
    /// work on it.
    std::function<int()> stops;
    /// Of the till that is worked on from now on.
    std::function<OperationNote()> beginNote;
    std::function<void(const SeriesEvent&)> tell;
};

class Series {
public:
    /// How long a call for a terminal waits for its answer, and how soon the next one follows; longer on slow
    /// lines, and as long as the target's own timeout where it has one.
    static constexpr std::chrono::milliseconds CallTime{800};
    /// The same while a till is to be taken away: long enough for the link to ask twice.
    static constexpr std::chrono::milliseconds GoneCallTime{1200};

    /// `count` is after how many tills it ends; 0 for never. `comms` outlives the object.
    Series(Comms& comms, LineTarget target, int count, SeriesWorld world);

    /// Works until the count is reached or the user stops.
    SeriesCounts Run();

private:
    enum class Call {
        Answered,
        Damaged,  ///< something came, but no answer
        Silent,
        PortAway,
    };

    std::optional<std::string> FindTerminal();
    Call CallTerminal(LineWork& work, std::string& name);
    LineResult CallUntil(std::chrono::milliseconds callTime,
                         const std::function<bool(Call, const std::string&)>& isEnd);
    void Pause();
    /// False when another terminal answers in place of the one that was found.
    bool Work(const std::string& name);
    TransferResult Transfer(const std::string& name, const ChosenSetup& setup);
    void Judge(const JournalEntry& entry, std::vector<std::string> changes);
    /// The name of the next terminal where one has taken its place already.
    std::optional<std::string> WaitUntilGone(const std::string& name);
    bool IsOver() const;
    void Tell(SeriesEvent::Kind kind, const std::string& message = {});

    Comms& comms_;
    LineTarget target_;
    int count_;
    SeriesWorld world_;
    SeriesCounts counts_;
    bool isPortAway_ = false;  ///< since the till was worked on
};

}  // namespace kelvora
