#include "comms/forms/frmAbort.h"

#include <QDialogButtonBox>
#include <QEvent>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include "catalogue/Messages.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

constexpr int InfoWidth = 360;

}  // namespace

frmAbort::frmAbort(const MessageCatalogue& catalogue, QWidget* parent)
    : QDialog(parent), infoLabel_(new QLabel(this))
{
    setObjectName(QStringLiteral("frmAbort"));
    setWindowTitle(ToQString(catalogue.Caption(Message::AbortTitle)));
    infoLabel_->setObjectName(QStringLiteral("InfoLabel"));
    infoLabel_->setWordWrap(true);
    infoLabel_->setMinimumWidth(InfoWidth);

    auto* buttons = new QDialogButtonBox(this);
    auto* abort = new QPushButton(ToQString(catalogue.Caption(Message::AbortCommand)), this);
    abort->setObjectName(QStringLiteral("AbortCommand"));
    auto* goOn = new QPushButton(ToQString(catalogue.Caption(Message::ContinueCommand)), this);
    goOn->setObjectName(QStringLiteral("ContinueCommand"));
    buttons->addButton(abort, QDialogButtonBox::DestructiveRole);
    buttons->addButton(goOn, QDialogButtonBox::RejectRole);
    goOn->setDefault(true);
    connect(abort, &QPushButton::clicked, this, [this] { AbortCommand_Click(); });
    connect(this, &QDialog::rejected, this, [this] { infoLabel_->clear(); });
    connect(goOn, &QPushButton::clicked, this, [this] { ContinueCommand_Click(); });

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(infoLabel_);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    goOn->setFocus();
}

void frmAbort::ShowInfo(const QString& text)
{
    infoLabel_->setText(text);
}

void frmAbort::ContinueCommand_Click()
{
    reject();
}

void frmAbort::AbortCommand_Click()
{
    emit terminated();
    reject();
}

void frmAbort::keyPressEvent(QKeyEvent* event)
{
    // The key that has opened the dialog may still be down.
    if (!event->isAutoRepeat())
        QDialog::keyPressEvent(event);
}

bool frmAbort::event(QEvent* event)
{
    // Behind another window it would be in the way, unseen.
    if (event->type() == QEvent::WindowDeactivate && isVisible())
        ContinueCommand_Click();
    return QDialog::event(event);
}

}  // namespace kelvora
