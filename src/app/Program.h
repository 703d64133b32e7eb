// What the windows of one run of the program share. `main` makes one and hands it on.
#pragma once

#include <cstdint>
#include <string>

#include "app/Language.h"
#include "app/MessageCatalogue.h"
#include "platform/EventLoop.h"
#include "platform/FileDialogs.h"
#include "platform/Files.h"
#include "platform/Prompt.h"
#include "setup/PosCfg.h"

namespace kelvora {

/// The outside world, as `main` or a test provides it. Must outlive the Program.
struct Platform {
    Files& files;
    Prompt& prompt;
    FileDialogs& fileDialogs;
    EventLoop& eventLoop;
};

class Program {
public:
    Program(Platform world, LanguageFolders folders);

    /// Reads the language and its texts. False, after a message, when the program cannot go on.
    bool Load();

    /// The text of the status bar's operation panel while nothing runs; message 590, looked up once.
    const std::string& IdleText() const { return idleText_; }

    /// The running number of the next setup window: the first one gets 1.
    std::int16_t NextPanelIndex() { return ++windowCounter_; }

    Answer Show(const MessageId& message, BoxStyle style, std::string_view extra = {}) const;

private:
    // Before `main`, which takes number 0.
    std::int16_t windowCounter_ = -1;

public:
    Platform world;
    LanguageFolders folders;
    MessageCatalogue catalogue;

    /// The main window's settings object: the program's current settings and the defaults of new windows.
    PosCfg main;

    /// How the next setup window is filled.
    kelvora::SetupMode setupMode = kelvora::SetupMode::New;

    /// A device operation runs: module clicks, layout commands and the close question wait for its end.
    bool busy = false;

    /// The user has asked the running operation to stop.
    bool interruptionRequested = false;

private:
    std::string idleText_;
};

}  // namespace kelvora
