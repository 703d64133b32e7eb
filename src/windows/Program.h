// One run of the program with its windows: the few things that they work with. `main` or a test makes one,
// and the main window hands each thing to those who need it.
#pragma once

#include <string>

#include "catalogue/Texts.h"
#include "catalogue/UserFiles.h"
#include "comms/RunningOperation.h"
#include "journal/OperationNotes.h"
#include "layout/SetupDesk.h"
#include "platform/EventLoop.h"
#include "ports/Lines.h"
#include "recovery/RecoveryStore.h"
#include "setup/PosCfg.h"
#include "windows/Language.h"

namespace kelvora {

/// The outside world, as `main` or a test provides it. Must outlive the Program.
struct Platform {
    Files& files;
    Prompt& prompt;
    FileDialogs& fileDialogs;
    EventLoop& eventLoop;
    Lines::Ports ports{};
    const kelvora::Journal* journal = nullptr;  ///< where operations on devices are kept; null keeps none
    std::string dataFolder{};                   ///< see SetupDesk
    RecoveryStore* recovery = nullptr;          ///< where unsaved setups are kept; null keeps none
};

struct Program {
    Program(Platform platform, const LanguageFolders& folders);

    Platform world;
    Texts texts;
    PosCfg main;  ///< see SetupDesk::defaults
    UserFiles files;
    Language language;
    kelvora::Lines lines;
    RunningOperation operation;
    OperationNotes notes;
    SetupDesk desk;
};

}  // namespace kelvora
