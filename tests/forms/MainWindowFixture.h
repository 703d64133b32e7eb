// The real windows over real files in a folder of their own, with scripted boxes and dialogs and virtual
// time.
#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <memory>

#include "fakes/BenchLine.h"
#include "fakes/FakeFileDialogs.h"
#include "fakes/FakePrompt.h"
#include "forms/Controls.h"
#include "layout/forms/StripView.h"
#include "layout/forms/frmConfig.h"
#include "platform/posix/PosixFiles.h"
#include "platform/qt/Text.h"
#include "windows/forms/MDIForm1.h"

namespace kelvora {

/// For what comes from another thread, on a machine that is busy with other things too.
inline constexpr int LongestWaitMs = 60000;

/// Virtual time, in which Qt's own events happen too.
class FormsEventLoop final : public FakeEventLoop {
public:
    void Yield() override
    {
        QCoreApplication::processEvents();
        FakeEventLoop::Yield();
    }
};

class MainWindowFixture : public testing::Test {
protected:
    /// With `hasLine` the simulated line of all four modules stands behind COM1.
    /// Without a folder for it the program's own files stand beside the person's, in `folder`.
    explicit MainWindowFixture(bool hasLine = false, const Journal* journal = nullptr,
                               const char* programFolder = nullptr)
        : program({files, prompt, dialogs, loop, {hasLine ? &port : nullptr}, journal, Folder()},
                  {programFolder ? programFolder : Folder(), Folder()})
    {
    }

    std::string Folder() const { return PathFromQString(folder.path()); }
    std::string At(const std::string& name) const { return Folder() + "/" + name; }
    /// What the next dialog for a file gives.
    void Choose(const std::string& name, int filter = 1)
    {
        dialogs.choices.push_back({At(name), Folder(), filter});
    }

    void Start()
    {
        window = std::make_unique<MDIForm1>(program, folder.path());
        QObject::connect(window.get(), &MDIForm1::closed, [this] { closed = true; });
        window->show();
        QApplication::setActiveWindow(window.get());
    }

    void Trigger(Command command) { window->Actions()[command].trigger(); }
    /// Triggers a command of the line and waits for its end.
    void Run(Command command)
    {
        QApplication::setActiveWindow(window.get());
        Trigger(command);
        loop.Pass(std::chrono::milliseconds(0));
        EXPECT_FALSE(program.operation.IsBusy());
        EXPECT_FALSE(port.IsOpen());
    }
    bool IsEnabled(Command command) { return window->Actions()[command].isEnabled(); }
    StripView& Strip() { return window->ActiveSetup()->Strip(); }
    SetupSession& Session() { return window->ActiveSetup()->Session(); }
    const ModuleList& Modules() { return Session().document.Modules; }
    void Click(StripButton button) { QTest::mouseClick(&Strip().Button(button), Qt::LeftButton); }

    /// The window of that type that is there; null for none.
    template <class Window>
    static Window* Opened()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        for (QWidget* const widget : QApplication::topLevelWidgets())
            if (auto* const found = dynamic_cast<Window*>(widget))
                return found;
        return nullptr;
    }

    /// Does `open`, and `act` on the modal dialog that it opens.
    template <class Dialog>
    void InDialog(const std::function<void()>& open, const std::function<void(Dialog&)>& act)
    {
        kelvora::InDialog<Dialog>(open, act);
        QApplication::setActiveWindow(window.get());
    }
    /// The same with what a command opens, or a click on a device.
    template <class Dialog>
    void InDialog(Command command, const std::function<void(Dialog&)>& act)
    {
        InDialog<Dialog>([&] { Run(command); }, act);
    }
    template <class Dialog>
    void InDialog(StripButton button, const std::function<void(Dialog&)>& act)
    {
        InDialog<Dialog>([&] { Click(button); }, act);
    }

    QTemporaryDir folder;
    PosixFiles files;
    FakePrompt prompt;
    FakeFileDialogs dialogs;
    FormsEventLoop loop;
    bench::FakeLineClock clock{loop};
    bench::SimulatedLine line{clock, bench::FreshLine(BenchLine::AllModules())};
    bench::SimulatedPort port{line};
    Program program;
    std::string path = At("Till.dat");
    std::unique_ptr<MDIForm1> window;
    bool closed = false;
};

}  // namespace kelvora
