// The windows that the help has no picture of.
#pragma once

#include "Scenes.h"
#include "forms/MainWindowFixture.h"
#include "keymap/forms/frmKeyb.h"
#include "layout/forms/OptionsDialogs.h"
#include "recovery/forms/RecoveryDialog.h"
#include "windows/forms/HelpWindow.h"

namespace kelvora {

// Room for a window on a small screen, in pixels of 100 %.
inline constexpr QSize SmallScreen(1024, 600);

/// Says what is wrong with each window, and whether one is larger than a small screen.
class Judge final : public Viewer {
public:
    using Faults = QStringList (*)(QWidget&);

    Judge(std::string where, std::vector<Faults> judges)
        : where_(std::move(where)), judges_(std::move(judges))
    {
    }

    void Take(QWidget& window, const QString& name) const override
    {
        QCoreApplication::processEvents();
        const std::string where = where_ + ' ' + name.toStdString() + ": ";
        for (const Faults& judge : judges_)
            for (const QString& fault : judge(window))
                ADD_FAILURE() << where << fault.toStdString();
        const QSize least = window.minimumSizeHint();
        EXPECT_EQ(least.boundedTo(SmallScreen), least) << where << least.width() << 'x' << least.height();
    }
    void Keep(QImage /*picture*/, const QString& /*name*/) const override {}

private:
    std::string where_;
    std::vector<Faults> judges_;
};

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
        InDialog<QInputDialog>(Command::FileMenuSaveAsTemplate,
                               [&](QWidget& form) { viewer.Take(form, "template-name"); });
        Trigger(Command::HelpMenuGuide);
        viewer.Take(*Opened<HelpWindow>(), "help");
        QApplication::setActiveWindow(window.get());
        for (const Command add : {Command::LayoutMenuAddKBMASTER, Command::LayoutMenuAddKB64})
            Trigger(add);
        Strip().FocusButton(StripButton::Master);
        InDialog<MasterOptionsDialog>(Command::LayoutMenuOptions,
                                      [&](QWidget& form) { viewer.Take(form, "master-options"); });
        InDialog<frmKeyb>(StripButton::KM064, [&](QWidget& form) {
            QTest::keyClick(form.focusWidget(), Qt::Key_U);  // one that is unused
            viewer.Take(form, "keys-64");
        });
        Trigger(Command::LayoutMenuAddICCR);
        QTest::keyClick(&Strip(), Qt::Key_Return);
        InDialog<frmKeyb>(StripButton::Keypad, [&](QWidget& form) { viewer.Take(form, "keys-iccr"); });
        for (const RecoveryDamage damage : {RecoveryDamage::None, RecoveryDamage::Content}) {
            RecoveryDialog recovery(program.texts, {{.id = path, .damage = damage}});
            recovery.show();
            viewer.Take(recovery, "recovery");
        }
    }
};

}  // namespace kelvora
