// What a lane says across the room: a colour, a sign and words, as large as there is room for.
#pragma once

#include <QColor>
#include <QWidget>
#include <optional>

#include "series/Lane.h"

namespace kelvora {

/// The ground that a state is shown on; nothing for that of the window.
std::optional<QColor> GroundOf(Lane::State state);

class VerdictSign final : public QWidget {
public:
    explicit VerdictSign(QWidget* parent = nullptr);

    /// `percent` is drawn while it is working; below 0 for not known.
    void ShowState(Lane::State state, const QString& words, int percent);

    QSize sizeHint() const override { return {240, 220}; }
    QSize minimumSizeHint() const override { return {150, 140}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void PaintSign(QPainter& painter, const QRectF& place) const;
    QFont FittingFont(const QRectF& place) const;

    Lane::State state_ = Lane::State::Idle;
    QString words_;
    int percent_ = -1;
};

}  // namespace kelvora
