#include "eeprom/forms/CableView.h"

#include <QEvent>
#include <QFontInfo>
#include <QPainter>

#include "picture/CablePicture.h"
#include "platform/qt/Text.h"

namespace kelvora {

CableView::CableView(const MessageCatalogue& catalogue, QWidget* parent)
    : QWidget(parent), catalogue_(catalogue)
{
    setObjectName(QStringLiteral("Cables"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    QStringList names;
    for (const MessageId& part :
         {Message::CableY, Message::CableKeyboard, Message::CableComputer, Message::CablePower})
        names << ToQString(catalogue.Caption(part));
    setAccessibleName(names.join(QStringLiteral(", ")));
    Draw();
}

QSize CableView::sizeHint() const
{
    return minimumSizeHint() * 6 / 5;
}

QSize CableView::minimumSizeHint() const
{
    const int width = CablePictureWidth * QFontInfo(font()).pixelSize() / CableWordSize;
    return picture_.SizeIn({width, width});
}

void CableView::Draw()
{
    const std::string ink = palette().color(QPalette::WindowText).name().toStdString();
    picture_ = SvgPicture(QByteArray::fromStdString(CablePicture(catalogue_, ink)));
    update();
}

void CableView::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        Draw();
    else if (event->type() == QEvent::FontChange)
        updateGeometry();
}

void CableView::paintEvent(QPaintEvent* /*event*/)
{
    QRect place(QPoint(), picture_.SizeIn(size()));
    place.moveCenter(rect().center());
    QPainter painter(this);
    painter.drawPixmap(place, picture_.Pixels(place.size(), devicePixelRatioF()));
}

}  // namespace kelvora
