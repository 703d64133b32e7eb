// Placing a module in the strip by mouse or keyboard. While it lasts the strip shows the chain as it will be,
// the module floats under the pointer, which cannot leave the strip, and a gap is open where it would drop.
#pragma once

#include <QObject>
#include <QPoint>
#include <optional>

#include "layout/LayoutCommands.h"

class QKeyEvent;
class QMouseEvent;

namespace kelvora {

class StripView;

class PlacingMode final : public QObject {
    Q_OBJECT

public:
    /// Starts placing a module of that kind, new or already in `document`. Belongs to the strip and deletes
    /// itself at the end.
    PlacingMode(StripView& strip, const SetupDocument& document, ModuleKind kind);
    ~PlacingMode() override;

signals:
    /// With the chosen place, or nothing when it was cancelled. The strip shows the setup as it was.
    void ended(std::optional<std::size_t> place);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Preview(std::optional<int> pointerX);
    void TellPlace();
    void MouseMoved(const QMouseEvent& event);
    void FollowPointer(int x);
    void HoldPointer(QPoint global);
    bool TakeKey(const QKeyEvent& event);
    void MoveTo(std::size_t place);
    void End(bool drop);

    StripView& strip_;
    SetupDocument document_;
    ModuleKind kind_;
    PlaceRange range_;
    std::size_t place_;
    QPoint pointerAtStart_;
    bool pressed_ = false;
    bool ended_ = false;
};

}  // namespace kelvora
