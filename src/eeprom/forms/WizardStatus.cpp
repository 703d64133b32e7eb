#include "eeprom/forms/WizardStatus.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>

#include "eeprom/ModuleMemory.h"

namespace kelvora {

WizardStatus::WizardStatus(QWidget* parent)
    : QWidget(parent), port_(new QLabel(this)), caption_(new QLabel(this)), progress_(new QProgressBar(this))
{
    port_->setObjectName(QStringLiteral("PortLabel"));
    port_->setEnabled(false);
    caption_->setObjectName(QStringLiteral("ProgressCaption"));
    progress_->setRange(0, SearchSteps);
    progress_->setTextVisible(false);
    // Its room stays, so that nothing moves when it shows.
    QSizePolicy kept = progress_->sizePolicy();
    kept.setRetainSizeWhenHidden(true);
    progress_->setSizePolicy(kept);
    progress_->hide();
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(port_);
    layout->addStretch();
    layout->addWidget(caption_);
    layout->addWidget(progress_);
}

void WizardStatus::ShowPort(const QString& text, bool isOpen)
{
    port_->setText(text);
    port_->setEnabled(isOpen);
}

void WizardStatus::ShowCaption(const QString& text)
{
    caption_->setText(text);
}

void WizardStatus::ShowProgress(int value)
{
    progress_->setValue(value);
    progress_->show();
}

void WizardStatus::ShowEndless()
{
    progress_->setRange(0, 0);
}

void WizardStatus::EndProgress()
{
    caption_->clear();
    progress_->hide();
    progress_->setRange(0, SearchSteps);
}

}  // namespace kelvora
