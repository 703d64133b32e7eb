// The program's start: one copy a user, the language and its texts, then the main window.
#include <QApplication>
#include <QDir>
#include <QLocale>
#include <QSignalBlocker>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QTimer>
#include <QTranslator>
#include <algorithm>
#include <array>
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
#include "recovery/posix/RecoveryFolder.h"
#include "windows/forms/Icons.h"
#include "windows/forms/MDIForm1.h"
#include "windows/forms/QtTexts.h"
#include "windows/forms/SimulatedDevices.h"
#include "windows/forms/SingleCopy.h"
#include "windows/forms/StartArguments.h"
#include "windows/forms/WindowMemory.h"

namespace kelvora {

namespace {

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

// The program's lines, and the devices behind their ports.
struct LinePorts {
    LinePorts(QtEventLoop& eventLoop, Files& files, const std::string& namesFile,
              const std::vector<LineArgument>& given)
        : names(files, namesFile, given)
    {
        for (std::size_t i = 0; i < ports.size(); ++i)
            lines.at(i) = (ports.at(i) = MakeLinePort(eventLoop)).get();
        names.ApplyTo(lines);
    }

    std::array<std::unique_ptr<SerialPort>, LineCount> ports;
    Lines::Ports lines{};
    PortNames names;
    const QtSerialDevices devices;
    MachinePorts machine{names, devices};
};

// Before the program is ended from outside what works stops, and what is unsaved is kept.
void KeepAtEnds(QApplication& application, EndOnSignal& endOnSignal, Program& program, MDIForm1& window)
{
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
}

void OfferPractice(SimulatedDevices& simulated, MDIForm1& window)
{
    QObject::connect(&simulated, &SimulatedDevices::changed, &window, &MDIForm1::ShowPractice);
    QObject::connect(&window, &MDIForm1::practiceChosen, &simulated, [&](bool isWanted) {
        if (isWanted)
            simulated.Begin({});
        else
            simulated.End();
    });
}

// What other starts hand over opens here, as long as this copy does not end.
void ConnectCopy(SingleCopy& copy, MDIForm1& window)
{
    QObject::connect(&window, &MDIForm1::shutdownBegun, &copy, &SingleCopy::StopListening);
    QObject::connect(&copy, &SingleCopy::filesHandedOver, &window, &MDIForm1::OpenFiles);
}

// Asked for at the start: who has done so knows; a hint would lie over panels that are only coming up.
void BeginQuietly(SimulatedDevices& simulated, const std::string& state, MDIForm1& window)
{
    const QSignalBlocker quiet(simulated);
    simulated.Begin(state);
    window.Refresh();
}

// One copy of the program, the only one.
int RunCopy(QApplication& application, EndOnSignal& endOnSignal, const StartArguments& arguments,
            SingleCopy& copy, QtPrompt& prompt)
{
    PosixFiles posixFiles;
    QtFileDialogs dialogs;
    QtEventLoop eventLoop;
    const LanguageFolders folders = Folders();
    LinePorts ports(eventLoop, posixFiles, folders.person + "/ports.ini", arguments.lines);
    JournalFolder journalFolder(posixFiles, DataFolder());
    const Journal journal(journalFolder, {AccountName(), "kelvora", KELVORA_VERSION}, Sha256);
    RecoveryFolder recovery(posixFiles, StateFolder() + "/recovery");
    Program program({posixFiles, prompt, dialogs, eventLoop, ports.lines, &journal, DataFolder(), &recovery},
                    folders);
    if (!program.language.Load(program.main))
        return 1;
    if (endOnSignal.HasCome())
        return 0;
    QTranslator translator;
    TranslateQt(translator, program.language.Code());
    const QString folder = PathToQString(folders.person);
    QDir().mkpath(folder);
    QApplication::setStyle(new ProgramStyle(WindowMemory(folder).IsTouchSize()));
    MDIForm1 window(program, folder, &ports.machine);
    KeepAtEnds(application, endOnSignal, program, window);
    SimulatedDevices simulated(program, ports.names);
    OfferPractice(simulated, window);
    ConnectCopy(copy, window);
    QObject::connect(&window, &MDIForm1::languageChanged,
                     [&] { TranslateQt(translator, program.language.Code()); });
    QObject::connect(&window, &MDIForm1::closed, &application, &QCoreApplication::quit);
    window.show();
    // What the first picture does not need comes after it.
    QTimer::singleShot(0, &window, [&] {
        if (arguments.bench)
            BeginQuietly(simulated, arguments.benchState, window);
        copy.Listen();
        if (ports.names.HasProblem())
            prompt.Show(ProductName, ports.names.Problem(program.texts.Catalogue()), {BoxIcon::Exclamation});
        window.Unsaved().Offer(window);
        if (!arguments.files.isEmpty())
            window.OpenFiles(arguments.files);
    });
    const int code = QApplication::exec();
    endOnSignal.onSignal = nullptr;
    return code;
}

int Run(QApplication& application, StopSignal& stopSignal)
{
    const StartArguments arguments = ReadStartArguments(application);
    EndOnSignal endOnSignal(stopSignal);
    QtPrompt prompt;
    SingleCopy copy(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation));
    if (copy.Claim())
        return RunCopy(application, endOnSignal, arguments, copy, prompt);
    if (!arguments.files.isEmpty() && copy.HandOver(arguments.files))
        return 0;
    RefuseSecondCopy(prompt);
    return 1;
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
        kelvora::ReadStartArguments(application);
        return 0;
    }
    // Before the threads that the window system begins.
    kelvora::StopSignal stopSignal;
    kelvora::SafeApplication application(argc, argv);
    QApplication::setWindowIcon(kelvora::ProgramIcon());
    QApplication::setQuitOnLastWindowClosed(false);
    return kelvora::Run(application, stopSignal);
}
