// The series' window in the main window: opened once, and asked before the program ends.
#pragma once

#include <QObject>
#include <QPointer>

#include "layout/SetupDesk.h"
#include "series/forms/SeriesWindow.h"
#include "series/qt/SoundPlayer.h"
#include "windows/forms/SetupWindows.h"

namespace kelvora {

class SeriesForms final : public QObject {
    Q_OBJECT

public:
    /// Both outlive the object.
    SeriesForms(const SetupDesk& desk, SetupWindows& setups);
    ~SeriesForms() override;

    /// Opens the window, or brings it to the front. The setup in front, and its line, are offered.
    void Show();

    /// Whether the program may end: a series that runs is asked about.
    bool MayClose();
    bool IsRunning() const { return window_ && window_->IsRunning(); }
    void Retranslate();

signals:
    /// After a Yes to that question the series has ended.
    void ended();

private:
    const SetupDesk& desk_;
    SetupWindows& setups_;
    SoundPlayer sounds_;
    QPointer<SeriesWindow> window_;
};

}  // namespace kelvora
