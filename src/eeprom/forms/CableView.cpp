#include "eeprom/forms/CableView.h"

#include <QPainter>

#include "picture/CablePicture.h"
#include "picture/forms/SvgPicture.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

constexpr QSize CableViewSize(540, 220);
constexpr QSize SmallestCableView(360, 147);

}  // namespace

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
}

QSize CableView::sizeHint() const
{
    return CableViewSize;
}

QSize CableView::minimumSizeHint() const
{
    return SmallestCableView;
}

void CableView::paintEvent(QPaintEvent* /*event*/)
{
    const std::string ink = palette().color(QPalette::WindowText).name().toStdString();
    const SvgPicture picture(QByteArray::fromStdString(CablePicture(catalogue_, ink)));
    QRect place(QPoint(), picture.SizeIn(size()));
    place.moveCenter(rect().center());
    QPainter painter(this);
    painter.drawPixmap(place, picture.Pixels(place.size(), devicePixelRatioF()));
}

}  // namespace kelvora
