#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>

#include "forms/MainWindowFixture.h"
#include "platform/qt/QtFileDialogs.h"

namespace kelvora {
namespace {

class FileDialogForm : public MainWindowFixture {
protected:
    FileDialogForm() { Start(); }

    FileDialogRequest Request(int filter) const
    {
        return {"Open", Folder(), {}, "Setups (*.dat)|*.dat|All (*.*)|*.*", filter};
    }

    /// What comes of that name typed in the dialog.
    std::optional<FileDialogChoice> Type(int filter, const QString& name)
    {
        std::optional<FileDialogChoice> choice;
        InDialog<QFileDialog>(
            [&] { choice = QtFileDialogs().Open(Request(filter)); },
            [&](QFileDialog& dialog) {
                auto* field = dialog.findChild<QLineEdit*>("fileNameEdit");
                field->setFocus();
                QTest::keyClicks(field, name);
                dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
            });
        return choice;
    }
};

TEST_F(FileDialogForm, ANameWithoutItsEndingIsTheListedFile)
{
    const std::string till = At("till 2.5.dat");
    files.Write(till, "");
    for (const int filter : {1, 2})
        for (const char* name : {"till 2.5", "till 2.5.dat"}) {
            const auto choice = Type(filter, name);
            ASSERT_TRUE(choice) << filter << name;
            EXPECT_EQ(choice->path, till);
            EXPECT_EQ(choice->filterIndex, filter);
        }
}

}  // namespace
}  // namespace kelvora
