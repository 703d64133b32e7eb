// How a module's keys and options go from one setup window to another, by the system's clipboard.
#include <QClipboard>
#include <QGuiApplication>

#include "layout/ModuleCopy.h"
#include "layout/forms/StripView.h"
#include "layout/forms/frmConfig.h"
#include "platform/qt/Text.h"
#include "setup/SetupTexts.h"

namespace kelvora {

void frmConfig::CopyFocusedModule()
{
    const auto button = strip_->FocusedButton();
    if (!button)
        return emit hinted(Message::ChooseModuleHint);
    QGuiApplication::clipboard()->setText(
        ToQString(CopyModule(session_.document, KindOfButton(MainButtonOf(*button)))));
    emit hinted(Message::ModuleCopied);
}

void frmConfig::PasteIntoModule()
{
    using Outcome = ModulePasting::Outcome;
    ModulePasting pasting = PasteModule(session_.document, FromQString(QGuiApplication::clipboard()->text()));
    switch (pasting.outcome) {
        case Outcome::NoModule:
            return emit hinted(Message::PasteNoModule);
        case Outcome::NotThere:
            return emit hinted(Message::PasteNotThere,
                               ToQString(ModuleName(session_.Desk().Catalogue(), pasting.kind)));
        case Outcome::Same:
            break;
        case Outcome::Done:
            Push(Message::UndoPaste, std::move(pasting.document));
            break;
    }
    strip_->FocusButton(ButtonOf(pasting.kind));
    if (pasting.outcome == Outcome::Same)
        emit hinted(Message::PasteSame);
}

}  // namespace kelvora
