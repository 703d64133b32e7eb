// The window of a series: what is written where, a lane a line, counters, and the tills that were done. On
// each line a program of its own works; this one shows what they say.
#pragma once

#include <QWidget>
#include <array>
#include <functional>
#include <memory>

#include "catalogue/UserFiles.h"
#include "platform/EventLoop.h"
#include "ports/Lines.h"
#include "series/Lane.h"
#include "series/qt/SeriesProcess.h"
#include "setup/PosCfg.h"

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace kelvora {

class LaneView;
class SeriesChoice;
class SeriesTable;

class SeriesWindow final : public QWidget {
    Q_OBJECT

public:
    using RunnerMaker = std::function<std::unique_ptr<SeriesRunner>()>;

    /// A window of its own that deletes itself when it is closed. All outlive it; `defaults` names the port
    /// settings, and remembers the folders.
    SeriesWindow(const UserFiles& files, const Lines& lines, PosCfg& defaults, EventLoop& eventLoop,
                 RunnerMaker makeRunner);
    ~SeriesWindow() override;

    /// Offers a setup file, and a line, 1 to 4, to begin with.
    void Offer(const QString& setup, int line);

    bool IsRunning() const;
    /// Sets all texts anew, from the catalogue and from what the lines are.
    void Retranslate();

    /// Whether it may close: a series that runs is asked about, and stopped.
    bool MayClose();

    /// Whether it closes as soon as the series has been stopped.
    bool IsClosing() const { return closes_; }

signals:
    /// A till has its verdict.
    void judged(bool passed);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    struct Line {
        Lane lane;
        std::unique_ptr<SeriesRunner> runner;
        LaneView* view = nullptr;
        QStringList arguments;     ///< with which it was started: what the user has agreed to
        bool startsAgain = false;  ///< once its program has ended
        bool isStopping = false;   ///< after the till at hand, or at once
    };

    QPushButton* AddButton(const char* name, void (SeriesWindow::*click)());
    QLabel* AddCounter();
    void MakeLanes();
    void Arrange();
    void Start();
    void StartLine(int number, const QStringList& arguments);
    void StopAfter();
    void StopNow();
    void Retry(int number);
    void Take(int number, const std::string& text);
    void End(int number, const std::string& failure);
    QStringList ArgumentsFor(int number) const;
    void SaveReport();
    void Print();
    void Update();
    void ShowCounts();
    QString Text(const MessageId& message) const;

    const UserFiles& files_;
    const Lines& ports_;
    const PosCfg& defaults_;
    EventLoop& eventLoop_;
    RunnerMaker makeRunner_;
    std::array<Line, LineCount> lines_;
    SeriesChoice* choice_;
    QHBoxLayout* lanes_;
    std::array<QLabel*, 3> counters_{};
    QPushButton* start_;
    QPushButton* stopAfter_;
    QPushButton* stopNow_;
    QPushButton* save_ = nullptr;
    QPushButton* print_ = nullptr;
    SeriesTable* table_ = nullptr;
    bool closes_ = false;  ///< when all programs have ended
};

}  // namespace kelvora
