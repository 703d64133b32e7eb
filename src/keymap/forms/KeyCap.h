// One key cap of a key grid: a light button that paints itself, in the colours of a light or a dark desktop.
#pragma once

#include <QAbstractButton>

namespace kelvora {

/// Colours of the keyboard: its housing, the caps standing in it, and the two marks of chosen keys.
struct KeyboardColours {
    QColor housing;
    QColor housingEdge;
    QColor recess;
    QColor face;
    QColor side;
    QColor number;
    QColor unusedFace;
    QColor unusedSide;
    QColor unusedNumber;
    QColor focus;

    static const KeyboardColours& For(const QPalette& palette);
};

/// How a cap is marked: not chosen, chosen among others, or the one that the choice controls name.
enum class CapMark { None, Chosen, Selected };

class KeyCap : public QAbstractButton {
public:
    explicit KeyCap(QWidget* parent);

    void Show(bool unused, CapMark mark);

    /// The height of a single key, in pixels; sets the size of the number and the roundness of the corners.
    void SetUnit(int keyHeight);

    /// While `clicked` is being told: the modifier keys that were down when the mouse clicked; none for a
    /// click that had no mouse.
    Qt::KeyboardModifiers ClickModifiers() const { return clickModifiers_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;

private:
    bool unused_ = false;
    CapMark mark_ = CapMark::None;
    int unit_ = 0;
    Qt::KeyboardModifiers clickModifiers_;
};

}  // namespace kelvora
