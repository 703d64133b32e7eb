// Shows how the cables go, in the colours of the window.
#pragma once

#include <QWidget>

#include "catalogue/MessageCatalogue.h"
#include "picture/forms/SvgPicture.h"

namespace kelvora {

class CableView final : public QWidget {
public:
    /// `catalogue` outlives the view.
    explicit CableView(const MessageCatalogue& catalogue, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    /// The drawing's words are as large as the window's there.
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void Draw();

    const MessageCatalogue& catalogue_;
    SvgPicture picture_;
};

}  // namespace kelvora
