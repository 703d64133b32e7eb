// Every window in every language: all its texts can be read, each mnemonic belongs to one control, and each
// control has a name and is reached by the Tab key.

#include "forms/OtherForms.h"
#include "forms/WindowFaults.h"
#include "windows/forms/QtTexts.h"

namespace kelvora {
namespace {

QStringList Languages()
{
    QStringList codes;
    for (const QString& file : QDir(KELVORA_PROGRAM_FOLDER).entryList({QStringLiteral("Zel???.mes")}))
        codes << file.mid(3, 3);
    return codes;
}

class LanguageForms : public testing::TestWithParam<QString> {
protected:
    LanguageForms() { TranslateQt(qt, GetParam().toStdString()); }

    QTranslator qt;
    const Judge proofreader{GetParam().toStdString(), {CutTexts, SharedMnemonics, Nameless, Unreached}};
};

TEST_P(LanguageForms, WindowsOfTheHelpCanBeRead)
{
    TakeAll(GetParam().toStdString(), {KELVORA_PROGRAM_FOLDER, KELVORA_EXAMPLES}, proofreader);
}

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
    EXPECT_TRUE(CutTexts(window).isEmpty() && SharedMnemonics(window).isEmpty());
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
