#include "eeprom/forms/SavedCopy.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "platform/qt/Text.h"

namespace kelvora {

SavedCopy::SavedCopy(const MessageCatalogue& catalogue, QWidget* parent)
    : QWidget(parent), path_(new QLineEdit(this))
{
    auto* const label = new QLabel(ToQString(catalogue.Caption(Message::EepromSaved)), this);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    // A label would break the path at its hyphens.
    path_->setObjectName(QStringLiteral("SavedInfo"));
    path_->setReadOnly(true);
    path_->setAccessibleName(label->text());
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label);
    layout->addWidget(path_);
    hide();
}

void SavedCopy::Show(const QString& path)
{
    path_->setText(path);
    path_->setToolTip(path);
    setVisible(!path.isEmpty());
}

}  // namespace kelvora
