// What a download is about to do to a device: the image that it shall hold in place of the one just read, and
// what that changes. Judged before anything is written; a plan that is refused has a reason.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "flash/DumpText.h"
#include "flash/FlashImage.h"
#include "flash/ImageDifferences.h"
#include "flash/SetupImage.h"
#include "setup/SetupDifferences.h"
#include "setup/SetupDocument.h"

namespace kelvora {

/// What a device is to hold: the image of a setup, built over what the device holds; or a dump as it is, all
/// addresses.
using WantedContent = std::variant<SetupDocument, FlashDump>;

/// Why a device is not to be written.
struct TransferRefusal {
    enum class Reason {
        NoModules,      ///< the setup or the dump names none
        NotBuilt,       ///< the setup has no image, see `build`
        UnknownModule,  ///< the line has a module of an unknown code, at `position`
        OtherModules,   ///< the line's main modules are others, or in another order
        OtherTerminal,  ///< the terminal is not the one that it is for
        Last = OtherTerminal,
    };

    Reason reason = Reason::NoModules;
    int position = 0;  ///< on the line, from 0
    std::optional<BuildRefusal> build;
    std::string lineMap;      ///< device codes of the line, of OtherModules
    std::string wantedCodes;  ///< device codes that the setup or the dump is for, of OtherModules

    friend bool operator==(const TransferRefusal&, const TransferRefusal&) = default;
};

struct TransferPlan {
    std::string deviceMap;   ///< of the line
    std::string terminal{};  ///< the name of the line's terminal
    FlashImage held{};       ///< what the device holds
    FlashImage wanted{};     ///< what it is to hold

    /// What changes in the image: keys by number and options where the image names them, bytes elsewhere.
    std::vector<ImageDifference> imageChanges;
    /// What changes in the setup that the image makes and is not said by `imageChanges`: modules and their
    /// order, tracks, keys and options whose place moves. Empty where one of the images makes no setup.
    std::vector<SetupDifference> setupChanges;
    /// What the setup says and the device cannot hold; empty for a dump.
    std::vector<UnheldSetting> unheld;

    bool isOfSetup = false;        ///< `wanted` is a dump that was made from a setup
    std::size_t contentsLost = 0;  ///< bytes of key contents that the device holds and a dump would erase

    /// Whether the user is to be asked for the device's content besides.
    bool TakesContents() const { return isOfSetup || contentsLost > 0; }

    bool ChangesNothing() const { return held == wanted; }
};

/// Device codes of the lines that a dump is for: of the one that it comes from, as a backup tells it, and of
/// the one that its image names. The first is empty when the dump does not tell, so is the second for a
/// device that was never set up.
struct DumpModules {
    std::string line;
    std::string image;

    /// What to tell people: the line where it is known.
    const std::string& Known() const { return line.empty() ? image : line; }
};
DumpModules ModulesFor(const FlashDump& dump);

/// Whether only the user can say which line a dump is for.
bool NeedsUsersWord(const FlashDump& dump);

/// Why that content is for no line at all; nothing when there may be one.
std::optional<TransferRefusal> RefusalFor(const WantedContent& wanted);

/// Why it is not for a line of these modules; nothing when it is.
std::optional<TransferRefusal> RefusalFor(const WantedContent& wanted, std::string_view deviceMap);

/// The plan for a device that holds that image, on a line of these modules that RefusalFor allows.
TransferPlan PlanTransfer(const WantedContent& wanted, std::string deviceMap, const FlashImage& held);

}  // namespace kelvora
