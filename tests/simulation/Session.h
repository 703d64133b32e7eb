// A session: steps, one after another, each of which somebody takes or something that happens. A step carries
// a number from which all that it chooses follows, so that it means the same when others before it are left
// out.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "simulation/Copies.h"
#include "simulation/Rules.h"
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

    /// How much was done: commits into tills, and saves.
    int Commits() const { return world_.tills[0]->commits + world_.tills[1]->commits; }
    int Saves() const { return saves_; }

private:
    friend struct StepTable;
    struct CommandLine;

    // In WindowSteps.cpp.
    void New();
    void Open();
    void EditKeys();
    void EditOptions();
    void Add();
    void Delete();
    void Move();
    void Undo();
    void Redo();
    void Save();
    void SaveAs();
    void Close();
    void SaveWith(bool (SetupSession::*save)());
    Window& Any();
    Window& AddWindow(SetupMode mode);
    void Edit(Window& window, SetupDocument after);
    void ChangeOptions(Window& window);

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
    void EndNote(OperationNote& note);

    // In CommandSteps.cpp.
    void Command();
    void WriteIdentity();
    void WriteFile(CommandLine& command, const std::vector<std::string>& arguments);
    void Series();

    // In WorldSteps.cpp.
    void Kill();
    void LineFault();
    void LineHeals();
    void RestartTill();
    void DiskFault();
    void DiskHeals();
    void SetClock();
    void Foreign();

    void TakeDown();

    World world_;
    Rules rules_{world_};
    std::array<std::unique_ptr<Copy>, 2> copies_;
    Copy* copy_ = nullptr;  ///< that is worked with
    bool isKillStep_ = false;
    int saves_ = 0;
};

}  // namespace kelvora::simulation
