#include "forms/MainWindowFixture.h"
#include "setup/SetupWriter.h"
#include "windows/forms/TemplatesDialog.h"

namespace kelvora {

class TemplatesForm : public MainWindowFixture {
protected:
    // The program brings none.
    TemplatesForm() : MainWindowFixture(false, nullptr, "/nowhere")
    {
        Start();
        Trigger(Command::FileMenuNew);
        Trigger(Command::LayoutMenuAddKBMASTER);
    }

    void InTemplates(const std::function<void(TemplatesDialog&, SetupCards&)>& act)
    {
        InDialog<TemplatesDialog>(Command::FileMenuNewFromTemplate, [&](TemplatesDialog& dialog) {
            auto& cards = Find<SetupCards>(dialog);
            EXPECT_TRUE(QTest::qWaitFor([&] { return !cards.IsReading(); }, LongestWaitMs));
            act(dialog, cards);
        });
    }
};

TEST_F(TemplatesForm, ASetupIsKeptBegunWithRenamedAndRemoved)
{
    const SetupDocument kept = Session().document;
    std::string file = At("templates/Corner Shop.dat");
    for (const Answer replaces : {Answer::Yes, Answer::No}) {
        prompt.answers = {replaces};
        InDialog<QInputDialog>(Command::FileMenuSaveAsTemplate, [](QInputDialog& dialog) {
            EXPECT_EQ(dialog.textValue(), "PosConfiguration1");
            dialog.setTextValue(" Corner Shop ");
            dialog.accept();
        });
        EXPECT_EQ(files.Read(file), WriteSetup(kept.Modules) + "\r\n");
        Trigger(Command::LayoutMenuAddMCR);
    }
    EXPECT_EQ(prompt.shown.size(), 1U) << "only what is there is asked about";

    InTemplates([](TemplatesDialog&, SetupCards& cards) { QTest::keyClick(&cards, Qt::Key_Return); });
    ASSERT_EQ(window->AllSetups().size(), 2U);
    const frmConfig& begun = *window->ActiveSetup();
    EXPECT_EQ(begun.Session().document, kept);
    EXPECT_EQ(begun.windowTitle(), "PosConfiguration2[*]");
    EXPECT_TRUE(begun.Session().settings.FileName.empty());
    EXPECT_FALSE(begun.IsChanged());

    files.Write(At("templates/Taken.dat"), "");
    InTemplates([&](TemplatesDialog& dialog, SetupCards& cards) {
        const auto rename = [&](const char* wanted, const std::function<void()>& begin) {
            EXPECT_TRUE(files.Exists(file));
            InDialog<QInputDialog>(begin, [&](QInputDialog& name) {
                EXPECT_EQ(name.textValue(), "Corner Shop");
                name.setTextValue(wanted);
                name.accept();
            });
        };
        rename("Taken", [&] { QTest::keyClick(&cards, Qt::Key_F2); });
        rename("Kiosk", [&] { Press(dialog, "Rename"); });
        EXPECT_EQ(files.Read(At("templates/Taken.dat")), "") << "another's stays as it is";
        EXPECT_FALSE(files.Exists(file));
        files.Remove(At("templates/Taken.dat"));
        file = Folder() + "/templates/Kiosk.dat";
        EXPECT_EQ(dialog.Chosen(), file);
        prompt.answers = {Answer::No, Answer::Yes};
        Press(dialog, "Remove");
        EXPECT_TRUE(files.Exists(file));
        QTest::keyClick(&cards, Qt::Key_Delete);
        EXPECT_FALSE(files.Exists(file));
        EXPECT_FALSE(IsUsable(dialog, "Create"));
    });
}

TEST_F(TemplatesForm, AModuleIsPastedAsOneStep)
{
    Strip().FocusButton(StripButton::Master);
    Session().document.Modules.front().KeyMap.front() = '0';
    Trigger(Command::EditMenuCopy);
    Trigger(Command::FileMenuNew);
    Trigger(Command::EditMenuPaste);
    EXPECT_EQ(window->Status().currentMessage().toStdString(),
              std::string(Message::PasteNotThere.fallback) + "Main Keyboard (KM096)");
    EXPECT_FALSE(IsEnabled(Command::EditMenuCopy)) << "there is nothing to copy";
    Trigger(Command::LayoutMenuAddKBMASTER);
    Trigger(Command::EditMenuPaste);
    EXPECT_EQ(Modules().front().KeyMap.front(), '0');
    EXPECT_EQ(window->ActiveSetup()->UndoName()->id, Message::UndoPaste.id);
    Trigger(Command::EditMenuUndo);
    EXPECT_EQ(Modules().front().KeyMap.front(), '1');
}

}  // namespace kelvora
