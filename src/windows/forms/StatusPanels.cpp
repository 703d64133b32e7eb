#include "windows/forms/StatusPanels.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QSizeGrip>
#include <algorithm>

#include "comms/LineWork.h"
#include "platform/qt/Announcement.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

constexpr int ProgressWidth = 160;
constexpr int PanelMargin = 8;

// Time enough to read a line twice.
constexpr int HintTimeMs = 10000;

// A panel never asks for more room than this, in pixels: a long path must not widen the window.
constexpr int PanelMinimumWidth = 60;

// Takes the window's sizing corner by the hand: a press moves the pointer onto the corner itself.
class DragCorner final : public QSizeGrip {
public:
    explicit DragCorner(QWidget* parent) : QSizeGrip(parent) { setObjectName(QStringLiteral("DragCorner")); }

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        // One pixel left of the window's right edge and two above its bottom edge.
        const QRect frame = window()->frameGeometry();
        if (QGuiApplication::platformName() == QLatin1String("xcb"))
            QCursor::setPos(frame.x() + frame.width() - 1, frame.y() + frame.height() - 2);
        QSizeGrip::mousePressEvent(event);
    }
};

}  // namespace

StatusPanel::StatusPanel(const char* name, QWidget* parent) : ElidedLabel(parent)
{
    setObjectName(QString::fromLatin1(name));
    setMargin(2);
    setContentsMargins(PanelMargin, 0, PanelMargin, 0);
}

void StatusPanel::SetPurpose(const QString& purpose)
{
    purpose_ = purpose;
    setToolTip(purpose);
    Show(text());
}

void StatusPanel::Show(const QString& text)
{
    setText(text);
    setAccessibleName(purpose_ + QStringLiteral(": ") + text.trimmed());
}

QSize StatusPanel::minimumSizeHint() const
{
    return {std::min(sizeHint().width(), PanelMinimumWidth), sizeHint().height()};
}

StatusPanels::StatusPanels(QWidget* parent)
    : QStatusBar(parent),
      mode_(AddPanel("ModePanel", 0)),
      port_(AddPanel("PortPanel", 0)),
      status_(AddPanel("StatusPanel", 2)),
      operation_(AddPanel("OperationPanel", 0)),
      simulated_(new QLabel(this)),
      progress_(new QProgressBar(this)),
      stop_(new QToolButton(this))
{
    simulated_->setObjectName(QStringLiteral("SimulatedPanel"));
    simulated_->hide();
    status_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    progress_->setObjectName(QStringLiteral("ProgressBar"));
    progress_->setFixedWidth(ProgressWidth);
    progress_->setRange(0, FullProgress);
    progress_->hide();
    addPermanentWidget(progress_);
    stop_->setObjectName(QStringLiteral("StopButton"));
    stop_->setFocusPolicy(Qt::NoFocus);
    stop_->hide();
    connect(stop_, &QToolButton::clicked, this, &StatusPanels::stopRequested);
    addPermanentWidget(stop_);
    addPermanentWidget(simulated_);
    setSizeGripEnabled(false);
    addPermanentWidget(new DragCorner(this));
    connect(this, &QStatusBar::messageChanged, this, &StatusPanels::ShowOrHide);
}

StatusPanel* StatusPanels::AddPanel(const char* name, int stretch)
{
    auto* panel = new StatusPanel(name, this);
    addWidget(panel, stretch);
    return panel;
}

void StatusPanels::ShowMode(const QString& text)
{
    // A hint has the place of the panels.
    clearMessage();
    mode_->Show(text);
    mode_->setVisible(!text.isEmpty());
}

void StatusPanels::ShowStatus(const QString& text)
{
    status_->Show(text);
    status_->setToolTip(text.isEmpty() ? statusTip_ : text);
}

void StatusPanels::ShowProgress(int percent)
{
    const bool shown = percent >= 0 && percent <= FullProgress;
    if (shown)
        progress_->setValue(percent);
    progress_->setVisible(shown);
}

void StatusPanels::Want(bool isWanted)
{
    isWanted_ = isWanted;
    ShowOrHide();
}

void StatusPanels::Need(bool isNeeded)
{
    isNeeded_ = isNeeded;
    ShowOrHide();
}

void StatusPanels::ShowOrHide()
{
    setVisible(isWanted_ || isNeeded_ || !currentMessage().isEmpty());
}

void StatusPanels::ShowHint(const QString& text)
{
    // The panels give way to a message only where they are seen.
    show();
    showMessage(text, HintTimeMs);
    Announce(*this, text);
}

void StatusPanels::Retranslate(const MessageCatalogue& catalogue)
{
    const auto name = [&](StatusPanel& panel, const MessageId& message) {
        panel.SetPurpose(ToQString(catalogue.Caption(message)));
    };
    name(*mode_, Message::ModePanel);
    name(*port_, Message::PortPanel);
    name(*operation_, Message::OperationPanel);
    name(*status_, Message::StatusPanel);
    simulated_->setText(ToQString(catalogue.Caption(Message::SimulatedLine)));
    simulated_->setToolTip(ToQString(catalogue.Caption(Message::SimulatedLineTip)));
    stop_->setText(ToQString(catalogue.Caption(Message::StopOperation)));
    stop_->setToolTip(ToQString(catalogue.Caption(Message::StopOperationTip)));
    statusTip_ = status_->toolTip();
    progress_->setAccessibleName(operation_->toolTip());
    ShowStatus(status_->text());
}

}  // namespace kelvora
