#include "layout/forms/StripView.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "keymap/Models.h"
#include "layout/LayoutCommands.h"
#include "layout/StripScale.h"
#include "picture/DevicePicture.h"
#include "platform/qt/Text.h"
#include "setup/Options.h"

namespace kelvora {

namespace {

// How far a module that is being placed is lifted out of the strip, in pixels.
constexpr int FloatingLift = 14;

// The narrowest module's texts need more room than its button.
constexpr int TextOverhang = 6;

MessageId CaptionOf(StripButton button)
{
    switch (button) {
        case StripButton::MasterTemplate:
        case StripButton::Master:
            return Message::MasterCaption;
        case StripButton::Backlight:
            return Message::BacklightCaption;
        case StripButton::Code4:
            return Message::Code4Caption;
        case StripButton::KM064:
            return Message::SlaveCaption;
        case StripButton::MCR:
            return Message::McrCaption;
        case StripButton::ICCR:
            return Message::IccrCaption;
        case StripButton::Keypad:
            break;
    }
    return Message::KeypadCaption;
}

QRect PlaceOf(const StripScale& scale, const PlacedButton& placed)
{
    const PixelRect place = scale.PlaceOf(placed);
    return {place.left, place.top, place.width, place.height};
}

}  // namespace

StripView::StripView(const MessageCatalogue& catalogue, QWidget* parent)
    : QWidget(parent), catalogue_(catalogue)
{
    setObjectName(QStringLiteral("ModuleStrip"));
    for (const StripButtonShape& shape : StripButtons)
        MakeButton(shape.button);
    setFocusPolicy(Qt::ClickFocus);
    setMouseTracking(true);
    MakeEmptyState();
    Retranslate();
}

void StripView::MakeEmptyState()
{
    empty_ = new QWidget(this);
    emptyText_ = new QLabel(empty_);
    emptyText_->setAlignment(Qt::AlignCenter);
    emptyText_->setWordWrap(true);
    addMaster_ = new QPushButton(empty_);
    addMaster_->setObjectName(QStringLiteral("AddMaster"));
    addMaster_->installEventFilter(this);
    connect(addMaster_, &QPushButton::clicked, this, [this] {
        if (onAddMaster)
            onAddMaster();
    });
    auto* layout = new QVBoxLayout(empty_);
    layout->addStretch();
    layout->addWidget(emptyText_);
    layout->addSpacing(TextOverhang);
    layout->addWidget(addMaster_, 0, Qt::AlignHCenter);
    layout->addStretch();
}

void StripView::MakeButton(StripButton button)
{
    auto* made = new ModuleButton(button, this);
    made->setFocusPolicy(TakesFocus(button) ? Qt::StrongFocus : Qt::NoFocus);
    if (OpensKeyMap(button))
        made->setCursor(Qt::PointingHandCursor);
    made->installEventFilter(this);
    connect(made, &QAbstractButton::clicked, this, [this, button] {
        if (onClick)
            onClick(button);
    });
    buttons_.at(static_cast<std::size_t>(button)) = made;
}

void StripView::ShowModules(const ModuleList& modules)
{
    modules_ = modules;
    strip_ = LayOutStrip(modules_);
    for (ModuleButton* button : buttons_) {
        const auto placed = std::ranges::find(strip_, button->Button(), &PlacedButton::button);
        if (placed != strip_.end()) {
            const std::string picture = DevicePicture(button->Button(), RecordOf(button->Button()));
            button->SetPicture(QByteArray::fromStdString(picture));
            ShowTexts(*button);
        }
        button->setVisible(placed != strip_.end());
    }
    QWidget* before = nullptr;
    for (const PlacedButton& placed : strip_) {
        ModuleButton& button = Button(placed.button);
        if (before)
            setTabOrder(before, &button);
        before = &button;
        if (!IsMainButton(placed.button))
            button.raise();
    }
    empty_->setVisible(strip_.empty());
    ShowEmptyText();
    Arrange();
}

void StripView::SayWaiting(const QString& text)
{
    emptyText_->setText(text);
}

void StripView::ShowWaiting(const QString& text)
{
    // The buttons go one after the other: each would pass the focus on to the next.
    const auto focused = focused_;
    setFocus();
    ShowModules({});
    focused_ = focused;
    emptyText_->setText(text);
    addMaster_->hide();
}

void StripView::ShowEmptyText()
{
    emptyText_->setText(ToQString(catalogue_.Caption(Message::EmptyStrip)));
    addMaster_->show();
}

void StripView::Retranslate()
{
    ShowEmptyText();
    addMaster_->setText(ToQString(catalogue_.Caption(Message::AddMasterNow)));
    for (ModuleButton* button : buttons_)
        ShowTexts(*button);
    update();
}

void StripView::ShowTexts(ModuleButton& button)
{
    const QString caption = Caption(button.Button());
    const QString summary = Details(button.Button());
    button.setAccessibleName(caption);
    button.setAccessibleDescription(summary);
    QString tip = summary.isEmpty() ? caption : caption + QStringLiteral("\n") + summary;
    if (OpensKeyMap(button.Button()))
        tip += QStringLiteral("\n") + ToQString(catalogue_.Caption(Message::ClickToEdit));
    button.setToolTip(tip);
}

const ModuleRecord* StripView::RecordOf(StripButton button) const
{
    const auto index = FindModule(modules_, KindOfButton(button));
    return index ? &modules_[*index] : nullptr;
}

QString StripView::Caption(StripButton button) const
{
    return ToQString(catalogue_.Caption(CaptionOf(button)));
}

QString StripView::Summary(StripButton button) const
{
    const ModuleRecord* record = RecordOf(button);
    if (!record)
        return {};
    QStringList parts;
    if (record->Kind == ModuleKind::KM096 && record->Options == Options::Yes)
        parts << ToQString(catalogue_.Caption(Message::FiscalSummary));
    if (record->Kind == ModuleKind::MCR)
        parts << ToQString(record->Options.substr(0, Options::TracksLength)).trimmed();
    if (FindModel(record->Kind))
        parts << ToQString(catalogue_.Word(Message::FirstKeySummary)) +
                     QString::number(FirstKeyNumber(record->Kind, modules_));
    return parts.join(QStringLiteral(" · "));
}

QString StripView::Details(StripButton button) const
{
    QString details = Summary(button);
    const ModuleRecord* record = RecordOf(button);
    if (!record || record->Kind != ModuleKind::MCR)
        return details;
    const std::array captions{Message::OptionSeparator1, Message::OptionSeparator2,
                              Message::OptionSeparator3};
    for (std::size_t track = 0; track < captions.size(); ++track) {
        const char separator = record->Options[Options::SeparatorAt + track];
        if (separator != Options::NoSeparator)
            details +=
                '\n' + ToQString(catalogue_.Caption(captions.at(track)) + ": " + separator).remove('&');
    }
    if (record->Options.substr(Options::AutoreadAt) == Options::On)
        details += '\n' + ToQString(catalogue_.Caption(Message::OptionAutoread)).remove('&');
    return details;
}

std::optional<StripButton> StripView::FocusedButton() const
{
    if (!focused_ || std::ranges::find(strip_, *focused_, &PlacedButton::button) == strip_.end())
        return std::nullopt;
    return focused_;
}

void StripView::FocusButton(std::optional<StripButton> button)
{
    const auto shown = [this](StripButton wanted) {
        return std::ranges::find(strip_, wanted, &PlacedButton::button) != strip_.end();
    };
    if (button && shown(*button))
        Button(*button).setFocus();
    else if (!strip_.empty())
        Button(strip_.front().button).setFocus();
    else
        addMaster_->setFocus();
}

void StripView::Float(std::optional<StripButton> button, std::optional<int> x)
{
    floating_ = button;
    floatingX_ = x;
    Arrange();
}

QRect StripView::StripRect() const
{
    const StripScale scale = FitStrip(strip_, width(), height());
    QRect all;
    for (const PlacedButton& placed : strip_)
        if (IsMainButton(placed.button))
            all |= PlaceOf(scale, placed);
    return all;
}

std::optional<StripHit> StripView::HitAt(int x) const
{
    // In twips from the pixel on: rounding twice would fall off the edges.
    const int position = FitStrip(strip_, width(), height()).ToTwips(x);
    return HitTest(strip_, ClampToStrip(position, strip_));
}

void StripView::focusInEvent(QFocusEvent* /*event*/)
{
    // The ground between the modules has nothing to do with keys; while placing it has.
    if (!floating_)
        FocusButton(FocusedButton());
}

int StripView::ContainerWidth() const
{
    return width() * TwipsPerPixel;
}

int StripView::ContainerHeight() const
{
    return height() * TwipsPerPixel;
}

QSize StripView::minimumSizeHint() const
{
    return sizeHint() * SmallestStripScale;
}

QSize StripView::sizeHint() const
{
    return {FullStripWidth() / TwipsPerPixel, FullStripHeight() / TwipsPerPixel};
}

void StripView::resizeEvent(QResizeEvent* /*event*/)
{
    // Where the pointer was means another place now.
    floatingX_.reset();
    Arrange();
}

void StripView::Arrange()
{
    empty_->setGeometry(rect().adjusted(TextOverhang, 0, -TextOverhang, 0));
    const StripScale scale = FitStrip(strip_, width(), height());
    for (const PlacedButton& placed : strip_)
        Button(placed.button).setGeometry(PlaceOf(scale, placed));
    ArrangeFloating();
    update();
}

void StripView::ArrangeFloating()
{
    if (!floating_)
        return;
    const QRect own = Button(*floating_).geometry();
    const int dx = floatingX_ ? *floatingX_ - own.center().x() : 0;
    for (const PlacedButton& placed : strip_) {
        if (MainButtonOf(placed.button) != *floating_)
            continue;
        ModuleButton& button = Button(placed.button);
        button.move(button.pos() + QPoint(dx, -FloatingLift));
        button.raise();
    }
}

void StripView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const QFontMetrics metrics(font());
    const StripScale scale = FitStrip(strip_, width(), height());
    int bottom = 0;
    for (const PlacedButton& placed : strip_)
        bottom = std::max(bottom, PlaceOf(scale, placed).bottom());
    for (const PlacedButton& placed : strip_) {
        if (!IsMainButton(placed.button))
            continue;
        const QRect button = PlaceOf(scale, placed);
        QRect line(button.left() - TextOverhang / 2, bottom + metrics.height() / 2,
                   button.width() + TextOverhang, metrics.height());
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(line, Qt::AlignCenter,
                         metrics.elidedText(Caption(placed.button), Qt::ElideRight, line.width()));
        line.translate(0, metrics.height());
        QColor faint = palette().color(QPalette::WindowText);
        faint.setAlphaF(0.7F);
        painter.setPen(faint);
        painter.drawText(line, Qt::AlignCenter,
                         metrics.elidedText(Summary(placed.button), Qt::ElideRight, line.width()));
    }
}

bool StripView::IsSwallowed(const QEvent& event) const
{
    const bool clicks = event.type() == QEvent::MouseButtonPress ||
                        event.type() == QEvent::MouseButtonRelease ||
                        event.type() == QEvent::MouseButtonDblClick;
    return clicks && sinceDrop_.isValid() && !sinceDrop_.hasExpired(QApplication::doubleClickInterval());
}

bool StripView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == addMaster_ && event->type() == QEvent::KeyPress) {
        // Outside a dialog Enter does not press a button by itself.
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            addMaster_->click();
            return true;
        }
    }
    auto* button = dynamic_cast<ModuleButton*>(watched);
    if (!button)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::FocusIn && focused_ != button->Button()) {
        focused_ = button->Button();
        if (onFocusChange)
            onFocusChange();
    }
    if (IsSwallowed(*event))
        return true;
    const auto openMenu = [&](const QPoint& place) {
        Button(MainButtonOf(button->Button())).setFocus();
        if (onContextMenu)
            onContextMenu(button->Button(), place);
    };
    if (event->type() == QEvent::ContextMenu) {
        // By the mouse it comes with the press; the menu opens at the release.
        const auto* menu = static_cast<QContextMenuEvent*>(event);
        if (menu->reason() != QContextMenuEvent::Mouse)
            openMenu(menu->globalPos());
        return true;
    }
    if (event->type() == QEvent::MouseButtonRelease) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::RightButton) {
            openMenu(mouse->globalPosition().toPoint());
            return true;
        }
    }
    if (event->type() == QEvent::MouseButtonDblClick && onDoubleClick && !OpensKeyMap(button->Button())) {
        onDoubleClick(button->Button());
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace kelvora
