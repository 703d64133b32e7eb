#include "platform/qt/Announcement.h"

#include <QAccessibleWidget>

namespace kelvora {

namespace {

// Qt 6.4 has no announcements, but screen readers say a notification that appears. This one is seen by nobody
// else.
class Notification final : public QAccessibleWidget {
public:
    explicit Notification(QWidget* notice) : QAccessibleWidget(notice, QAccessible::Notification) {}

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.invisible = false;
        return state;
    }
};

QWidget* NoticeOf(QWidget& place)
{
    const QString name = QStringLiteral("Announcement");
    if (auto* const notice = place.findChild<QWidget*>(name, Qt::FindDirectChildrenOnly))
        return notice;
    auto* const notice = new QWidget(&place);
    notice->setObjectName(name);
    QAccessible::registerAccessibleInterface(new Notification(notice));
    return notice;
}

}  // namespace

void Announce(QWidget& place, const QString& text)
{
    QWidget* const notice = NoticeOf(place);
    notice->setAccessibleName(text);
    QAccessibleEvent event(notice, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&event);
}

void ShowNews(QLabel& label, const QString& text)
{
    const bool isNews = text != label.text() && !text.isEmpty() && label.window()->isVisible();
    label.setText(text);
    if (isNews)
        Announce(label, text);
}

}  // namespace kelvora
