// The windows that compare a setup with another file or with another open setup. Each shows its open setups
// as they stand, and goes with the one that it was opened from.
#pragma once

#include <QMenu>
#include <QPointer>
#include <utility>
#include <vector>

#include "picture/forms/SetupsDialog.h"
#include "windows/forms/SetupWindows.h"

namespace kelvora {

class frmConfig;

class SetupComparisons {
public:
    /// Both outlive the object.
    SetupComparisons(const UserFiles& files, SetupWindows& setups);
    ~SetupComparisons();
    SetupComparisons(const SetupComparisons&) = delete;
    SetupComparisons& operator=(const SetupComparisons&) = delete;

    /// Adds what the setup in front can be compared with: a file that is asked for, and the other open
    /// setups.
    void List(QMenu& menu);

    /// Compares it with another one that is in no window.
    void Compare(frmConfig& setup, NamedSetup other) { Open(setup, nullptr, std::move(other)); }

    /// Shows anew what has changed in the open setups.
    void Refresh();

    void Retranslate();

private:
    struct Comparison {
        QPointer<SetupsDialog> window;
        QPointer<frmConfig> setup;
        QPointer<frmConfig> other;  ///< null for a file, or when its window has closed
        NamedSetup otherSetup;
    };

    void CompareWithFile(frmConfig& setup);
    void Open(frmConfig& setup, frmConfig* other, NamedSetup otherSetup);

    const UserFiles& files_;
    SetupWindows& setups_;
    std::vector<Comparison> comparisons_;
};

}  // namespace kelvora
