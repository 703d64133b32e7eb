#include "app/forms/StatusPanels.h"

#include "platform/qt/Text.h"

namespace kelvora {

namespace {

constexpr int FullProgress = 100;
constexpr int ProgressWidth = 160;
constexpr int PanelMargin = 8;

}  // namespace

StatusPanels::StatusPanels(QWidget* parent)
    : QStatusBar(parent),
      mode_(MakePanel("ModePanel", 0)),
      port_(MakePanel("PortPanel", 0)),
      status_(MakePanel("StatusPanel", 2)),
      operation_(MakePanel("OperationPanel", 1)),
      progress_(new QProgressBar(this))
{
    progress_->setObjectName(QStringLiteral("ProgressBar"));
    progress_->setFixedWidth(ProgressWidth);
    progress_->setRange(0, FullProgress);
    progress_->hide();
    addPermanentWidget(progress_);
}

QLabel* StatusPanels::MakePanel(const char* name, int stretch)
{
    auto* panel = new QLabel(this);
    panel->setObjectName(QString::fromLatin1(name));
    panel->setMargin(2);
    panel->setIndent(PanelMargin);
    panel->setTextFormat(Qt::PlainText);
    addWidget(panel, stretch);
    return panel;
}

void StatusPanels::ShowProgress(int percent)
{
    const bool shown = percent >= 0 && percent <= FullProgress;
    if (shown)
        progress_->setValue(percent);
    progress_->setVisible(shown);
}

void StatusPanels::Retranslate(const MessageCatalogue& catalogue)
{
    mode_->setToolTip(ToQString(catalogue.Caption(Message::ModePanel)));
    port_->setToolTip(ToQString(catalogue.Caption(Message::PortPanel)));
    status_->setToolTip(ToQString(catalogue.Caption(Message::StatusPanel)));
    operation_->setToolTip(ToQString(catalogue.Caption(Message::OperationPanel)));
    for (QLabel* panel : {mode_, port_, status_, operation_})
        panel->setAccessibleName(panel->toolTip());
}

}  // namespace kelvora
