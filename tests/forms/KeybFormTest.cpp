#include "fakes/FakePrompt.h"
#include "forms/Controls.h"
#include "keymap/forms/frmKeyb.h"
#include "platform/qt/Text.h"
#include "setup/PosCfg.h"

namespace kelvora {

class KeybForm : public testing::Test {
protected:
    void Open(ModuleKind kind, const std::string& map, char firstKeyNumber)
    {
        settings.Xchange = map + firstKeyNumber;
        form = std::make_unique<frmKeyb>(kind, texts, settings.Xchange, settings.Name);
        form->show();
    }

    QAbstractButton* Button(const char* name) const { return &Find<QAbstractButton>(*form, name); }

    void Click(const char* name, Qt::KeyboardModifiers modifiers = {}) const
    {
        QAbstractButton* const button = Button(name);
        QTest::mouseClick(button, Qt::LeftButton, modifiers, QPoint(8, button->height() / 2));
    }

    /// Presses keys where the focus is.
    void Press(std::initializer_list<Qt::Key> keys, Qt::KeyboardModifiers modifiers = {}) const
    {
        for (const Qt::Key key : keys)
            QTest::keyClick(form->focusWidget(), key, modifiers);
    }

    std::string Caption() const { return FromQString(Find<QGroupBox>(*form, "KeyControls").title()); }

    FakePrompt prompt;
    Texts texts{prompt};
    PosCfg settings{SetupMode::New, 1};
    std::unique_ptr<frmKeyb> form;
};

const std::string KeypadDefaults(FindModel(ModuleKind::ICCR)->defaultMap);

TEST_F(KeybForm, ClickedKeyTakesAType)
{
    Open(ModuleKind::ICCR, KeypadDefaults, 'a');
    Click("Keys0");
    EXPECT_EQ(Caption(), "Key 97");
    EXPECT_EQ(Button("Keys0")->accessibleName(), "Key 97, single key, row 1, column 1");
    EXPECT_TRUE(Button("KeyTypeOption0")->isChecked());
    const QRect single = Button("Keys0")->geometry();
    Click("KeyTypeOption3");
    EXPECT_EQ(Button("Keys0")->geometry().topLeft(), single.topLeft());
    EXPECT_EQ(Button("Keys0")->geometry().bottomRight(), Button("Keys5")->geometry().bottomRight());
    EXPECT_FALSE(Button("Keys1")->isVisible() || Button("Keys4")->isVisible() ||
                 Button("Keys5")->isVisible());

    Click("Keys15");
    EXPECT_FALSE(Button("KeyTypeOption1")->isEnabled());
    Click("UnusedCheck");
    EXPECT_TRUE(Button("UnusedCheck")->isChecked());
    EXPECT_FALSE(Button("KeyTypeOption0")->isEnabled());
    Click("Back");
    EXPECT_EQ(settings.Xchange, "4011001111111110XX");
}

TEST_F(KeybForm, FindsAKeyByItsNumber)
{
    Open(ModuleKind::ICCR, KeypadDefaults, 'a');
    Press({Qt::Key_F}, Qt::ControlModifier);
    Press({Qt::Key_2, Qt::Key_0, Qt::Key_Return});
    EXPECT_EQ(Says(*form, "Hint"), "No key has the number 20");
    Press({Qt::Key_9});
    EXPECT_THAT(Says(*form, "Hint"), StartsWith("Arrows")) << "of another number";
    Press({Qt::Key_7, Qt::Key_Enter});
    EXPECT_EQ(Caption(), "Key 97");
    Press({Qt::Key_4});
    EXPECT_TRUE(Button("KeyTypeOption3")->isChecked());
    Press({Qt::Key_F}, Qt::ControlModifier);
    Press({Qt::Key_Escape});
    EXPECT_TRUE(form->focusWidget() == Button("Keys0") && form->isVisible());
}

TEST_F(KeybForm, SelectedKeyAloneIsCyan)
{
    Open(ModuleKind::ICCR, KeypadDefaults, 1);
    const auto colour = [&](const char* name) {
        QAbstractButton* const cap = Button(name);
        return cap->grab().toImage().pixelColor(cap->width() / 2, cap->height() / 4);
    };
    Click("Keys0");
    Click("Keys1");
    EXPECT_EQ(colour("Keys1"), QColor(0, 255, 255));
    EXPECT_EQ(colour("Keys0"), colour("Keys7"));
    Click("Keys0", Qt::ControlModifier);
    EXPECT_EQ(colour("Keys0"), QColor(0, 255, 255));
    EXPECT_NE(colour("Keys1"), colour("Keys7"));
    EXPECT_EQ(Caption(), "2 keys");
}

TEST_F(KeybForm, DefaultsAfterAQuestion)
{
    Open(ModuleKind::KM096, std::string(96, '0'), 'a');
    EXPECT_EQ(Button("Keys0")->text(), "97");
    prompt.answers = {Answer::Cancel, Answer::Ok};
    Click("DefaultMapping");
    EXPECT_EQ(form->Session().Map(), std::string(96, '0'));
    Click("DefaultMapping");
    EXPECT_EQ(prompt.shown.size(), 2U);
    EXPECT_EQ(Button("Keys0")->text(), "1");
    EXPECT_FALSE(Button("Keys2")->isVisible());
    Click("Back");
    EXPECT_EQ(settings.Xchange, FindModel(ModuleKind::KM096)->defaultMap);
}

TEST_F(KeybForm, EscapeAsksBeforeItDiscards)
{
    Open(ModuleKind::ICCR, KeypadDefaults, 1);
    Press({Qt::Key_Down, Qt::Key_U});
    prompt.answers = {Answer::No, Answer::Yes};
    Press({Qt::Key_Escape});
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(form->Session().Map(), "0111111111111111XX");
    form->close();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !form->isVisible(); }));
    EXPECT_EQ(prompt.shown.size(), 2U);
    EXPECT_EQ(prompt.shown[0].style.defaultAnswer, Answer::No);
    EXPECT_EQ(settings.Xchange, KeypadDefaults + '\x01');
    form->show();
    EXPECT_EQ(form->Session().Map(), KeypadDefaults) << "read again at each showing";
    Press({Qt::Key_Escape});
    EXPECT_EQ(prompt.shown.size(), 2U) << "nothing to lose";
}

TEST_F(KeybForm, KeyboardAlone)
{
    Open(ModuleKind::ICCR, KeypadDefaults, 1);
    Press({Qt::Key_Space, Qt::Key_3, Qt::Key_Right});
    EXPECT_EQ(Caption(), "Key 3");
    Press({Qt::Key_Right}, Qt::ShiftModifier);
    EXPECT_EQ(Caption(), "2 keys");
    Press({Qt::Key_2, Qt::Key_Down, Qt::Key_Down, Qt::Key_U});
    EXPECT_EQ(form->Session().Map(), "3022110011111110XX") << "past the tall key to the bottom row";
    Press({Qt::Key_Z}, Qt::ControlModifier);
    EXPECT_EQ(form->Session().Map(), "3022110011111111XX");
    Press({Qt::Key_Z}, Qt::ControlModifier | Qt::ShiftModifier);
    Click("Back");
    EXPECT_EQ(settings.Xchange, "3022110011111110XX");
}

TEST_F(KeybForm, TabVisitsTheControlsAndEnterPressesButtonsAlone)
{
    Open(ModuleKind::ICCR, KeypadDefaults, 1);
    Press({Qt::Key_2});
    EXPECT_EQ(form->Session().Map(), "2111011111111111XX") << "the key with the ring, none being chosen";
    for (const char* name : {"FindKey", "KeyTypeOption1", "UnusedCheck", "Undo", "DefaultMapping", "Back",
                             "Keys0", "FindKey", "KeyTypeOption1", "UnusedCheck"}) {
        Press({Qt::Key_Tab});
        EXPECT_EQ(form->focusWidget()->objectName(), name);
        if (qobject_cast<QPushButton*>(form->focusWidget()) == nullptr)
            Press({Qt::Key_Return});
    }
    EXPECT_TRUE(form->isVisible());
    Press({Qt::Key_Tab, Qt::Key_Enter});
    EXPECT_EQ(form->Session().Map(), KeypadDefaults);
    Button("Back")->setFocus();
    Press({Qt::Key_Return});
    EXPECT_EQ(settings.Xchange, KeypadDefaults);
}

}  // namespace kelvora
