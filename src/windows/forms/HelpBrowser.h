// A page of the help, with its pictures no wider than the window.
#pragma once

#include <QHash>
#include <QImage>
#include <QTextBrowser>
#include <QUrl>

namespace kelvora {

class HelpBrowser final : public QTextBrowser {
public:
    using QTextBrowser::QTextBrowser;

protected:
    QVariant loadResource(int type, const QUrl& name) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QImage Fitted(const QImage& picture) const;

    QHash<QUrl, QImage> pictures_;  ///< of the page, in their own size, by the name that it has for them
};

}  // namespace kelvora
