#include "windows/forms/QtTexts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>

namespace kelvora {

void TranslateQt(QTranslator& translator, const std::string& code)
{
    const QLocale::Language known =
        QLocale::codeToLanguage(QString::fromStdString(code), QLocale::ISO639Part2);
    const QLocale locale(known == QLocale::AnyLanguage ? QLocale::English : known);
    if (translator.load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                        QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&translator);
}

}  // namespace kelvora
