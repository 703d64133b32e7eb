#include "windows/forms/RecoveryForms.h"

#include <QPointer>
#include <utility>

#include "layout/forms/frmConfig.h"
#include "platform/Encoding.h"
#include "platform/qt/Text.h"
#include "recovery/forms/RecoveryDialog.h"
#include "setup/SetupWriter.h"

namespace kelvora {

namespace {

int NumberOf(const frmConfig& setup)
{
    return setup.Session().settings.PanelIndex;
}

// A window that is being filled anew has no name of its own for so long.
std::string NameOf(const SetupSession& session)
{
    if (!session.IsScanning())
        return session.settings.Name;
    return session.File().path.empty() ? "PosConfiguration" : DisplayName(session.File().path);
}

}  // namespace

RecoveryForms::RecoveryForms(const SetupDesk& desk, RecoveryStore* store, SetupWindows& setups)
    : desk_(desk), setups_(setups)
{
    if (store)
        recovery_.emplace(*store, desk.files.OnDisk());
}

void RecoveryForms::Watch(frmConfig& setup)
{
    if (!recovery_)
        return;
    connect(&setup, &frmConfig::edited, this, &RecoveryForms::Later);
    connect(&setup, &frmConfig::fileChanged, this, &RecoveryForms::Later);
    connect(&setup, &QObject::destroyed, this, [this, window = NumberOf(setup)] { Forget(window); });
}

// Not begun anew by the next change: a user who never pauses has a copy all the same.
void RecoveryForms::Later()
{
    if (std::exchange(isWaiting_, true))
        return;
    desk_.eventLoop.After(Delay, [forms = QPointer<RecoveryForms>(this)] {
        if (!forms)
            return;
        forms->isWaiting_ = false;
        forms->KeepNow();
    });
}

void RecoveryForms::KeepNow()
{
    if (!recovery_ || hasEnded_)
        return;
    std::string problem;
    for (const frmConfig* setup : setups_.All()) {
        try {
            Keep(*setup);
        } catch (const FileError& error) {
            problem = TextFromPath(error.Path()) + ": " + error.what();
        }
    }
    if (!problem.empty() && !hasFailed_)
        emit failed(ToQString(desk_.Words().Word(Message::RecoveryNotKept) + problem));
    hasFailed_ = !problem.empty();
    if (hasFailed_)
        Later();
}

void RecoveryForms::Keep(const frmConfig& setup)
{
    const auto unsaved = setup.Unsaved();
    if (!unsaved)
        return recovery_->Drop(NumberOf(setup));
    const SetupSession& session = setup.Session();
    recovery_->Keep(
        NumberOf(setup),
        {{}, NameOf(session), session.File().path, session.HeldAs().saved, WriteSetup(unsaved->Modules)});
}

void RecoveryForms::Forget(int window)
{
    if (!hasEnded_)
        recovery_->Drop(window);
}

void RecoveryForms::Leave()
{
    KeepNow();
    hasEnded_ = true;
}

void RecoveryForms::End()
{
    if (recovery_ && !hasEnded_)
        recovery_->DropAll();
    hasEnded_ = true;
}

void RecoveryForms::Offer(QWidget& window)
{
    if (!recovery_)
        return;
    std::vector<RecoveryOffer> offers;
    try {
        offers = recovery_->Offers();
    } catch (const FileError& error) {
        desk_.Words().TellOf(Message::RecoveryNotFound, error);
    }
    if (!offers.empty()) {
        RecoveryDialog dialog(desk_.Words(), std::move(offers), &window);
        dialog.take = [this](const RecoveryOffer& offer) { return Take(offer); };
        dialog.throwAway = [this](const RecoveryOffer& offer) { return ThrowAway(offer); };
        dialog.exec();
    }
    recovery_->Release();
}

// In a window first: the copy is there until that window has its own.
bool RecoveryForms::Take(const RecoveryOffer& offer)
{
    const frmConfig& setup =
        setups_.OpenUnsaved({offer.base, MakeSetupFile(offer.copy.path), offer.copy.name}, offer.document);
    try {
        recovery_->Take(offer, NumberOf(setup));
    } catch (const FileError& error) {
        desk_.Words().TellOf(Message::RecoveryNotMoved, error);
    }
    return true;
}

bool RecoveryForms::ThrowAway(const RecoveryOffer& offer)
{
    try {
        recovery_->ThrowAway(offer);
        return true;
    } catch (const FileError& error) {
        desk_.Words().TellOf(Message::RecoveryNotMoved, error);
        return false;
    }
}

}  // namespace kelvora
