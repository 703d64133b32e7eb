// The forms need an application before the first widget.
#include <gtest/gtest.h>

#include <QApplication>
#include <memory>

#include "platform/qt/ProgramStyle.h"

// Fontconfig finds its values by distances instead of addresses: they look lost until the application gives
// them back, and a case that ends its program does not wait for that. A field that can be cleared fades its
// button by an animation that nobody owns and only an event loop ends. None of our leaks can hide behind
// these, which call nothing of ours.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig\nleak:QPropertyAnimation::QPropertyAnimation\n";
}

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    auto application = std::make_unique<QApplication>(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(new kelvora::ProgramStyle(false));
    const int code = RUN_ALL_TESTS();
    application.reset();
    // Qt's list of posted events keeps receivers behind its end, where the sanitizer finds them and takes
    // them for known. Others take their places once the application is gone, which posts some itself.
    QObject nobody;
    for (int i = 0; i < 10'000; ++i)
        QCoreApplication::postEvent(&nobody, new QEvent(QEvent::User));
    return code;
}
