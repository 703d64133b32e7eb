// Every window in the palettes that desktops have, and in the size for fingers.

#include "forms/OtherForms.h"
#include "forms/WindowFaults.h"
#include "picture/DevicePicture.h"
#include "picture/forms/SvgPicture.h"
#include "platform/qt/Contrast.h"
#include "platform/qt/ProgramStyle.h"
#include "platform/qt/WindowParts.h"
#include "setup/DeviceCode.h"
#include "setup/ModuleRecord.h"

namespace kelvora {
namespace {

void TakeEveryWindow(const Viewer& viewer)
{
    TakeAll("ENG", {KELVORA_PROGRAM_FOLDER, KELVORA_EXAMPLES}, viewer);
    OtherForms().Show("ENG", viewer);
}

struct Desktop {
    const char* name;
    QColor window, base, text, highlight, highlighted, link;
};

const Desktop Desktops[]{
    {"Dark", "#353535", "#232323", "#ffffff", "#2a82da", "#000000", "#0000ff"},
    {"High contrast", "#000000", "#000000", "#ffffff", "#ffff00", "#000000", "#ffff00"},
    {"Light", "#efefef", "#ffffff", "#000000", "#308cc6", "#ffffff", "#0000ff"},
};

QPalette PaletteOf(const Desktop& desktop)
{
    QPalette palette(desktop.window, desktop.window);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, desktop.text);
    palette.setColor(QPalette::Base, desktop.base);
    palette.setColor(QPalette::AlternateBase, desktop.window);
    palette.setColor(QPalette::ToolTipBase, desktop.window);
    palette.setColor(QPalette::Highlight, desktop.highlight);
    palette.setColor(QPalette::HighlightedText, desktop.highlighted);
    palette.setColor(QPalette::Link, desktop.link);
    // As the style does with the desktop's own.
    QApplication::style()->polish(palette);
    return palette;
}

// Of a window that is open while the desktop changes.
QStringList FaintOnAnyDesktop(QWidget& window)
{
    QStringList faults;
    for (const Desktop& desktop : Desktops) {
        QApplication::setPalette(PaletteOf(desktop));
        QCoreApplication::processEvents();
        for (const QString& faint : Faint(window))
            faults << QLatin1String(desktop.name) + QStringLiteral(": ") + faint;
    }
    return faults;
}

TEST(Eyes, SeeEveryTextAndSign)
{
    TakeEveryWindow(Judge("desktop", {FaintOnAnyDesktop}));
}

TEST(Fingers, HitEveryTarget)
{
    QTableView open;
    QStandardItemModel model(1, 1);
    open.setModel(&model);
    ListRows(open, {});
    open.show();
    QApplication::setStyle(new ProgramStyle(true));
    TakeEveryWindow(Judge("touch", {SmallTargets}));
    EXPECT_GE(open.rowHeight(0), TouchTarget) << "of a table that was open before";
    QApplication::setStyle(new ProgramStyle(false));
}

// By lightness alone: colours of one lightness are the same to some.
TEST(Eyes, TellOnFromOffWithoutColour)
{
    const auto paint = [](const char* options) {
        ModuleRecord record = CreateRecord(DeviceCode::MCR123, 0);
        record.Options = options;
        const std::string svg = DevicePicture(StripButton::MCR, &record);
        return SvgPicture(QByteArray::fromStdString(svg)).Pixels({100, 400}, 1).toImage();
    };
    const QImage on = paint("1,2,3^^^ON ");
    for (const char* const options : {"1,2,3^^^OFF", "1,2  ^^^ON "}) {
        const QImage off = paint(options);
        double most = 1;
        for (int pixel = 0; pixel < on.width() * on.height(); ++pixel) {
            const QPoint at(pixel % on.width(), pixel / on.width());
            most = std::max(most, Contrast(on.pixelColor(at), off.pixelColor(at)));
        }
        EXPECT_GE(most, 3) << options;
    }
}

// The proof that these can fail.
TEST(Eyes, MissAFaintTextAndFingersASmallButton)
{
    EXPECT_DOUBLE_EQ(Contrast(Qt::black, Qt::white), 21);
    QWidget window;
    window.resize(300, 200);
    QLabel label(QStringLiteral("A text"), &window);
    QPushButton button(QStringLiteral("A button"), &window);
    label.setGeometry(10, 10, 200, 40);
    button.setGeometry(10, 100, 200, 40);
    window.show();
    EXPECT_TRUE(Faint(window).isEmpty() && SmallTargets(window).isEmpty());
    button.resize(200, 39);
    QPalette faint = label.palette();
    faint.setColor(QPalette::WindowText, "#777777");
    label.setPalette(faint);
    EXPECT_EQ(Faint(window).size(), 1);
    EXPECT_EQ(SmallTargets(window).size(), 1);
}

}  // namespace
}  // namespace kelvora
