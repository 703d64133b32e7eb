#include "series/forms/SeriesWindow.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "picture/forms/SheetPrinter.h"
#include "platform/Encoding.h"
#include "platform/LocalTime.h"
#include "platform/qt/ReaderRoles.h"
#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"
#include "series/forms/LaneView.h"
#include "series/forms/SeriesChoice.h"
#include "series/forms/SeriesTable.h"

namespace kelvora {

namespace {

constexpr QSize InitialSize(1080, 760);

constexpr int CounterSize = 26;

std::string WithEnding(std::string path, std::string_view ending)
{
    return path.find('.', path.rfind('/') + 1) == std::string::npos ? path.append(ending) : path;
}

}  // namespace

SeriesWindow::SeriesWindow(const UserFiles& files, const Lines& lines, PosCfg& defaults, EventLoop& eventLoop,
                           RunnerMaker makeRunner)
    : files_(files),
      ports_(lines),
      defaults_(defaults),
      eventLoop_(eventLoop),
      makeRunner_(std::move(makeRunner)),
      choice_(new SeriesChoice(files, lines, defaults, this)),
      lanes_(new QHBoxLayout),
      start_(AddButton("Start", &SeriesWindow::Start)),
      stopAfter_(AddButton("StopAfter", &SeriesWindow::StopAfter)),
      stopNow_(AddButton("StopNow", &SeriesWindow::StopNow))
{
    setObjectName(QStringLiteral("SeriesWindow"));
    setAttribute(Qt::WA_DeleteOnClose);
    ShowAsWindow(*this);
    for (QLabel*& counter : counters_)
        counter = AddCounter();
    // Made in the order in which the Tab key visits them.
    MakeLanes();
    save_ = AddButton("SaveReport", &SeriesWindow::SaveReport);
    print_ = AddButton("Print", &SeriesWindow::Print);
    table_ = new SeriesTable(files.Words().Catalogue(), this);
    Arrange();
    connect(choice_, &SeriesChoice::changed, this, &SeriesWindow::Update);
    AddKeys(*this, {QKeySequence::Close}, [this] { close(); });
    Retranslate();
    Update();
    resize(InitialSize.boundedTo(screen()->availableSize() * 9 / 10));
}

SeriesWindow::~SeriesWindow()
{
    // Their programs are ended one after the other, and have nobody to tell.
    for (Line& line : lines_)
        if (line.runner)
            line.runner->onEnd = nullptr;
}

QPushButton* SeriesWindow::AddButton(const char* name, void (SeriesWindow::*click)())
{
    auto* const button = NamedButton(name, *this);
    connect(button, &QPushButton::clicked, this, click);
    return button;
}

QLabel* SeriesWindow::AddCounter()
{
    auto* const counter = new QLabel(this);
    QFont large = font();
    large.setPixelSize(CounterSize);
    large.setBold(true);
    counter->setFont(large);
    return counter;
}

void SeriesWindow::MakeLanes()
{
    for (int number = 1; number <= LineCount; ++number) {
        Line& line = lines_.at(static_cast<std::size_t>(number) - 1);
        line.view = new LaneView(files_.Words().Catalogue(), this);
        line.view->setObjectName(QStringLiteral("Lane%1").arg(number));
        connect(line.view, &LaneView::retryRequested, this, [this, number] { Retry(number); });
        lanes_->addWidget(line.view, 1);
    }
}

void SeriesWindow::Arrange()
{
    auto* const buttons = new QHBoxLayout;
    for (QPushButton* const button : {start_, stopAfter_, stopNow_})
        buttons->addWidget(button);
    buttons->addStretch(1);
    auto* const counts = new QHBoxLayout;
    for (QLabel* const counter : counters_) {
        counts->addWidget(counter);
        counts->addStretch(1);
    }
    for (QPushButton* const button : {save_, print_})
        counts->addWidget(button);
    // Where the screen is smaller than all of it.
    auto* const area = new QScrollArea(this);
    auto* const content = new QWidget(area);
    area->setFrameShape(QFrame::NoFrame);
    // It follows the focus to what is below.
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setWidget(content);
    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins({});
    whole->addWidget(area);
    auto* const layout = new QVBoxLayout(content);
    layout->addWidget(choice_);
    layout->addLayout(buttons);
    layout->addLayout(lanes_, 3);
    layout->addLayout(counts);
    layout->addWidget(table_, 2);
}

QString SeriesWindow::Text(const MessageId& message) const
{
    return ToQString(files_.Words().Caption(message));
}

void SeriesWindow::Offer(const QString& setup, int line)
{
    if (choice_->Path().isEmpty() && !setup.isEmpty())
        choice_->OfferSetup(setup);
    if (!IsRunning())
        choice_->ChooseLine(line, true);
}

bool SeriesWindow::IsRunning() const
{
    return std::ranges::any_of(lines_, [](const Line& line) { return line.lane.IsRunning(); });
}

QStringList SeriesWindow::ArgumentsFor(int number) const
{
    const SerialPort& port = *ports_.Port(number);
    QStringList arguments{QStringLiteral("series"),
                          QStringLiteral("--json"),
                          QStringLiteral("--yes"),
                          QStringLiteral("--port"),
                          QString::number(number),
                          QStringLiteral("--line"),
                          QString::number(number) + QLatin1Char('=') + PathToQString(port.Device()),
                          QStringLiteral("--settings"),
                          ToQString(defaults_.PortSettings)};
    if (choice_->IsByName())
        arguments << QStringLiteral("--by-name");
    return arguments << choice_->Path();
}

void SeriesWindow::Start()
{
    QStringList names;
    for (int number = 1; number <= LineCount; ++number)
        if (choice_->HasLine(number))
            names << choice_->LineTitle(number);
    const std::string what = FromQString(names.join(QStringLiteral(", ")) + QStringLiteral(": ")) +
                             TextFromPath(PathFromQString(choice_->Path())) + "\r\n" +
                             files_.Words().Caption(Message::SeriesAskBackup);
    if (files_.Words().Show(Message::SeriesAsk, YesNoStyle, what) != Answer::Yes)
        return;
    for (int number = 1; number <= LineCount; ++number)
        if (choice_->HasLine(number))
            StartLine(number, ArgumentsFor(number));
    Update();
}

void SeriesWindow::StartLine(int number, const QStringList& arguments)
{
    Line& line = lines_.at(static_cast<std::size_t>(number) - 1);
    line.lane.Begin();
    line.arguments = arguments;
    line.isStopping = false;
    line.startsAgain = false;
    line.runner = makeRunner_();
    line.runner->onLine = [this, number](const std::string& text) { Take(number, text); };
    line.runner->onEnd = [this, number](const std::string& failure) { End(number, failure); };
    line.runner->Start(arguments);
}

void SeriesWindow::StopAfter()
{
    for (Line& line : lines_) {
        if (!line.lane.IsRunning() || std::exchange(line.isStopping, true))
            continue;
        // One that was to start again ends already; asked twice it would stop its work.
        if (!std::exchange(line.startsAgain, false))
            line.runner->StopAfter();
    }
    Update();
}

void SeriesWindow::StopNow()
{
    for (Line& line : lines_) {
        if (!line.lane.IsRunning())
            continue;
        line.isStopping = true;
        line.startsAgain = false;
        line.runner->StopNow();
    }
    Update();
}

// A program that finds a terminal works on it: the same till is found once more, and gets what was agreed to.
// A series that was stopped is not begun again by it.
void SeriesWindow::Retry(int number)
{
    Line& line = lines_.at(static_cast<std::size_t>(number) - 1);
    if (!line.lane.CanRetry())
        return;
    if (!line.lane.IsRunning())
        StartLine(number, line.arguments + QStringList{QStringLiteral("--count"), QStringLiteral("1")});
    else if (!line.isStopping && !std::exchange(line.startsAgain, true))
        line.runner->StopAfter();
    Update();
}

void SeriesWindow::Take(int number, const std::string& text)
{
    SeriesEvent event;
    if (!ReadSeriesLine(text, event))
        return;
    Line& line = lines_.at(static_cast<std::size_t>(number) - 1);
    line.lane.Take(event);
    if (event.kind == SeriesEvent::Kind::Result) {
        table_->Add(event);
        ShowCounts();
        emit judged(IsPass(line.lane.Now()));
    }
    Update();
}

void SeriesWindow::End(int number, const std::string& failure)
{
    Line& line = lines_.at(static_cast<std::size_t>(number) - 1);
    line.lane.End(failure);
    if (line.startsAgain && !closes_)
        // It is the runner itself that tells of its end.
        eventLoop_.After(std::chrono::milliseconds(0), [window = QPointer<SeriesWindow>(this), number] {
            if (!window)
                return;
            window->StartLine(number, window->lines_.at(static_cast<std::size_t>(number) - 1).arguments);
            window->Update();
        });
    Update();
    if (closes_ && !IsRunning())
        close();
}

void SeriesWindow::Update()
{
    const bool isRunning = IsRunning();
    choice_->setEnabled(!isRunning);
    start_->setEnabled(!isRunning && choice_->IsComplete());
    stopAfter_->setEnabled(std::ranges::any_of(
        lines_, [](const Line& line) { return line.lane.IsRunning() && !line.isStopping; }));
    stopNow_->setEnabled(isRunning);
    const bool hasResults = !table_->Results().empty();
    save_->setEnabled(hasResults);
    print_->setEnabled(hasResults);
    for (int number = 1; number <= LineCount; ++number) {
        Line& line = lines_.at(static_cast<std::size_t>(number) - 1);
        line.view->setVisible(line.lane.IsRunning() || line.lane.Now() != Lane::State::Idle ||
                              choice_->HasLine(number));
        line.view->ShowLane(line.lane, line.isStopping);
    }
}

void SeriesWindow::ShowCounts()
{
    const SeriesCounts counts = CountsOf(table_->Results());
    const std::array rows{std::pair{Message::SeriesDone, counts.done},
                          std::pair{Message::SeriesSame, counts.same},
                          std::pair{Message::SeriesFailed, counts.failed + counts.stopped}};
    for (std::size_t i = 0; i < rows.size(); ++i)
        counters_.at(i)->setText(Text(rows.at(i).first) + QStringLiteral(": ") +
                                 QString::number(rows.at(i).second));
}

void SeriesWindow::SaveReport()
{
    const MessageCatalogue& catalogue = files_.Words().Catalogue();
    const std::string filters = catalogue.Caption(Message::FilterCsv) + " (*.csv)|*.csv|JSON (*.json)|*.json";
    const auto choice = files_.Dialogs().Save(
        {catalogue.Caption(Message::SeriesReportTitle), files_.Folder(), {}, filters, 1, "cdgSeriesReport"});
    if (!choice)
        return;
    const bool isJson = choice->filterIndex == 2 || choice->path.ends_with(".json");
    const std::string path = WithEnding(choice->path, isJson ? ".json" : ".csv");
    if (files_.MayWrite(path))
        files_.Write(path,
                     path.ends_with(".json") ? ReportJson(table_->Results()) : ReportCsv(table_->Results()));
}

void SeriesWindow::Print()
{
    ChoosePrinter(
        *this, windowTitle(),
        [this] {
            return ReportSheets(table_->Results(), LocalTimeText(LocalTime()), files_.Words().Catalogue());
        },
        files_);
}

bool SeriesWindow::MayClose()
{
    if (!IsRunning())
        return true;
    if (!closes_ && files_.Words().Show(Message::SeriesAskClose, YesNoStyle) == Answer::Yes) {
        closes_ = true;
        StopAfter();
    }
    return !IsRunning();
}

void SeriesWindow::closeEvent(QCloseEvent* event)
{
    if (!MayClose())
        event->ignore();
}

void SeriesWindow::Retranslate()
{
    setWindowTitle(Text(Message::SeriesTitle));
    start_->setText(Text(Message::SeriesStart));
    stopAfter_->setText(Text(Message::SeriesStopAfter));
    stopNow_->setText(Text(Message::SeriesStopNow));
    save_->setText(Text(Message::SeriesSaveReport));
    print_->setText(Text(Message::SeriesPrint));
    choice_->Retranslate();
    table_->Retranslate();
    table_->setAccessibleName(windowTitle());
    for (int number = 1; number <= LineCount; ++number)
        lines_.at(static_cast<std::size_t>(number) - 1).view->Retranslate(choice_->LineTitle(number));
    ShowCounts();
}

}  // namespace kelvora
