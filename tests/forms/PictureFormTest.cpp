#include <QtPrintSupport>

#include "forms/MainWindowFixture.h"
#include "picture/forms/PictureView.h"
#include "picture/forms/SetupsDialog.h"

namespace kelvora {
namespace {

class PictureForm : public MainWindowFixture {
protected:
    PictureForm()
    {
        files.Write(path, "[Kelvora]\n[KM096]\nFiscal = YES\n[KM064]\n[MCR]\n");
        Start();
        window->OpenFiles({PathToQString(path)});
    }

    void Export(const std::string& name)
    {
        Choose(name);
        Trigger(Command::FileMenuExport);
    }

    QMenu& CompareMenu()
    {
        auto& menu = Find<QMenu>(*window, "FileMenuCompare");
        emit menu.aboutToShow();
        return menu;
    }

    void CompareWithFile(const std::string& text)
    {
        files.Write(At("other.dat"), text);
        Choose("other.dat");
        CompareMenu().actions().constFirst()->trigger();
    }

    static SetupsDialog* Comparison() { return Opened<SetupsDialog>(); }
};

std::string ViewOf(const SetupsDialog& dialog)
{
    const auto& views = Find<QTabBar>(dialog, "Views");
    return views.tabText(views.currentIndex()).toStdString();
}

}  // namespace

TEST_F(PictureForm, PreviewAndPrintShowTheSheet)
{
    InDialog<QPrintPreviewDialog>(Command::FileMenuPrintPreview, [](QPrintPreviewDialog& dialog) {
        EXPECT_EQ(Find<QPrintPreviewWidget>(dialog).pageCount(), 1);
    });
    const auto print = [this](const QString& paper) {
        InDialog<QPrintDialog>(Command::FileMenuPrint, [&](QPrintDialog& dialog) {
            EXPECT_EQ(dialog.printer()->docName().toStdString(), "till");
            dialog.printer()->setOutputFormat(QPrinter::PdfFormat);
            dialog.printer()->setOutputFileName(paper);
            dialog.done(QDialog::Accepted);
        });
    };
    print(folder.filePath("paper.pdf"));
    EXPECT_GT(QFile(folder.filePath("paper.pdf")).size(), 10000);
    EXPECT_TRUE(prompt.shown.empty());
    print("/dev/full");
    EXPECT_THAT(prompt.TakeBodies(), ElementsAre(HasSubstr("/dev/full")));
}

TEST_F(PictureForm, ExportsEachType)
{
    Export("till.svg");
    EXPECT_THAT(files.Read(At("till.svg")), AllOf(StartsWith("<svg "), HasSubstr(">" + path + "</text>")));
    Export("till.png");
    const QImage picture(PathToQString(At("till.png")));
    EXPECT_EQ(picture.width(), 1240);
    EXPECT_EQ(picture.pixelColor(5, 5), QColor(Qt::white)) << "paper, whatever the desktop's colours";
    Export("till");
    EXPECT_TRUE(files.Read(At("till.pdf")).starts_with("%PDF-"));
    EXPECT_TRUE(prompt.shown.empty());

    Strip().FocusButton(StripButton::MCR);
    Trigger(Command::LayoutMenuDel);
    Export("changed.svg");
    EXPECT_NE(files.Read(At("changed.svg")).find("with changes that are not saved"), std::string::npos);
}

TEST_F(PictureForm, ComparesWithAFileByMouseAndKeys)
{
    CompareWithFile(
        "[Kelvora]\n[KM096]\nFiscal = NO\n[KM064]\nKeyMap = HHSSSSSS _\n SSSSSSSS _\n SSSSSSSS _\n"
        " SSSSSSSS _\n SSSSSSSS _\n SSSSSSSS _\n SSSSSSSS _\n SSSSSSS=\n");
    SetupsDialog* const dialog = Comparison();
    ASSERT_NE(dialog, nullptr);
    EXPECT_FALSE(dialog->isModal());
    QApplication::setActiveWindow(dialog);
    auto* const list = &Find<QListWidget>(*dialog, "Differences");
    QStringList texts;
    for (int row = 0; row < list->count(); ++row)
        texts << list->item(row)->text();
    EXPECT_EQ(texts.join('\n').toStdString(),
              "MCR: removed\n"
              "Composite Keyboard, fiscal keyboard: yes -> no\n"
              "Slave Keyboard, Key 97: single key -> double horizontal key\n"
              "Slave Keyboard, Key 98: single key -> part of key 97\n"
              "Slave Keyboard, Key 160: single key -> unused");
    EXPECT_EQ(ViewOf(*dialog), "Modules");
    const auto press = [&](Qt::Key key, int times, Qt::KeyboardModifiers modifiers = {}) {
        while (times-- > 0)
            QTest::keyClick(key == Qt::Key_F3 ? static_cast<QWidget*>(dialog) : list, key, modifiers);
    };
    press(Qt::Key_Down, 2);
    EXPECT_EQ(ViewOf(*dialog), "Slave Keyboard");
    press(Qt::Key_F3, 1, Qt::ShiftModifier);
    EXPECT_EQ(ViewOf(*dialog), "Modules");
    press(Qt::Key_F3, 3);
    EXPECT_EQ(list->currentRow(), 4);
    // The first key of the grid, just inside its margin.
    auto* const after = &Find<PictureView>(*dialog, "After");
    const int side = std::min(after->width(), after->height());
    QTest::mouseClick(after, Qt::LeftButton, {}, QPoint((after->width() - side) / 2 + side / 10, side / 15));
    EXPECT_EQ(list->currentRow(), 2);
    press(Qt::Key_F3, 3, Qt::ShiftModifier);
    EXPECT_EQ(list->currentRow(), 4) << "round and round";
    EXPECT_FALSE(window->ActiveSetup()->IsChanged());
    QTest::keyClick(dialog, Qt::Key_Escape);
    EXPECT_EQ(Comparison(), nullptr);
}

TEST_F(PictureForm, AComparisonFollowsItsSetupsAndGoesWithTheOneItIsOf)
{
    frmConfig* const first = window->ActiveSetup();
    files.Write(At("second.dat"), files.Read(path));
    window->OpenFiles({PathToQString(At("second.dat"))});
    frmConfig* const second = window->ActiveSetup();
    ASSERT_NE(first, second);
    const auto entries = CompareMenu().actions();
    ASSERT_EQ(entries.size(), 3);
    EXPECT_EQ(entries[2]->text().toStdString(), "&1  till");
    entries[2]->trigger();
    SetupsDialog* const dialog = Comparison();
    ASSERT_NE(dialog, nullptr);
    const auto count = [&] { return Says(*dialog, "Count"); };
    EXPECT_EQ(count(), "The two setups are equal.");
    second->Strip().FocusButton(StripButton::MCR);
    second->LayoutMenuDel_Click();
    EXPECT_EQ(count(), "Differences: 1");
    second->UndoStack().undo();
    EXPECT_EQ(count(), "The two setups are equal.");
    first->CloseUnasked();
    first->parentWidget()->close();
    EXPECT_NE(Comparison(), nullptr) << "the other one is shown as it last was";
    second->CloseUnasked();
    second->parentWidget()->close();
    EXPECT_EQ(Comparison(), nullptr);
}

}  // namespace kelvora
