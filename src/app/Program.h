// What the windows of one run of the program share. `main` makes one and hands it on.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/Language.h"
#include "app/MessageCatalogue.h"
#include "app/OperationNote.h"
#include "comms/Comms.h"
#include "comms/LineLink.h"
#include "comms/LineWork.h"
#include "platform/EventLoop.h"
#include "platform/FileDialogs.h"
#include "platform/Files.h"
#include "platform/Prompt.h"
#include "platform/SerialPort.h"
#include "setup/PosCfg.h"

namespace kelvora {

/// The outside world, as `main` or a test provides it. Must outlive the Program.
struct Platform {
    Files& files;
    Prompt& prompt;
    FileDialogs& fileDialogs;
    EventLoop& eventLoop;

    /// The serial ports behind COM1 to COM4; null, or none at all, where there is none.
    std::array<SerialPort*, LineCount> ports{};
};

class Program {
public:
    Program(Platform world, LanguageFolders folders);

    /// Reads the language and its texts. False, after a message, when the program cannot go on.
    bool Load();

    /// Speaks another language from now on and makes it the person's own choice. False, after a message, when
    /// that language's texts cannot be read; nothing has changed then. A choice that cannot be kept gives a
    /// message and holds for this run.
    bool ChangeLanguage(const std::string& language);

    /// Languages whose message files are there.
    std::vector<std::string> Languages() const;

    /// Whether COM`port` (1 to 4) can be used: it is open already, or can be opened. A line on the network is
    /// there when it is named: connecting would take too long to find out.
    bool IsPortAvailable(int port) const;

    /// The text of the status bar's operation panel while nothing runs; message 590, looked up once.
    const std::string& IdleText() const { return idleText_; }

    /// The running number of the next setup window: the first one gets 1.
    std::int16_t NextPanelIndex() { return ++windowCounter_; }

    /// Shows a message of the catalogue under the product's name; `extra` stands on lines of its own below
    /// it.
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

    /// Whether a window other than the one of the file `current` holds that file; unset where there are no
    /// windows.
    std::function<bool(std::string_view path, std::string_view current)> isOpenElsewhere;

    /// The devices can be reached: there is a terminal link. What talks to them is disabled without it.
    bool HasLink() const;

    /// Where the person's copies of what devices held are kept; made when there is none.
    std::string dataFolder;

    /// Where operations on devices are kept; null keeps none. Outlives the object.
    const Journal* journal = nullptr;

    /// An operation on line 1 to 4 that begins now; `operation` is one of JournalOperation.
    OperationNote Begin(const char* operation, int line) const;

    /// Keeps it. A journal that cannot be kept gives a message, once for each reason in a row.
    void Keep(OperationNote& note);

    /// The ports that a simulation of this program answers, COM1 first.
    std::array<bool, LineCount> simulated{};

    /// The terminal links of the lines, and the layer above them.
    std::array<std::unique_ptr<LineLink>, LineCount> channels;
    Comms comms;

    /// A device operation runs: module clicks, layout commands and the close question wait for its end.
    bool busy = false;

    /// The running operation waits for the user's answer to a question: its line rests meanwhile.
    bool asking = false;

    /// The user has asked the running operation to stop. Whoever starts an operation clears it.
    bool interruptionRequested = false;

    /// What the status bar says of the running operation; empty while none runs.
    struct Running {
        std::string status;
        std::string operation;
    };
    Running running;

    /// Called when an operation has begun, asks, has its answer, or has ended, and as it goes on. They may be
    /// empty.
    std::function<void()> onOperation;
    std::function<void(const LineProgress&)> onProgress;

private:
    void TakeCatalogue(MessageCatalogue loaded);

    std::string idleText_;
    std::string journalProblem_;  ///< the last one that was told
};

}  // namespace kelvora
