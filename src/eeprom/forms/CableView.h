// Shows how the cables go, in the colours of the window.
#pragma once

#include <QWidget>

#include "catalogue/MessageCatalogue.h"

namespace kelvora {

class CableView final : public QWidget {
public:
    /// `catalogue` outlives the view.
    explicit CableView(const MessageCatalogue& catalogue, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const MessageCatalogue& catalogue_;
};

}  // namespace kelvora
