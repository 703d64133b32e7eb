// The series' window in the main window: opened once, and asked before the program ends.
#pragma once

#include <QPointer>
#include <functional>

#include "layout/SetupDesk.h"
#include "series/forms/SeriesWindow.h"
#include "series/qt/SoundPlayer.h"
#include "windows/forms/SetupWindows.h"

namespace kelvora {

class SeriesForms {
public:
    /// Both outlive the object.
    SeriesForms(const SetupDesk& desk, SetupWindows& setups);
    ~SeriesForms();
    SeriesForms(const SeriesForms&) = delete;
    SeriesForms& operator=(const SeriesForms&) = delete;

    /// Opens the window, or brings it to the front. The setup in front, and its line, are offered.
    void Show();

    /// Whether the program may end: a series that runs is asked about. After a Yes `onEnded` is called when
    /// the series has ended.
    bool MayClose();
    std::function<void()> onEnded;
    void Retranslate();

private:
    const SetupDesk& desk_;
    SetupWindows& setups_;
    SoundPlayer sounds_;
    QPointer<SeriesWindow> window_;
    QObject ending_;  ///< the program's wait for the window
};

}  // namespace kelvora
