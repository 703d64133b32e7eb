// The window that shows what passes over the lines: direction, meaning, bytes and damage of each frame.
#pragma once

#include <QWidget>

#include "catalogue/UserFiles.h"
#include "comms/LineMonitor.h"
#include "comms/RunningOperation.h"
#include "comms/forms/LineMonitorModel.h"
#include "platform/EventLoop.h"

class QLabel;
class QPlainTextEdit;
class QPushButton;
class QTableView;

namespace kelvora {

class LineMonitorWindow final : public QWidget {
public:
    /// A window of its own that deletes itself when it is closed. Both outlive it; it takes the monitor's
    /// onChange while it lives.
    LineMonitorWindow(const UserFiles& files, const RunningOperation& running, EventLoop& eventLoop,
                      LineMonitor& monitor);
    ~LineMonitorWindow() override;

    /// Shows the texts of the program's language.
    void Retranslate();

    /// Shows that a device operation has begun or ended: nothing is saved while one runs.
    void ShowBusy();

private:
    void MakeTable();
    void FollowEnd();
    void MakeDetail();
    void Arrange();
    void UpdateSoon();
    void Update();
    void ShowEntries();
    void ShowDetail();
    void Clear();
    void SaveAs();

    const UserFiles& files_;
    const RunningOperation& running_;
    EventLoop& eventLoop_;
    LineMonitor& monitor_;
    LineMonitorModel* model_;
    QTableView* table_;
    QLabel* empty_;
    QPlainTextEdit* detail_;
    QPushButton* pause_;
    QPushButton* clear_;
    QPushButton* save_;
    bool isAtEnd_ = true;  ///< the table is scrolled to its end
    bool updatePending_ = false;
};

}  // namespace kelvora
