#include "windows/forms/SetupWindows.h"

#include <QFileInfo>
#include <QMdiSubWindow>
#include <algorithm>
#include <array>
#include <chrono>
#include <future>
#include <system_error>
#include <utility>

#include "layout/forms/frmConfig.h"
#include "platform/Encoding.h"
#include "platform/qt/Background.h"
#include "platform/qt/Text.h"
#include "windows/forms/Icons.h"

namespace kelvora {

namespace {

/// How long the program stands still for files.
constexpr std::chrono::seconds Patience{2};

// Where a path leads to in the end, also when the file is gone.
std::filesystem::path Resolved(const std::string& path)
{
    std::error_code problem;
    const auto place = std::filesystem::weakly_canonical(path, problem);
    return problem ? std::filesystem::path(path) : place;
}

// What cannot be read is told when it is opened.
void TryToRead(const Files& files, const std::vector<std::string>& paths)
{
    for (const std::string& path : paths) {
        try {
            files.Read(path);
        } catch (const FileError&) {
            continue;
        }
    }
}

}  // namespace

SetupWindows::SetupWindows(QMdiArea& area, SetupDesk& desk, WindowMemory& memory)
    : area_(area), desk_(desk), memory_(memory)
{
    desk_.isOpenElsewhere = [this](std::string_view path, std::string_view current) {
        const frmConfig* holder = HolderOf(std::string(path));
        return holder && holder->Session().File().path != current;
    };
}

SetupWindows::~SetupWindows()
{
    desk_.isOpenElsewhere = nullptr;
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

bool SetupWindows::HasScanPending() const
{
    return std::ranges::any_of(All(), [](const frmConfig* setup) { return setup->Session().IsScanning(); });
}

void SetupWindows::Activate(frmConfig& window)
{
    area_.setActiveSubWindow(dynamic_cast<QMdiSubWindow*>(window.parentWidget()));
}

void SetupWindows::New(SetupMode mode)
{
    auto window = std::make_unique<frmConfig>(desk_, mode);
    window->Form_Load();
    Show(std::move(window));
}

void SetupWindows::NewFrom(const SetupDocument& document)
{
    auto window = std::make_unique<frmConfig>(desk_, SetupMode::New);
    window->Form_Load();
    window->BeginWith(document);
    Show(std::move(window));
}

void SetupWindows::Open()
{
    const auto file = GetConfigFileName(desk_.files, desk_.defaults, {});
    if (file && HaveCome({PathToQString(file->path)}))
        OpenFile(*file);
}

bool SetupWindows::HaveCome(const QStringList& paths)
{
    std::vector<std::string> names;
    for (const QString& path : paths)
        names.push_back(PathFromQString(path));
    std::promise<void> end;
    const auto isRead = end.get_future();
    late_.clear();
    try {
        InBackground(
            *this,
            [files = std::shared_ptr(desk_.files.OnDisk().ForThread()), names,
             end = std::move(end)]() mutable {
                TryToRead(*files, names);
                end.set_value();
                return true;
            },
            [this, paths](bool) {
                if (late_ == paths)
                    emit cameLate(std::exchange(late_, {}));
            });
    } catch (const std::system_error&) {
        return true;
    }
    if (isRead.wait_for(Patience) == std::future_status::ready)
        return true;
    late_ = paths;
    emit isLate(paths.join(QStringLiteral(", ")));
    return false;
}

void SetupWindows::OpenFile(const SetupFile& file)
{
    if (frmConfig* holder = HolderOf(file.path)) {
        Activate(*holder);
        return;
    }
    // Read first: a window that could not be filled is never made, and takes no number.
    auto opened = OpenSetup(desk_.files, file);
    if (!opened)
        return;
    auto window = std::make_unique<frmConfig>(desk_, SetupMode::Open);
    window->Form_Load(std::move(opened));
    // A link may lead elsewhere than before.
    places_.erase(file.path);
    Remember(*window);
    Show(std::move(window));
}

frmConfig& SetupWindows::OpenBackup(const std::string& name, const SetupDocument& document)
{
    auto window = std::make_unique<frmConfig>(desk_, SetupMode::New);
    window->Form_Load();
    frmConfig& setup = Show(std::move(window));
    setup.TakeBackup(name, document);
    return setup;
}

frmConfig& SetupWindows::OpenUnsaved(OpenedSetup opened, const SetupDocument& document)
{
    if (HolderOf(opened.file.path))
        opened.file = {};
    auto window = std::make_unique<frmConfig>(desk_, SetupMode::Open);
    window->Form_Load(std::move(opened));
    Remember(*window);
    frmConfig& setup = Show(std::move(window));
    setup.TakeUnsaved(document);
    return setup;
}

frmConfig& SetupWindows::Show(std::unique_ptr<frmConfig> window)
{
    // Who has gone on does not wait for another one.
    late_.clear();
    // From here on the area owns it.
    frmConfig* setup = window.release();
    QMdiSubWindow* frame = area_.addSubWindow(setup);
    frame->setWindowIcon(ProgramIcon());
    // The File menu closes windows, by the same key.
    for (QAction* entry : frame->systemMenu()->actions())
        entry->setShortcut({});
    emit windowAdded(*setup);
    // Large is what a technician wants to see; one who has arranged the windows keeps the arrangement.
    const auto frames = area_.subWindowList();
    if (frames.size() > 1 && !frames.constFirst()->isMaximized())
        frame->show();
    else
        frame->showMaximized();
    return *setup;
}

frmConfig* SetupWindows::HolderOf(const std::string& path) const
{
    if (path.empty())
        return nullptr;
    const auto setups = All();
    const auto holder = std::ranges::find_if(setups, [&, place = Resolved(path)](const frmConfig* setup) {
        const auto known = places_.find(setup->Session().File().path);
        return known != places_.end() && known->second == place;
    });
    return holder == setups.end() ? nullptr : *holder;
}

bool SetupWindows::MayCloseAll()
{
    // All are asked before any closes, so that a Cancel leaves everything as it was.
    for (frmConfig* setup : All()) {
        if (setup->IsChanged())
            Activate(*setup);
        if (!setup->MayClose())
            return false;
    }
    return true;
}

void SetupWindows::CloseAllUnasked()
{
    for (frmConfig* setup : All())
        setup->CloseUnasked();
    area_.closeAllSubWindows();
}

void SetupWindows::Retranslate()
{
    // Qt gives each window's own menu its texts once, in this order.
    constexpr std::array<const char*, 7> Entries{"&Restore",  "&Move",        "&Size", "Mi&nimize",
                                                 "Ma&ximize", "Stay on &Top", "&Close"};
    for (const QMdiSubWindow* frame : area_.subWindowList()) {
        std::size_t next = 0;
        for (QAction* entry : frame->systemMenu()->actions())
            if (!entry->isSeparator() && next < Entries.size())
                entry->setText(QMdiSubWindow::tr(Entries.at(next++)));
    }
    for (frmConfig* setup : All())
        setup->Retranslate();
}

void SetupWindows::OpenFiles(const QStringList& paths)
{
    if (!HaveCome(paths))
        return;
    for (const QString& path : paths)
        OpenFile(MakeSetupFile(PathFromQString(QFileInfo(path).absoluteFilePath())));
}

void SetupWindows::OpenRecent(const QString& path)
{
    if (!HaveCome({path}))
        return;
    if (QFileInfo::exists(path))
        return OpenFiles({path});
    memory_.RemoveRecentFile(path);
    desk_.Words().Show(Message::NotFound, {BoxIcon::Exclamation}, TextFromPath(PathFromQString(path)));
}

void SetupWindows::Remember(const frmConfig& window)
{
    CopyDialogFolders(window.Session().settings, desk_.defaults);
    const std::string& path = window.Session().File().path;
    if (path.empty())
        return;
    memory_.AddRecentFile(PathToQString(path));
    // Asked for while its drive answers, as it has just done.
    if (!places_.contains(path))
        places_[path] = Resolved(path);
}

void SetupWindows::List(QMenu& menu)
{
    int number = 1;
    for (frmConfig* setup : All()) {
        QString title = PathToQString(setup->Session().settings.Name);
        if (setup->IsChanged())
            title += '*';
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
