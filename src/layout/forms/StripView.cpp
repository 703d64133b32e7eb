#include "layout/forms/StripView.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

#include "layout/LayoutCommands.h"
#include "layout/forms/StripLabels.h"
#include "layout/forms/StripTexts.h"
#include "picture/DevicePicture.h"
#include "platform/qt/ProgramStyle.h"
#include "platform/qt/ReaderRoles.h"
#include "platform/qt/Text.h"

namespace kelvora {

namespace {

// How far a module that is being placed is lifted out of the strip, in pixels.
constexpr int FloatingLift = 14;

// Around what stands where no device does, in pixels.
constexpr int PanelSpace = 6;

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
    ShowAsList(*this);
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
    connect(addMaster_, &QPushButton::clicked, this, &StripView::masterRequested);
    auto* layout = new QVBoxLayout(empty_);
    layout->addStretch();
    layout->addWidget(emptyText_);
    layout->addSpacing(PanelSpace);
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
    connect(made, &QAbstractButton::clicked, this, [this, button] { emit clicked(button); });
    buttons_.at(static_cast<std::size_t>(button)) = made;
}

void StripView::ShowModules(const ModuleList& modules)
{
    waiting_ = false;
    // Its own button may have led here.
    if (panel_) {
        panel_->hide();
        panel_->deleteLater();
    }
    panel_ = nullptr;
    Show(modules);
}

void StripView::Show(const ModuleList& modules)
{
    modules_ = modules;
    strip_ = LayOutStrip(modules_);
    for (ModuleButton* button : buttons_) {
        const auto placed = std::ranges::find(strip_, button->Button(), &PlacedButton::button);
        if (placed != strip_.end()) {
            const std::string picture =
                DevicePicture(button->Button(), StripRecord(button->Button(), modules_));
            button->SetPicture(QByteArray::fromStdString(picture));
            ShowTexts(*button);
        }
        button->setVisible(placed != strip_.end());
        button->setEnabled(!waiting_);
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
    empty_->setVisible(strip_.empty() && !waiting_);
    ShowSelection();
    Arrange();
}

void StripView::ShowSelection()
{
    const auto selected = FocusedButton();
    for (ModuleButton* button : buttons_)
        button->SetSelected(button->Button() == selected);
    update();
}

void StripView::ShowWaiting(const QString& text)
{
    // The buttons go one after the other: each would pass the focus on to the next.
    waiting_ = true;
    setFocus();
    if (!panel_) {
        panel_ = new WaitingPanel(catalogue_, this);
        panel_->Stop().installEventFilter(this);
        connect(&panel_->Stop(), &QPushButton::clicked, this, &StripView::stopRequested);
    }
    panel_->Begin(text);
    Show({});
    panel_->show();
}

void StripView::ShowExpected(const ModuleList& modules)
{
    Show(modules);
    panel_->raise();
}

void StripView::Retranslate()
{
    setAccessibleName(ToQString(catalogue_.Caption(Message::StripDevices)));
    emptyText_->setText(ToQString(catalogue_.Caption(Message::EmptyStrip)));
    addMaster_->setText(ToQString(catalogue_.Caption(Message::AddMasterNow)));
    for (ModuleButton* button : buttons_)
        ShowTexts(*button);
    update();
}

void StripView::ShowTexts(ModuleButton& button)
{
    button.setAccessibleName(StripName(catalogue_, button.Button(), modules_));
    button.setAccessibleDescription(StripDetails(catalogue_, button.Button(), modules_));
    button.setToolTip(waiting_ ? QString() : StripTip(catalogue_, button.Button(), modules_));
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
    if (waiting_)
        setFocus();
    else if (button && shown(*button))
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
    const StripScale scale = Scale();
    QRect all;
    for (const PlacedButton& placed : strip_)
        if (IsMainButton(placed.button))
            all |= PlaceOf(scale, placed);
    return all;
}

std::optional<StripHit> StripView::HitAt(int x) const
{
    // In twips from the pixel on: rounding twice would fall off the edges.
    const int position = Scale().ToTwips(x);
    return HitTest(strip_, ClampToStrip(position, strip_));
}

void StripView::focusInEvent(QFocusEvent* /*event*/)
{
    // The ground between the modules has nothing to do with keys; while placing or waiting it has.
    if (!floating_ && !waiting_)
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
    // The narrowest module can be touched too.
    const double touched =
        double(ProgramStyle::LeastTarget(*this, 0)) * TwipsPerPixel / ShapeOf(StripButton::MCR).width;
    return sizeHint() * std::max(SmallestStripScale, touched);
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

// What is waited with has room below the strip.
StripScale StripView::Scale() const
{
    const int panel = panel_ && !strip_.empty() ? TextRoom() + panel_->sizeHint().height() + PanelSpace : 0;
    return FitStrip(strip_, width(), height() - panel);
}

// Two lines, and half of one above and below them.
int StripView::TextRoom() const
{
    return 3 * fontMetrics().height();
}

// Of the texts below the devices.
int StripView::TextTop() const
{
    int bottom = 0;
    for (const PlacedButton& placed : strip_)
        bottom = std::max(bottom, PlaceOf(Scale(), placed).bottom());
    return bottom + fontMetrics().height() / 2;
}

void StripView::ArrangeWaiting()
{
    if (!panel_)
        return;
    QRect place(QPoint(), panel_->sizeHint().expandedTo(panel_->minimumSize()));
    place.moveCenter(rect().center());
    if (!strip_.empty())
        place.moveTop(std::min(TextTop() + 5 * fontMetrics().height() / 2, height() - place.height()));
    panel_->setGeometry(place);
}

void StripView::Arrange()
{
    empty_->setGeometry(rect().adjusted(PanelSpace, 0, -PanelSpace, 0));
    const StripScale scale = Scale();
    for (const PlacedButton& placed : strip_)
        Button(placed.button).setGeometry(PlaceOf(scale, placed));
    ArrangeFloating();
    ArrangeWaiting();
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
    const StripScale scale = Scale();
    const auto chosen = FocusedButton();
    std::vector<StripLabel> names;
    std::vector<StripLabel> summaries;
    for (const PlacedButton& placed : strip_) {
        if (!IsMainButton(placed.button))
            continue;
        const QRect device = PlaceOf(scale, placed);
        // Told by more than the frame's colour.
        names.push_back({device, StripCaption(catalogue_, placed.button),
                         chosen && MainButtonOf(*chosen) == placed.button});
        summaries.push_back({device, StripSummary(catalogue_, placed.button, modules_)});
    }
    QColor ink = palette().color(QPalette::WindowText);
    painter.setPen(ink);
    PaintLabels(painter, names, TextTop());
    ink.setAlphaF(0.7F);
    painter.setPen(ink);
    PaintLabels(painter, summaries, TextTop() + fontMetrics().height());
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
    if (auto* const plain = dynamic_cast<QPushButton*>(watched); plain && event->type() == QEvent::KeyPress) {
        // Outside a dialog Enter does not press a button by itself.
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            plain->click();
            return true;
        }
    }
    auto* button = dynamic_cast<ModuleButton*>(watched);
    if (!button)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::FocusIn && focused_ != button->Button()) {
        focused_ = button->Button();
        ShowSelection();
        emit focusChanged();
    }
    if (IsSwallowed(*event))
        return true;
    const auto openMenu = [&](const QPoint& place) {
        Button(MainButtonOf(button->Button())).setFocus();
        emit menuRequested(place);
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
    if (event->type() == QEvent::MouseButtonDblClick && !OpensKeyMap(button->Button())) {
        emit doubleClicked(button->Button());
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace kelvora
