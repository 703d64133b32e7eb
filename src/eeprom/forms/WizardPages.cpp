#include "eeprom/forms/WizardPages.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>
#include <vector>

#include "eeprom/forms/CableView.h"
#include "platform/qt/Announcement.h"
#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"

namespace kelvora {

namespace {

/// The space between two texts of a page, in pixels.
constexpr int TextSpacing = 14;

/// The space between the words of a text that is several labels, in pixels.
constexpr int WordSpacing = 3;

// A text that takes several numbers of the catalogue, joined.
QString Joined(const MessageCatalogue& catalogue, std::initializer_list<MessageId> parts)
{
    std::string text;
    for (const MessageId& part : parts)
        text += catalogue.Word(part);
    return ToQString(text).trimmed();
}

QFrame* MakeTextPage(const char* name, const std::vector<QString>& texts)
{
    auto* page = new QFrame;
    auto* layout = new QVBoxLayout(page);
    layout->setSpacing(TextSpacing);
    int index = 0;
    for (const QString& text : texts)
        layout->addWidget(TextLabel(QString::fromLatin1(name) + QString::number(index++), text));
    layout->addStretch();
    return page;
}

}  // namespace

QFrame* MakeIntroductionPage(const MessageCatalogue& catalogue)
{
    return MakeTextPage("Info1", {Joined(catalogue, {Message::EepromQualified, Message::EepromQualifiedMore}),
                                  Joined(catalogue, {Message::EepromPanel, Message::EepromPanelMore}),
                                  Joined(catalogue, {Message::EepromStart})});
}

QFrame* MakeInstructionPage(const MessageCatalogue& catalogue)
{
    QFrame* const page = MakeTextPage(
        "Info2", {Joined(catalogue, {Message::EepromDisconnect, Message::EepromDisconnectMore}),
                  Joined(catalogue, {Message::EepromConnect, Message::EepromConnectMore}),
                  Joined(catalogue, {Message::EepromPower}), Joined(catalogue, {Message::EepromReady})});
    static_cast<QVBoxLayout*>(page->layout())->addWidget(new CableView(catalogue), 1);
    return page;
}

void AnnouncePage(QWidget& page)
{
    QStringList texts;
    for (const QLabel* const text :
         page.findChildren<QLabel*>(QRegularExpression(QStringLiteral("^Info[12]"))))
        texts << text->text();
    if (!texts.isEmpty())
        Announce(page, texts.join(QLatin1Char(' ')));
}

SearchPage::SearchPage(const MessageCatalogue& catalogue, int port)
    : opened_(new QWidget(this)),
      stop_(new QPushButton(ToQString(catalogue.Caption(Message::AbortCommand)), this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(TextSpacing);
    auto* openedLayout = new QHBoxLayout(opened_);
    openedLayout->setContentsMargins(0, 0, 0, 0);
    openedLayout->setSpacing(WordSpacing);
    openedLayout->addWidget(new QLabel(ToQString(catalogue.Caption(Message::EepromLineCom))));
    auto* number = new QLabel(QString::number(port));
    number->setObjectName(QStringLiteral("PortNumber"));
    openedLayout->addWidget(number);
    openedLayout->addWidget(new QLabel(ToQString(catalogue.Caption(Message::EepromOpened))));
    openedLayout->addStretch();
    opened_->setObjectName(QStringLiteral("Info30"));
    layout->addWidget(opened_);
    repeats_ = AddText("Repeats", Joined(catalogue, {Message::EepromRepeats}));
    outcome_ = AddText("Outcome", {});
    ready_ = AddText("Info31", Joined(catalogue, {Message::EepromReady}));
    stop_->setObjectName(QStringLiteral("StopCommand"));
    // The Enter key that began the search must not end it.
    stop_->setAutoDefault(false);
    layout->addWidget(stop_, 0, Qt::AlignLeft);
    layout->addStretch();
    Clear();
}

QLabel* SearchPage::AddText(const char* name, const QString& text)
{
    QLabel* label = TextLabel(QString::fromLatin1(name), text);
    layout()->addWidget(label);
    return label;
}

void SearchPage::Clear()
{
    for (QWidget* widget : {opened_, static_cast<QWidget*>(repeats_), static_cast<QWidget*>(outcome_),
                            static_cast<QWidget*>(ready_), static_cast<QWidget*>(stop_)})
        widget->hide();
}

void SearchPage::ShowOpened()
{
    opened_->show();
}

void SearchPage::ShowSearching(bool searching)
{
    stop_->setVisible(searching);
    // Not on the button: the key that has begun the search may be pressed once more.
    if (searching)
        setFocus();
    else
        repeats_->hide();
}

void SearchPage::ShowRepeating()
{
    repeats_->show();
    Announce(*this, repeats_->text());
}

void SearchPage::ShowOutcome(const QString& text)
{
    outcome_->setText(QString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
    outcome_->show();
    Announce(*this, outcome_->text());
}

void SearchPage::ShowReady()
{
    ready_->show();
    Announce(*this, ready_->text());
}

}  // namespace kelvora
