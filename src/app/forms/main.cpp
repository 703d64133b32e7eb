// The program's start: one copy a user, the language and its texts, then the main window.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QStandardPaths>
#include <QTimer>
#include <QTranslator>
#include <algorithm>
#include <array>
#include <exception>
#include <string_view>
#include <vector>

#include "app/ShowMessage.h"
#include "app/forms/Icons.h"
#include "app/forms/MDIForm1.h"
#include "app/forms/SingleCopy.h"
#include "platform/posix/PosixFiles.h"
#include "platform/qt/QtEventLoop.h"
#include "platform/qt/QtFileDialogs.h"
#include "platform/qt/QtPrompt.h"
#include "platform/qt/QtSerialPort.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

QStringList AbsolutePaths(const QStringList& arguments)
{
    QStringList paths;
    for (const QString& argument : arguments)
        paths << QFileInfo(argument).absoluteFilePath();
    return paths;
}

// The language files are not read yet: the system's own language decides.
void RefuseSecondCopy(Prompt& prompt)
{
    const bool italian = QLocale::system().language() == QLocale::Italian;
    prompt.Show(ProductName,
                italian ? "Non \xE8 possibile eseguire copie multiple del programma"
                        : "Cannot run multiple copies of program",
                {BoxIcon::Information});
}

LanguageFolders Folders()
{
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return {PathFromQString(QCoreApplication::applicationDirPath()), PathFromQString(config + "/Kelvora")};
}

// Qt's own dialogs speak the program's language too.
void TranslateQt(QTranslator& translator, const MessageCatalogue& catalogue)
{
    const QString language = catalogue.Language() == Italian ? QStringLiteral("it") : QStringLiteral("en");
    if (translator.load(QStringLiteral("qtbase_") + language,
                        QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&translator);
}

QStringList ReadArguments(const QCoreApplication& application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Sets up the keyboard devices of a point-of-sale terminal."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("files"), QStringLiteral("Setup files to open."),
                                 QStringLiteral("[files...]"));
    parser.process(application);
    return AbsolutePaths(parser.positionalArguments());
}

// An error that no command has caught must not take unsaved setups with it.
class SafeApplication final : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override
    {
        try {
            return QApplication::notify(receiver, event);
        } catch (const std::exception& error) {
            QtPrompt().Show(ProductName, error.what(), {BoxIcon::Critical});
            return false;
        }
    }
};

int Run(QApplication& application)
{
    const QStringList files = ReadArguments(application);
    QtPrompt prompt;
    SingleCopy copy(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation));
    if (!copy.Claim()) {
        if (!files.isEmpty() && copy.HandOver(files))
            return 0;
        RefuseSecondCopy(prompt);
        return 1;
    }

    PosixFiles posixFiles;
    QtFileDialogs dialogs;
    QtEventLoop eventLoop;
    std::array<QtSerialPort, 4> ports{QtSerialPort("/dev/ttyS0"), QtSerialPort("/dev/ttyS1"),
                                      QtSerialPort("/dev/ttyS2"), QtSerialPort("/dev/ttyS3")};
    Program program({posixFiles, prompt, dialogs, eventLoop, {&ports[0], &ports[1], &ports[2], &ports[3]}},
                    Folders());
    if (!program.Load())
        return 1;
    QTranslator translator;
    TranslateQt(translator, program.catalogue);
    QDir().mkpath(PathToQString(program.folders.person));

    MDIForm1 window(program, PathToQString(program.folders.person));
    window.onLanguage = [&] { TranslateQt(translator, program.catalogue); };
    window.onShutdown = [&copy] { copy.StopListening(); };
    window.onClosed = [] { QCoreApplication::quit(); };
    window.show();
    // What the first picture does not need comes after it.
    QTimer::singleShot(0, &window, [&] {
        copy.Listen([&window](const QStringList& handedOver) { window.OpenFiles(handedOver); });
        if (!files.isEmpty())
            window.OpenFiles(files);
    });
    return QApplication::exec();
}

// Help and version are for a terminal and need no display.
bool IsForTerminal(const std::vector<std::string_view>& arguments)
{
    constexpr std::array<std::string_view, 5> TextOptions{"-h", "--help", "--help-all", "-v", "--version"};
    return std::ranges::any_of(arguments, [&](std::string_view argument) {
        return std::ranges::find(TextOptions, argument) != TextOptions.end();
    });
}

}  // namespace

}  // namespace kelvora

int main(int argc, char* argv[])
{
    QCoreApplication::setApplicationName(QStringLiteral("Kelvora"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KELVORA_VERSION));
    if (kelvora::IsForTerminal({argv + 1, argv + argc})) {
        const QCoreApplication application(argc, argv);
        kelvora::ReadArguments(application);
        return 0;
    }
    kelvora::SafeApplication application(argc, argv);
    QApplication::setWindowIcon(kelvora::ProgramIcon());
    QApplication::setQuitOnLastWindowClosed(false);
    return kelvora::Run(application);
}
