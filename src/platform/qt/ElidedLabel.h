// A line of text that is cut in its middle where there is no room for all of it: paths tell most at both
// ends.
#pragma once

#include <QLabel>

namespace kelvora {

class ElidedLabel : public QLabel {
public:
    /// Takes the text as it is, without marks of a form.
    explicit ElidedLabel(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace kelvora
