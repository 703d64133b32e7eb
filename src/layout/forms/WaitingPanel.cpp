#include "layout/forms/WaitingPanel.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "comms/RunningOperation.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

/// In characters.
constexpr int PanelColumns = 48;

constexpr int PanelMargin = 14;

}  // namespace

WaitingPanel::WaitingPanel(const MessageCatalogue& catalogue, QWidget* parent)
    : QFrame(parent),
      catalogue_(catalogue),
      text_(new QLabel(this)),
      left_(new QLabel(this)),
      bar_(new QProgressBar(this)),
      stop_(new QPushButton(this))
{
    setObjectName(QStringLiteral("WaitingPanel"));
    setFrameShape(StyledPanel);
    setAutoFillBackground(true);
    setFixedWidth(PanelColumns * fontMetrics().averageCharWidth());
    text_->setObjectName(QStringLiteral("WaitingText"));
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    left_->setObjectName(QStringLiteral("WaitingTimeLeft"));
    bar_->setObjectName(QStringLiteral("WaitingProgress"));
    stop_->setObjectName(QStringLiteral("WaitingStop"));
    auto* const below = new QHBoxLayout;
    below->addWidget(left_, 1);
    below->addWidget(stop_);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(PanelMargin, PanelMargin, PanelMargin, PanelMargin);
    layout->addWidget(text_);
    layout->addWidget(bar_);
    layout->addLayout(below);
}

void WaitingPanel::Begin(const QString& text)
{
    text_->setText(text);
    left_->clear();
    bar_->setAccessibleName(text);
    bar_->setRange(0, 0);
    stop_->setText(ToQString(catalogue_.Caption(Message::StopOperation)));
    stop_->setToolTip(ToQString(catalogue_.Caption(Message::StopOperationTip)));
    stop_->setEnabled(true);
}

void WaitingPanel::ShowProgress(const LineProgress& progress)
{
    bar_->setRange(0, FullProgress);
    bar_->setValue(progress.Percent());
    left_->setText(progress.left
                       ? ToQString(catalogue_.Word(Message::ScanTimeLeft) + TimeLeft(*progress.left))
                       : QString());
}

void WaitingPanel::ShowStopping()
{
    text_->setText(ToQString(catalogue_.Caption(Message::Stopping)));
    left_->clear();
    stop_->setEnabled(false);
}

}  // namespace kelvora
