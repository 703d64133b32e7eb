// The windows that the help has no picture of.
#pragma once

#include <QInputDialog>

#include "Scenes.h"
#include "forms/MainWindowFixture.h"
#include "keymap/forms/frmKeyb.h"
#include "layout/forms/OptionsDialogs.h"
#include "recovery/forms/RecoveryDialog.h"
#include "windows/forms/HelpWindow.h"

namespace kelvora {

// Room for a window on a small screen, in pixels of 100 %.
inline constexpr QSize SmallScreen(1024, 600);

class OtherForms : public MainWindowFixture {
public:
    OtherForms() : MainWindowFixture(true, nullptr, KELVORA_PROGRAM_FOLDER) {}
    void TestBody() override {}

    void Show(const std::string& language, const Viewer& viewer)
    {
        ASSERT_TRUE(program.language.Change(language));
        Start();
        window->resize(SmallScreen);
        viewer.Take(*window, "empty");
        Trigger(Command::FileMenuNew);
        viewer.Take(*window, "no-modules");
        InDialog<QInputDialog>([this] { Trigger(Command::FileMenuSaveAsTemplate); },
                               [&](QWidget& form) { viewer.Take(form, "template-name"); });
        Trigger(Command::HelpMenuGuide);
        for (QWidget* const top : QApplication::topLevelWidgets())
            if (dynamic_cast<HelpWindow*>(top))
                viewer.Take(*top, "help");
        QApplication::setActiveWindow(window.get());
        for (const Command add : {Command::LayoutMenuAddKBMASTER, Command::LayoutMenuAddKB64})
            Trigger(add);
        Strip().FocusButton(StripButton::Master);
        InDialog<MasterOptionsDialog>([this] { Trigger(Command::LayoutMenuOptions); },
                                      [&](QWidget& form) { viewer.Take(form, "master-options"); });
        InDialog<frmKeyb>([this] { Click(StripButton::KM064); },
                          [&](QWidget& form) { viewer.Take(form, "keys-64"); });
        Trigger(Command::LayoutMenuAddICCR);
        QTest::keyClick(&Strip(), Qt::Key_Return);
        InDialog<frmKeyb>([this] { Click(StripButton::Keypad); },
                          [&](QWidget& form) { viewer.Take(form, "keys-iccr"); });
        for (const RecoveryDamage damage : {RecoveryDamage::None, RecoveryDamage::Content}) {
            RecoveryDialog recovery(program.texts, {{.id = path, .damage = damage}});
            recovery.show();
            viewer.Take(recovery, "recovery");
        }
    }
};

}  // namespace kelvora
