// Every window in every language: all its texts can be read, and each mnemonic belongs to one control.
#include <QDir>
#include <QInputDialog>
#include <QTranslator>

#include "Scenes.h"
#include "forms/CutTexts.h"
#include "forms/MainWindowFixture.h"
#include "keymap/forms/frmKeyb.h"
#include "layout/forms/OptionsDialogs.h"
#include "recovery/forms/RecoveryDialog.h"
#include "windows/forms/HelpWindow.h"
#include "windows/forms/QtTexts.h"

namespace kelvora {
namespace {

// Room for a window on a small screen, in pixels of 100 %.
constexpr QSize SmallScreen(1024, 600);

QStringList Languages()
{
    QStringList codes;
    for (const QString& file : QDir(KELVORA_PROGRAM_FOLDER).entryList({QStringLiteral("Zel???.mes")}))
        codes << file.mid(3, 3);
    return codes;
}

class Proofreader final : public Viewer {
public:
    explicit Proofreader(QString language) : language_(std::move(language)) {}

    void Take(QWidget& window, const QString& name) const override
    {
        QCoreApplication::processEvents();
        const std::string where = (language_ + ' ' + name + ": ").toStdString();
        for (const QString& cut : CutTexts(window))
            ADD_FAILURE() << where << cut.toStdString();
        for (const QString& shared : SharedMnemonics(window))
            ADD_FAILURE() << where << shared.toStdString();
        const QSize least = window.minimumSizeHint();
        EXPECT_TRUE(least.width() <= SmallScreen.width() && least.height() <= SmallScreen.height())
            << where << least.width() << 'x' << least.height();
    }
    void Keep(QImage /*picture*/, const QString& /*name*/) const override {}

private:
    QString language_;
};

class LanguageForms : public testing::TestWithParam<QString> {
protected:
    LanguageForms() { TranslateQt(qt, GetParam().toStdString()); }

    QTranslator qt;
    const Proofreader proofreader{GetParam()};
};

TEST_P(LanguageForms, WindowsOfTheHelpCanBeRead)
{
    TakeAll(GetParam().toStdString(), {KELVORA_PROGRAM_FOLDER, KELVORA_EXAMPLES}, proofreader);
}

// What the help has no picture of.
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

TEST_P(LanguageForms, OtherWindowsCanBeRead)
{
    OtherForms().Show(GetParam().toStdString(), proofreader);
}

INSTANTIATE_TEST_SUITE_P(All, LanguageForms, testing::ValuesIn(Languages()),
                         [](const auto& language) { return language.param.toStdString(); });

// The proof that the two above can fail.
TEST(CutTexts, AreFound)
{
    QWidget window;
    window.resize(400, 300);
    QLabel label(QStringLiteral("A text"), &window);
    QPushButton button(QStringLiteral("A &button with a text"), &window);
    QPushButton other(QStringLiteral("An&other &button"), &window);
    label.setGeometry(0, 0, 200, 40);
    button.setGeometry(0, 50, 380, 40);
    other.setGeometry(0, 100, 380, 40);
    window.show();
    EXPECT_TRUE(CutTexts(window).isEmpty());
    EXPECT_TRUE(SharedMnemonics(window).isEmpty());
    button.resize(60, 40);
    EXPECT_EQ(CutTexts(window).size(), 1);
    label.setText(QStringLiteral("A text that is far longer than two hundred pixels allow"));
    EXPECT_EQ(CutTexts(window).size(), 2);
    other.move(300, 100);
    EXPECT_EQ(CutTexts(window).size(), 3) << "it stands out of the window";
    other.setText(QStringLiteral("Another &button"));
    EXPECT_EQ(SharedMnemonics(window).size(), 1);
}

}  // namespace
}  // namespace kelvora
