#include "platform/qt/HelpTopic.h"

#include <QWidget>

namespace kelvora {

namespace {

constexpr const char* Property = "helpPage";

}  // namespace

HelpTopic::HelpTopic(QWidget& window, const char* page) : window_(&window), before_(window.property(Property))
{
    window.setProperty(Property, QString::fromLatin1(page));
}

HelpTopic::~HelpTopic()
{
    if (window_)
        window_->setProperty(Property, before_);
}

QString HelpTopic::Of(const QWidget& window)
{
    return window.property(Property).toString();
}

}  // namespace kelvora
