// The program's start: one copy a user, the language and its texts, then the main window.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QSignalBlocker>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QTimer>
#include <QTranslator>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "catalogue/Texts.h"
#include "journal/posix/JournalFolder.h"
#include "journal/qt/Sha256.h"
#include "network/qt/QtLinePort.h"
#include "platform/posix/PosixFiles.h"
#include "platform/posix/StopSignal.h"
#include "platform/qt/ProgramStyle.h"
#include "platform/qt/QtEventLoop.h"
#include "platform/qt/QtFileDialogs.h"
#include "platform/qt/QtPrompt.h"
#include "platform/qt/QtSerialDevices.h"
#include "platform/qt/Text.h"
#include "ports/PortNames.h"
#include "ports/StartOptions.h"
#include "recovery/posix/RecoveryFolder.h"
#include "windows/forms/Icons.h"
#include "windows/forms/MDIForm1.h"
#include "windows/forms/QtTexts.h"
#include "windows/forms/SimulatedDevices.h"
#include "windows/forms/SingleCopy.h"
#include "windows/forms/WindowMemory.h"

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

std::string DataFolder()
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return PathFromQString(data + QStringLiteral("/Kelvora"));
}

// Qt 6.4 does not know this folder.
std::string StateFolder()
{
    QString state = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(state))
        state = QDir::homePath() + QStringLiteral("/.local/state");
    return PathFromQString(state + QStringLiteral("/Kelvora"));
}

struct Arguments {
    QStringList files;
    std::vector<LineArgument> lines;
    bool bench = false;
    std::string benchState;
};

[[noreturn]] void RefuseArgument(const QString& argument, const char* reason)
{
    std::fprintf(stderr, "kelvora: %s: %s\n", qPrintable(argument), reason);
    std::exit(2);
}

QString Sentence(std::string_view text)
{
    return ToQString(text) + QLatin1Char('.');
}

QCommandLineOption ParserOption(const StartOption& option)
{
    return {ToQString(option.name), Sentence(option.help), ToQString(option.value)};
}

Arguments ReadArguments(const QCoreApplication& application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(Sentence(StartSummary));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption line = ParserOption(StartOptions::Line);
    const QCommandLineOption bench = ParserOption(StartOptions::Bench);
    const QCommandLineOption benchState = ParserOption(StartOptions::BenchState);
    parser.addOptions({line, bench, benchState});
    parser.addPositionalArgument(QStringLiteral("files"), Sentence(StartFilesHelp),
                                 QStringLiteral("[files...]"));
    parser.process(application);
    Arguments arguments{AbsolutePaths(parser.positionalArguments()), {}, parser.isSet(bench), {}};
    for (const QString& value : parser.values(line)) {
        try {
            arguments.lines.push_back(ParseLineArgument(PathFromQString(value)));
        } catch (const std::invalid_argument& error) {
            RefuseArgument(QStringLiteral("--line ") + value, error.what());
        }
    }
    if (parser.isSet(benchState)) {
        arguments.bench = true;
        arguments.benchState = PathFromQString(QFileInfo(parser.value(benchState)).absoluteFilePath());
    }
    return arguments;
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

// The wish of the system, or of the terminal that the program was started from, to end it: what works on a
// line stops and gives it back, then the program ends, whatever is open; what is unsaved is offered at the
// next start.
class EndOnSignal {
public:
    explicit EndOnSignal(StopSignal& signal) : notifier_(signal.Descriptor(), QSocketNotifier::Read)
    {
        QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this, &signal] {
            if (!signal.Requested())
                return;
            hasCome_ = true;
            if (onSignal)
                onSignal();
            // Not quit(), which a window could refuse. A box closes, and no other one is shown.
            QCoreApplication::exit();
        });
    }

    /// Before the program's own event loop, which would run in spite of it.
    bool HasCome() const { return hasCome_; }

    /// What is to be done before.
    std::function<void()> onSignal;

private:
    QSocketNotifier notifier_;
    bool hasCome_ = false;
};

int Run(QApplication& application, StopSignal& stopSignal)
{
    const Arguments arguments = ReadArguments(application);
    EndOnSignal endOnSignal(stopSignal);
    QtPrompt prompt;
    SingleCopy copy(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation));
    if (!copy.Claim()) {
        if (!arguments.files.isEmpty() && copy.HandOver(arguments.files))
            return 0;
        RefuseSecondCopy(prompt);
        return 1;
    }

    PosixFiles posixFiles;
    QtFileDialogs dialogs;
    QtEventLoop eventLoop;
    std::array<std::unique_ptr<SerialPort>, LineCount> ports;
    std::array<SerialPort*, LineCount> lines{};
    for (std::size_t i = 0; i < ports.size(); ++i)
        lines.at(i) = (ports.at(i) = MakeLinePort(eventLoop)).get();
    const LanguageFolders folders = Folders();
    PortNames names(posixFiles, folders.person + "/ports.ini", arguments.lines);
    names.ApplyTo(lines);
    const QtSerialDevices devices;
    MachinePorts machine{names, devices};
    JournalFolder journalFolder(posixFiles, DataFolder());
    const Journal journal(journalFolder, {AccountName(), "kelvora", KELVORA_VERSION}, Sha256);
    RecoveryFolder recovery(posixFiles, StateFolder() + "/recovery");
    Program program({posixFiles, prompt, dialogs, eventLoop, lines, &journal, DataFolder(), &recovery},
                    folders);
    if (!program.language.Load(program.main))
        return 1;
    if (endOnSignal.HasCome())
        return 0;
    QTranslator translator;
    TranslateQt(translator, program.language.Code());
    QDir().mkpath(PathToQString(folders.person));

    const WindowMemory remembered(PathToQString(folders.person));
    QApplication::setStyle(new ProgramStyle(remembered.IsTouchSize()));
    MDIForm1 window(program, PathToQString(folders.person), &machine);
    endOnSignal.onSignal = [&] {
        program.operation.AskToStop();
        window.Unsaved().Leave();
    };
    // The session ends, unless the user takes that back: others of it may wait for the line.
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &window, [&] {
        program.operation.AskToStop();
        window.Unsaved().KeepNow();
    });
    // A session manager may ask for this alone, and end the programs then.
    QObject::connect(&application, &QGuiApplication::saveStateRequest, &window,
                     [&] { window.Unsaved().KeepNow(); });
    SimulatedDevices simulated(program, names);
    QObject::connect(&simulated, &SimulatedDevices::changed, &window, &MDIForm1::ShowPractice);
    QObject::connect(&window, &MDIForm1::practiceChosen, &simulated, [&](bool isWanted) {
        if (isWanted)
            simulated.Begin({});
        else
            simulated.End();
    });
    QObject::connect(&window, &MDIForm1::languageChanged,
                     [&] { TranslateQt(translator, program.language.Code()); });
    QObject::connect(&window, &MDIForm1::shutdownBegun, &copy, &SingleCopy::StopListening);
    QObject::connect(&copy, &SingleCopy::filesHandedOver, &window, &MDIForm1::OpenFiles);
    QObject::connect(&window, &MDIForm1::closed, &application, &QCoreApplication::quit);
    window.show();
    // What the first picture does not need comes after it.
    QTimer::singleShot(0, &window, [&] {
        if (arguments.bench) {
            // Who has asked for them knows; a hint would lie over panels that are only coming up.
            const QSignalBlocker quiet(simulated);
            simulated.Begin(arguments.benchState);
            window.Refresh();
        }
        copy.Listen();
        if (names.HasProblem())
            prompt.Show(ProductName, names.Problem(program.texts.Catalogue()), {BoxIcon::Exclamation});
        window.Unsaved().Offer(window);
        if (!arguments.files.isEmpty())
            window.OpenFiles(arguments.files);
    });
    const int code = QApplication::exec();
    endOnSignal.onSignal = nullptr;
    return code;
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
    // Before the threads that the window system begins.
    kelvora::StopSignal stopSignal;
    kelvora::SafeApplication application(argc, argv);
    QApplication::setWindowIcon(kelvora::ProgramIcon());
    QApplication::setQuitOnLastWindowClosed(false);
    return kelvora::Run(application, stopSignal);
}
