#include "series/forms/LaneView.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "platform/qt/Announcement.h"
#include "platform/qt/Text.h"
#include "series/forms/VerdictSign.h"

namespace kelvora {

namespace {

using State = Lane::State;

// In the order of Lane::State; none for a line on which nothing runs.
constexpr std::array StateTexts{MessageId{0, ""},      Message::LaneWaiting,   Message::LaneNoPort,
                                Message::LaneWorking,  Message::SeriesDone,    Message::SeriesSame,
                                Message::SeriesFailed, Message::SeriesStopped, Message::LaneEnded};
static_assert(StateTexts.size() == static_cast<std::size_t>(State::Last) + 1);

constexpr int TerminalSize = 24;

}  // namespace

LaneView::LaneView(const MessageCatalogue& catalogue, QWidget* parent)
    : QFrame(parent),
      catalogue_(catalogue),
      name_(new QLabel(this)),
      sign_(new VerdictSign(this)),
      terminal_(new QLabel(this)),
      hint_(new QLabel(this)),
      last_(new QLabel(this)),
      retry_(new QPushButton(this))
{
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    retry_->setObjectName(QStringLiteral("Retry"));
    terminal_->setObjectName(QStringLiteral("Terminal"));
    hint_->setObjectName(QStringLiteral("Hint"));
    for (QLabel* const label : {name_, terminal_, hint_, last_}) {
        label->setTextFormat(Qt::PlainText);
        label->setAlignment(Qt::AlignCenter);
    }
    QFont large = font();
    large.setPixelSize(TerminalSize);
    large.setBold(true);
    terminal_->setFont(large);
    // Long names and reasons must not widen one lane at the cost of the others.
    for (QLabel* const label : {terminal_, hint_, last_}) {
        label->setWordWrap(true);
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }
    hint_->setMinimumHeight(4 * fontMetrics().lineSpacing());
    hint_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    auto* const column = new QVBoxLayout(this);
    column->addWidget(name_);
    column->addWidget(sign_, 1);
    column->addWidget(terminal_);
    column->addWidget(hint_);
    column->addWidget(retry_, 0, Qt::AlignHCenter);
    column->addWidget(last_);
    connect(retry_, &QPushButton::clicked, this, &LaneView::retryRequested);
}

QString LaneView::Words(State state) const
{
    const MessageId& text = StateTexts.at(static_cast<std::size_t>(state));
    return text.id == 0 ? QString() : ToQString(catalogue_.Caption(text));
}

QString LaneView::Hint() const
{
    QStringList lines;
    if (!lane_.Message().empty())
        lines << QString::fromStdString(lane_.Message());
    else if (isStopping_ && lane_.IsWorking())
        lines << ToQString(catalogue_.Caption(Message::LaneStopping));
    else if (IsPass(lane_.Now()) && lane_.IsRunning())
        lines << ToQString(catalogue_.Caption(Message::LaneTakeAway));
    if (!lane_.Warning().empty())
        lines << QString::fromStdString(lane_.Warning());
    return lines.join(QLatin1Char('\n'));
}

// The last verdict, or what is waited for while that one still stands above.
QString LaneView::BelowSign() const
{
    if (lane_.LastVerdict() == State::Idle)
        return {};
    if (lane_.LastVerdict() == lane_.Now())
        return lane_.IsGone() && lane_.IsRunning() ? Words(State::Waiting) : QString();
    return ToQString(catalogue_.Caption(Message::LaneLast)) + QLatin1Char(' ') +
           QString::fromStdString(lane_.LastTerminal()) + QStringLiteral(": ") + Words(lane_.LastVerdict());
}

void LaneView::ShowLane(const Lane& lane, bool isStopping)
{
    const bool isNews = lane.Now() != lane_.Now();
    lane_ = lane;
    isStopping_ = isStopping;
    Paint();
    if (isNews)
        Announce(*this, accessibleName() + QLatin1Char(' ') + hint_->text());
}

void LaneView::Paint()
{
    const auto ground = GroundOf(lane_.Now());
    QPalette colours;
    if (ground) {
        colours.setColor(QPalette::Window, *ground);
        colours.setColor(QPalette::WindowText, Qt::white);
    }
    setPalette(colours);
    // A button keeps the colours of the desktop.
    retry_->setPalette(QPalette());
    sign_->ShowState(lane_.Now(), Words(lane_.Now()), lane_.Percent());
    terminal_->setText(QString::fromStdString(lane_.Terminal()));
    hint_->setText(Hint());
    hint_->setToolTip(hint_->text());
    retry_->setVisible(lane_.CanRetry() && !(isStopping_ && lane_.IsRunning()));
    last_->setText(BelowSign());
    const QString state = QStringList{Words(lane_.Now()), terminal_->text()}.join(QLatin1Char(' ')).trimmed();
    setAccessibleName(state.isEmpty() ? title_ : title_ + QStringLiteral(": ") + state);
}

void LaneView::Retranslate(const QString& title)
{
    title_ = title;
    name_->setText(title);
    retry_->setText(ToQString(catalogue_.Caption(Message::SeriesRetry)));
    Paint();
}

}  // namespace kelvora
