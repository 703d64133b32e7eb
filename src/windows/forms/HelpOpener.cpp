#include "windows/forms/HelpOpener.h"

#include <QApplication>
#include <QKeyEvent>
#include <algorithm>
#include <array>

#include "platform/qt/HelpTopic.h"
#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"
#include "windows/Language.h"
#include "windows/forms/HelpWindow.h"

namespace kelvora {

namespace {

struct WindowPage {
    const char* window;  ///< object name
    const char* page;
};

constexpr std::array WindowPages{
    WindowPage{"TemplatesDialog", "main.html#templates"},
    WindowPage{"TemplateName", "main.html#templates"},
    WindowPage{"frmConfig", "setup.html"},
    WindowPage{"frmKeyb96", "keys.html"},
    WindowPage{"frmKeyb64", "keys.html"},
    WindowPage{"frmKeybICCR", "keys.html"},
    WindowPage{"MasterOptionsDialog", "setup.html#options"},
    WindowPage{"McrOptionsDialog", "setup.html#options"},
    WindowPage{"frmPortSetup", "line.html#ports"},
    WindowPage{"PortsDialog", "line.html#ports"},
    WindowPage{"LineMonitorWindow", "line.html#monitor"},
    WindowPage{"frmAbort", "line.html#stop"},
    WindowPage{"ChangesDialog", "flash.html#download"},
    WindowPage{"ComparisonDialog", "flash.html#verify"},
    WindowPage{"BackupsDialog", "flash.html#backups"},
    WindowPage{"frmEeprom", "identity.html"},
    WindowPage{"SeriesWindow", "series.html"},
    WindowPage{"cdgSeriesReport", "series.html#report"},
    WindowPage{"JournalWindow", "series.html#journal"},
    WindowPage{"SetupsDialog", "setup.html#compare"},
    WindowPage{"RecoveryDialog", "setup.html#recovery"},
    WindowPage{"Print", "setup.html#paper"},
    WindowPage{"PrintPreview", "setup.html#paper"},
    WindowPage{"cdgExport", "setup.html#paper"},
    WindowPage{"cdgFlashDump", "flash.html#dumps"},
    WindowPage{"cdgLineMonitor", "line.html#monitor"},
    WindowPage{"cdgComparison", "flash.html#verify"},
    WindowPage{"cdgOpenIdentities", "identity.html#write"},
    WindowPage{"WriteQuestionDialog", "identity.html#write"},
};

}  // namespace

QString HelpPageOf(const QWidget* widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (QString topic = HelpTopic::Of(*widget); !topic.isEmpty())
            return topic;
        const QString name = widget->objectName();
        const auto* const found = std::ranges::find_if(
            WindowPages, [&](const WindowPage& entry) { return name == QLatin1String(entry.window); });
        if (found != WindowPages.end())
            return QLatin1String(found->page);
    }
    return {};
}

HelpOpener::HelpOpener(const Texts& texts, const Language& language, std::function<QWidget*()> front)
    : texts_(texts), language_(language), front_(std::move(front))
{
    QCoreApplication::instance()->installEventFilter(this);
}

HelpOpener::~HelpOpener()
{
    Close();
}

void HelpOpener::Show()
{
    // A module that is being placed would be lost if the focus went to another window.
    if (QWidget::mouseGrabber())
        return;
    QWidget* const modal = QApplication::activeModalWidget();
    QString page = HelpPageOf(modal ? modal : QApplication::focusWidget());
    if (page.isEmpty())
        page = HelpPageOf(front_());
    if (page.isEmpty())
        page = QStringLiteral("index.html");
    // Only a window of the dialog's own can be used while the dialog is open.
    if (help_ && help_->parentWidget() != modal)
        Close();
    if (!help_)
        help_ = new HelpWindow(texts_.Catalogue(), PathToQString(language_.HelpFolder()), modal);
    help_->ShowPage(page);
    BringToFront(*help_);
}

void HelpOpener::Close()
{
    delete help_;
}

bool HelpOpener::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QObject::eventFilter(watched, event);
    const auto* const key = static_cast<QKeyEvent*>(event);
    const bool isHelpKey = key->key() == Qt::Key_F1 && key->modifiers() == Qt::NoModifier;
    if (!isHelpKey || !watched->isWidgetType())
        return QObject::eventFilter(watched, event);
    if (!help_ || static_cast<QWidget*>(watched)->window() != help_)
        Show();
    return true;
}

}  // namespace kelvora
