#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileSystemModel>
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
        return {"Open", PathFromQString(folder.path()), {}, "Setups (*.dat)|*.dat|All (*.*)|*.*", filter};
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
    const std::string till = PathFromQString(folder.path()) + "/till 2.5.dat";
    files.Write(till, "");
    for (const int filter : {1, 2})
        for (const char* name : {"till 2.5", "till 2.5.dat"}) {
            const auto choice = Type(filter, name);
            ASSERT_TRUE(choice) << filter << name;
            EXPECT_EQ(choice->path, till);
            EXPECT_EQ(choice->filterIndex, filter);
        }
}

TEST_F(FileDialogForm, FilesAreNotLookedInto)
{
    // By its content it would be a picture.
    const QString picture = folder.path() + "/report";
    files.Write(PathFromQString(picture), "\x89PNG\r\n\x1a\n");
    InDialog<QFileDialog>([&] { QtFileDialogs().Open(Request(2)); },
                          [&](QFileDialog& dialog) {
                              auto* model = dialog.findChild<QFileSystemModel*>();
                              // The folder is read by a thread of the model's own.
                              EXPECT_TRUE(QTest::qWaitFor([&] { return model->index(picture).isValid(); }));
                              EXPECT_EQ(model->type(model->index(picture)), "");
                              EXPECT_NE(model->type(model->index(folder.path())), "");
                          });
}

}  // namespace
}  // namespace kelvora
