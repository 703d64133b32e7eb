// What the windows of one run work with.
#pragma once

#include <string>

#include "catalogue/UserFiles.h"
#include "comms/RunningOperation.h"
#include "journal/OperationNotes.h"
#include "platform/EventLoop.h"
#include "ports/Lines.h"
#include "setup/SetupFileNames.h"

namespace kelvora {

/// The program or a test makes one of it, and all that it names outlives the windows.
struct SetupDesk {
    UserFiles& files;
    Lines& lines;
    RunningOperation& operation;
    OperationNotes& notes;
    EventLoop& eventLoop;

    /// The main window's settings object: the program's current settings and the defaults of new windows.
    PosCfg& defaults;

    /// The running number of the next setup window: the first one gets 1.
    std::int16_t nextPanelIndex = 1;

    OpenElsewhere isOpenElsewhere{};

    /// Where the person's copies of what devices held are kept; made when there is none.
    std::string dataFolder{};

    /// Where the program's own templates are.
    std::string templateFolder{};

    const Texts& Words() const { return files.Words(); }
    const MessageCatalogue& Catalogue() const { return Words().Catalogue(); }
};

}  // namespace kelvora
