// Keeps a copy of each setup that has unsaved changes, and offers what an earlier run has left.
#pragma once

#include <QObject>
#include <optional>

#include "layout/SetupDesk.h"
#include "recovery/Recovery.h"
#include "windows/forms/SetupWindows.h"

namespace kelvora {

class frmConfig;

class RecoveryForms final : public QObject {
    Q_OBJECT

public:
    /// How long a change may be without a copy: several at once make one copy.
    static constexpr std::chrono::milliseconds Delay{1000};

    /// All outlive the object; null for `store` keeps nothing. Copies that it finds at its end are left.
    RecoveryForms(const SetupDesk& desk, RecoveryStore* store, SetupWindows& setups);

    /// From now on the copy follows that window's changes; it goes with the window.
    void Watch(frmConfig& setup);

    /// Offers what earlier runs have left, in a dialog before `window`; does nothing where there is none.
    void Offer(QWidget& window);

    /// Makes at once each copy that is waited for, or that has failed.
    void KeepNow();

    /// The program is ended from outside: the copies are made at once, and stay.
    void Leave();

    /// The program is ended by the user, who has been asked about each change: no copy stays.
    void End();

signals:
    /// A line for the status bar: no copy can be kept, and why. Told once until one can be kept again.
    void failed(const QString& text);

private:
    void Later();
    void Keep(const frmConfig& setup);
    void Forget(int window);
    bool Take(const RecoveryOffer& offer);
    bool ThrowAway(const RecoveryOffer& offer);

    const SetupDesk& desk_;
    std::optional<Recovery> recovery_;
    SetupWindows& setups_;
    bool isWaiting_ = false;
    bool hasEnded_ = false;
    bool hasFailed_ = false;
};

}  // namespace kelvora
