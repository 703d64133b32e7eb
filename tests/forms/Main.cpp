// The forms need an application before the first widget.
#include <gtest/gtest.h>

#include <QApplication>

#include "platform/qt/ProgramStyle.h"

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(new kelvora::ProgramStyle(false));
    return RUN_ALL_TESTS();
}
