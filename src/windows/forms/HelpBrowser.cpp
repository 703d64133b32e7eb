#include "windows/forms/HelpBrowser.h"

#include <QStyle>
#include <QTextDocument>
#include <algorithm>
#include <cmath>

namespace kelvora {

QVariant HelpBrowser::loadResource(int type, const QUrl& name)
{
    const QVariant content = QTextBrowser::loadResource(type, name);
    if (type != QTextDocument::ImageResource) {
        // Another page: only its own pictures follow the window's size.
        pictures_.clear();
        return content;
    }
    const QImage picture = QImage::fromData(content.toByteArray());
    if (picture.isNull())
        return content;
    pictures_.insert(name, picture);
    return Fitted(picture);
}

void HelpBrowser::resizeEvent(QResizeEvent* event)
{
    QTextBrowser::resizeEvent(event);
    for (auto picture = pictures_.cbegin(); picture != pictures_.cend(); ++picture)
        document()->addResource(QTextDocument::ImageResource, picture.key(), Fitted(picture.value()));
    document()->markContentsDirty(0, document()->characterCount());
}

// Room for the scroll bar is kept also where none is shown: it would come and go with the size.
QImage HelpBrowser::Fitted(const QImage& picture) const
{
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    const int margins = static_cast<int>(std::ceil(2 * document()->documentMargin()));
    const int room = std::max(contentsRect().width() - bar - margins, 1);
    return picture.width() <= room ? picture : picture.scaledToWidth(room, Qt::SmoothTransformation);
}

}  // namespace kelvora
