// A place that says what can be dropped on the window.
#pragma once

#include <QLabel>

namespace kelvora {

class DropPlace final : public QLabel {
public:
    explicit DropPlace(QWidget* parent);

    /// What can be dropped is above the window, or no longer.
    void ShowAbove(bool isAbove);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool isAbove_ = false;
};

}  // namespace kelvora
