// A session: steps, one after another, each of which somebody takes or something that happens. A step carries
// a number from which all that it chooses follows, so that it means the same when others before it are left
// out.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "eeprom/ModuleMemory.h"
#include "layout/CommandRules.h"
#include "simulation/Copies.h"
#include "simulation/Rules.h"
#include "simulation/UnsavedCopies.h"
#include "simulation/World.h"

namespace kelvora::simulation {

struct Step {
    std::size_t kind = 0;  ///< its place in the table of Session.cpp
    std::uint64_t number = 0;
};

/// "new 17; save 4": as a failure shows steps and a test names them. Throws std::invalid_argument.
std::string TextOf(const std::vector<Step>& steps);
std::vector<Step> StepsOf(std::string_view text);

/// The steps of a seed.
std::vector<Step> StepsOf(std::uint64_t seed, std::size_t count);

class Session {
public:
    explicit Session(std::uint64_t seed);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

    /// Throws Broken.
    void Play(const Step& step);

    /// What came to its end, and how often: a simulation in which nothing succeeds finds nothing.
    const std::map<std::string, int>& Done() const { return done_; }

private:
    friend struct StepTable;
    struct CommandLine;

    // In WindowSteps.cpp.
    void New();
    void EditKeys();
    void EditOptions();
    void Add();
    void Delete();
    void Move();
    void Undo();
    void Redo();
    CommandState Offered(const Window* window = nullptr) const;
    Window& Any();
    Window& AddWindow(SetupMode mode);
    void Edit(Window& window, SetupDocument after);
    void ChangeOptions(Window& window);

    // In FileSteps.cpp.
    void Open();
    void Save();
    void SaveAs();
    void Close();
    void Quit();
    void Terminate();
    bool SaveMeanwhile(const Window& window);
    void SaveWith(bool (SetupSession::*save)());
    static std::string FileText(const Window& window);
    bool MayClose(Window& window);
    void EndCopy(Copy& ended);
    void KeepUnsaved();
    void Start();
    void Answer(const RecoveryOffer& offer);

    // In LineSteps.cpp.
    void Scan();
    void Rescan();
    void Download();
    void Verify();
    void DumpSetup();
    void DumpDevice();
    void Restore();
    void ScanInto(Window& window, std::optional<WindowFile> before);
    void Transfer(Window& window, const WantedContent& wanted, const std::string& path);
    Rules::Work BeginWork(int port);
    void WaitIn(Rules::Work& work, RunningOperation& running);
    void WaitNoMore();
    void Stop(Rules::Work& work, RunningOperation& running);
    void EndNote(OperationNote& note);
    /// Nobody waits for what does not come; it is to stop then.
    bool IsLong(Rules::Work& work) const;

    // In SeriesSteps.cpp.
    struct Visits;
    void Series();
    void PrepareFile(const std::string& path, const Till& till);

    // In CommandSteps.cpp.
    void Command();
    void EditFiles();
    void ShowJournal();
    bool WriteFile(CommandLine& command, const std::vector<std::string>& arguments);
    std::optional<SetupDocument> SetupIn(const std::string& path) const;

    // In IdentitySteps.cpp.
    using Modules = std::vector<bench::IdentityBytes>;
    void WriteIdentity();
    void Wizard();
    void WatchModules(Rules::Work& work);
    void JudgeModules(const Rules::Work& work, const Modules& before,
                      const std::vector<AddressedBlock>& wanted, bool isTold);

    // In WorldSteps.cpp.
    void Kill();
    void KillAtWrite();
    void LineFault();
    void LineHeals();
    void RestartTill();
    void DiskFault();
    void DiskHeals();
    void SetClock();
    void Foreign();
    static void ReplaceTill(Till& till);
    void WorkBeside(const RunningOperation& running);
    void Meanwhile(Rules::Work& work, RunningOperation& running);
    void TryLine(const Rules::Work& work);
    void EndMeanwhile(Rules::Work& work, RunningOperation& running);

    void TakeDown();

    World world_;
    Rules rules_{world_};
    UnsavedCopies unsaved_{world_};
    std::array<std::unique_ptr<Copy>, 2> copies_;
    Copy* copy_ = nullptr;  ///< that is worked with
    std::map<std::string, int> done_;
};

}  // namespace kelvora::simulation
