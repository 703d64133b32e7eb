#include "app/forms/SetupWindows.h"

#include <QFileInfo>
#include <QMdiSubWindow>

#include "app/forms/Icons.h"
#include "layout/forms/frmConfig.h"
#include "platform/Encoding.h"
#include "platform/qt/Text.h"

namespace kelvora {

SetupWindows::SetupWindows(QMdiArea& area, Program& program, WindowMemory& memory)
    : area_(area), program_(program), memory_(memory)
{
}

frmConfig* SetupWindows::Active() const
{
    const QMdiSubWindow* active = area_.currentSubWindow();
    return active ? dynamic_cast<frmConfig*>(active->widget()) : nullptr;
}

std::vector<frmConfig*> SetupWindows::All() const
{
    std::vector<frmConfig*> windows;
    for (const QMdiSubWindow* window : area_.subWindowList())
        if (auto* setup = dynamic_cast<frmConfig*>(window->widget()))
            windows.push_back(setup);
    return windows;
}

void SetupWindows::Activate(frmConfig& window)
{
    area_.setActiveSubWindow(dynamic_cast<QMdiSubWindow*>(window.parentWidget()));
}

void SetupWindows::New(SetupMode mode, const std::optional<std::string>& path)
{
    program_.setupMode = mode;
    auto window = std::make_unique<frmConfig>(program_);
    const bool loaded = window->Form_Load(path);
    Remember(*window);
    if (!loaded)
        return;
    // A file that is open in another window is not shown twice.
    const std::string& file = window->Session().File().path;
    if (file.empty() || !BringForward(file))
        Show(std::move(window));
}

void SetupWindows::Show(std::unique_ptr<frmConfig> window)
{
    // From here on the area owns it.
    frmConfig* setup = window.release();
    QMdiSubWindow* frame = area_.addSubWindow(setup);
    frame->setWindowIcon(ProgramIcon());
    onNew(*setup);
    // Large is what a technician wants to see; one who has arranged the windows keeps the arrangement.
    const auto frames = area_.subWindowList();
    if (frames.size() > 1 && !frames.constFirst()->isMaximized())
        frame->show();
    else
        frame->showMaximized();
}

bool SetupWindows::BringForward(const std::string& path)
{
    const QString wanted = QFileInfo(PathToQString(path)).canonicalFilePath();
    if (wanted.isEmpty())
        return false;
    for (frmConfig* setup : All()) {
        const std::string& open = setup->Session().File().path;
        if (!open.empty() && QFileInfo(PathToQString(open)).canonicalFilePath() == wanted) {
            Activate(*setup);
            return true;
        }
    }
    return false;
}

void SetupWindows::OpenFiles(const QStringList& paths)
{
    for (const QString& path : paths) {
        const std::string file = PathFromQString(QFileInfo(path).absoluteFilePath());
        if (!BringForward(file))
            New(SetupMode::Open, file);
    }
}

void SetupWindows::OpenRecent(const QString& path)
{
    if (QFileInfo::exists(path)) {
        OpenFiles({path});
        return;
    }
    memory_.RemoveRecentFile(path);
    program_.Show(Message::NotFound, {BoxIcon::Exclamation}, TextFromPath(PathFromQString(path)));
}

void SetupWindows::Remember(frmConfig& window)
{
    const PosCfg& settings = window.Session().settings;
    program_.main.InInitDir = settings.InInitDir;
    program_.main.InFilterIndex = settings.InFilterIndex;
    program_.main.OutInitDir = settings.OutInitDir;
    program_.main.OutFilterIndex = settings.OutFilterIndex;
    if (!window.Session().File().path.empty())
        memory_.AddRecentFile(PathToQString(window.Session().File().path));
}

void SetupWindows::List(QMenu& menu)
{
    int number = 1;
    for (frmConfig* setup : All()) {
        QString title = setup->windowTitle();
        title.replace(QStringLiteral("[*]"), setup->IsChanged() ? QStringLiteral("*") : QString());
        title.replace('&', QStringLiteral("&&"));
        // The first nine are reached by their digit.
        QAction* entry = menu.addAction(
            (number < 10 ? QStringLiteral("&%1  ") : QStringLiteral("%1  ")).arg(number) + title);
        entry->setCheckable(true);
        entry->setChecked(setup == Active());
        QObject::connect(entry, &QAction::triggered, setup, [this, setup] { Activate(*setup); });
        ++number;
    }
}

}  // namespace kelvora
