// Takes pictures of windows and writes them as files.
#pragma once

#include "ClockAndChance.h"
#include "Viewer.h"

namespace kelvora {

class Photographer final : public Viewer {
public:
    /// Makes the folder. Throws std::runtime_error.
    explicit Photographer(const QString& folder);

    /// Writes the window as "NAME.png".
    void Take(QWidget& window, const QString& name) const override;

    /// Writes the picture as "NAME.png", with a thin edge.
    void Keep(QImage picture, const QString& name) const override;

    /// The machine's clock in the pictures follows.
    void TimeIs(std::chrono::steady_clock::duration passed) const override { SetPictureClock(passed); }

private:
    void Save(const QImage& picture, const QString& name) const;

    QString folder_;
};

}  // namespace kelvora
