#include "app/forms/HelpWindow.h"

#include <QAction>
#include <QFileInfo>
#include <QStyle>
#include <QToolBar>
#include <QUrl>

#include "app/forms/Icons.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

constexpr QSize InitialSize(760, 620);

}  // namespace

HelpWindow::HelpWindow(const MessageCatalogue& catalogue, const QString& folder)
    : browser_(new QTextBrowser(this)),
      folder_(folder),
      missing_(ToQString(catalogue.Caption(Message::HelpMissing)))
{
    setObjectName(QStringLiteral("HelpWindow"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(ToQString(catalogue.Caption(Message::HelpTitle)));
    setWindowIcon(ProgramIcon());
    resize(InitialSize);
    setCentralWidget(browser_);
    browser_->document()->setDocumentMargin(16);

    QToolBar* bar = addToolBar(windowTitle());
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    QAction* contents = bar->addAction(ThemedIcon(QStringLiteral("help")),
                                       ToQString(catalogue.Caption(Message::HelpContents)));
    QAction* back = bar->addAction(style()->standardIcon(QStyle::SP_ArrowBack),
                                   ToQString(catalogue.Caption(Message::HelpBack)));
    QAction* forward = bar->addAction(style()->standardIcon(QStyle::SP_ArrowForward),
                                      ToQString(catalogue.Caption(Message::HelpForward)));
    back->setShortcut(QKeySequence::Back);
    forward->setShortcut(QKeySequence::Forward);
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(contents, &QAction::triggered, this, [this] { ShowPage(QStringLiteral("index.html")); });
    connect(back, &QAction::triggered, browser_, &QTextBrowser::backward);
    connect(forward, &QAction::triggered, browser_, &QTextBrowser::forward);
    connect(browser_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(browser_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);

    auto* close = new QAction(this);
    close->setShortcuts({QKeySequence(Qt::Key_Escape), QKeySequence::Close});
    connect(close, &QAction::triggered, this, &QWidget::close);
    addAction(close);
}

void HelpWindow::ShowPage(const QString& page)
{
    const QString path = folder_ + '/' + page;
    if (QFileInfo::exists(path))
        browser_->setSource(QUrl::fromLocalFile(path));
    else
        browser_->setPlainText(missing_ + '\n' + path);
}

}  // namespace kelvora
