// kelvora-pictures LANGUAGE PROGRAMFOLDER EXAMPLES OUT: makes the help's pictures in one language.
#include <QApplication>
#include <QTranslator>
#include <cstdio>
#include <exception>

#include "Photographer.h"
#include "Scenes.h"
#include "platform/qt/ProgramStyle.h"
#include "windows/forms/QtTexts.h"

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 5) {
        std::fputs("usage: kelvora-pictures LANGUAGE PROGRAMFOLDER EXAMPLES OUT\n", stderr);
        return 2;
    }
    QApplication::setStyle(new kelvora::ProgramStyle(false));
    QTranslator translator;
    kelvora::TranslateQt(translator, arguments[1].toStdString());
    try {
        kelvora::TakeAll(arguments[1].toStdString(), {arguments[2], arguments[3]},
                         kelvora::Photographer(arguments[4]));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "kelvora-pictures: %s\n", error.what());
    }
    return 1;
}
