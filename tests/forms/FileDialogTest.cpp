#include "forms/MainWindowFixture.h"
#include "platform/qt/QtFileDialogs.h"

namespace kelvora {

class FileDialogForm : public MainWindowFixture {};

TEST_F(FileDialogForm, ANameWithoutItsEndingIsTheListedFile)
{
    Start();
    files.Write(At("till 2.5.dat"), "");
    for (const int filter : {1, 2})
        for (const char* name : {"till 2.5", "till 2.5.dat"}) {
            std::optional<FileDialogChoice> choice;
            InDialog<QFileDialog>(
                [&] {
                    choice = QtFileDialogs().Open(
                        {"Open", Folder(), {}, "Setups (*.dat)|*.dat|All (*.*)|*.*", filter});
                },
                [&](QFileDialog& dialog) {
                    auto& field = Find<QLineEdit>(dialog, "fileNameEdit");
                    field.setFocus();
                    QTest::keyClicks(&field, name);
                    Find<QDialogButtonBox>(dialog).button(QDialogButtonBox::Open)->click();
                });
            ASSERT_TRUE(choice) << filter << name;
            EXPECT_EQ(choice->path, At("till 2.5.dat"));
            EXPECT_EQ(choice->filterIndex, filter);
        }
}

}  // namespace kelvora
