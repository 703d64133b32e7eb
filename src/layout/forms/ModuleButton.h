// One button of the module strip: a drawn picture of its device, sharp at every size and scaling.
#pragma once

#include <QAbstractButton>
#include <QBasicTimer>
#include <QByteArray>

#include "picture/ModuleStrip.h"
#include "picture/forms/SvgPicture.h"

namespace kelvora {

class ModuleButton final : public QAbstractButton {
public:
    ModuleButton(StripButton button, QWidget* parent);

    StripButton Button() const { return button_; }

    /// The device's picture as SVG text. Drawn when it is shown.
    void SetPicture(QByteArray svg);

    /// The selected module has a frame: a full one while the keys go to it, else a faint one.
    void SetSelected(bool selected);

    QSize sizeHint() const override;

protected:
    // A press that is held opens the menu, as the right button does: a finger has no other.
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    StripButton button_;
    SvgPicture picture_;
    bool selected_ = false;
    QBasicTimer hold_;
    QPoint heldAt_;
};

}  // namespace kelvora
