#include "windows/forms/SetupComparisons.h"

#include "layout/SetupFileCommands.h"
#include "layout/forms/frmConfig.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

// The name first: there is not always room for the path.
QString FullName(const std::string& name, const std::string& path)
{
    const QString shown = PathToQString(name);
    return path.empty() ? shown : shown + QStringLiteral("  (") + PathToQString(path) + ')';
}

NamedSetup SetupOf(const frmConfig& window)
{
    const SetupSession& session = window.Session();
    QString name = FullName(session.settings.Name, session.File().path);
    if (window.IsChanged())
        name.insert(PathToQString(session.settings.Name).size(), '*');
    return {name, session.document};
}

}  // namespace

SetupComparisons::SetupComparisons(const UserFiles& files, SetupWindows& setups)
    : files_(files), setups_(setups)
{
}

SetupComparisons::~SetupComparisons()
{
    for (const Comparison& comparison : comparisons_)
        delete comparison.window;
}

void SetupComparisons::List(QMenu& menu)
{
    frmConfig* const setup = setups_.Active();
    if (!setup)
        return;
    QAction* const file = menu.addAction(ToQString(files_.Words().Caption(Message::CompareFile)));
    file->setObjectName(QStringLiteral("FileMenuCompareFile"));
    QObject::connect(file, &QAction::triggered, setup, [this, setup] { CompareWithFile(*setup); });
    menu.addSeparator();
    int number = 1;
    for (frmConfig* const other : setups_.All()) {
        if (other == setup)
            continue;
        QString title = PathToQString(other->Session().settings.Name).replace('&', QStringLiteral("&&"));
        // The first nine are reached by their digit.
        title.prepend((number < 10 ? QStringLiteral("&%1  ") : QStringLiteral("%1  ")).arg(number));
        ++number;
        QObject::connect(menu.addAction(title), &QAction::triggered, other,
                         [this, other, setup = QPointer<frmConfig>(setup)] {
                             if (setup)
                                 Open(*setup, other, SetupOf(*other));
                         });
    }
}

void SetupComparisons::CompareWithFile(frmConfig& setup)
{
    PosCfg& settings = setup.Session().settings;
    const auto file = GetConfigFileName(files_, settings, {}, Message::CompareTitle);
    if (!file)
        return;
    if (auto document = ReadOtherSetup(files_, file->path))
        Open(setup, nullptr, {FullName(DisplayName(file->path), file->path), *std::move(document)});
}

void SetupComparisons::Open(frmConfig& setup, frmConfig* other, NamedSetup otherSetup)
{
    auto* const window = new SetupsDialog(files_.Words().Catalogue(), SetupOf(setup), otherSetup);
    window->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(&setup, &QObject::destroyed, window, [window] { delete window; });
    comparisons_.push_back({window, &setup, other, std::move(otherSetup)});
    window->show();
}

void SetupComparisons::Refresh()
{
    std::erase_if(comparisons_, [](const Comparison& comparison) { return !comparison.window; });
    for (Comparison& comparison : comparisons_) {
        if (comparison.other)
            comparison.otherSetup = SetupOf(*comparison.other);
        if (comparison.setup)
            comparison.window->ShowSetups(SetupOf(*comparison.setup), comparison.otherSetup);
    }
}

void SetupComparisons::Retranslate()
{
    for (const Comparison& comparison : comparisons_)
        if (comparison.window)
            comparison.window->Retranslate();
}

}  // namespace kelvora
