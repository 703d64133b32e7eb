// kelvora-pictures LANGUAGE PROGRAMFOLDER EXAMPLES OUT: makes the help's pictures in one language.
#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <cstdio>
#include <exception>

#include "Scenes.h"

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 5) {
        std::fputs("usage: kelvora-pictures LANGUAGE PROGRAMFOLDER EXAMPLES OUT\n", stderr);
        return 2;
    }
    // Qt's own buttons speak the language too.
    QTranslator translator;
    if (translator.load(arguments[1] == "ITA" ? QStringLiteral("qtbase_it") : QStringLiteral("qtbase_en"),
                        QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&translator);
    try {
        kelvora::TakeAll(arguments[1].toStdString(), {arguments[2], arguments[3]},
                         kelvora::Photographer(arguments[4]));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "kelvora-pictures: %s\n", error.what());
    }
    return 1;
}
