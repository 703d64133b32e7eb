// Shows one drawing of the core, as large as there is room for, or a text in its place.
#pragma once

#include <QSvgRenderer>
#include <QWidget>
#include <string>

namespace kelvora {

class PictureView final : public QWidget {
    Q_OBJECT

public:
    explicit PictureView(QWidget* parent = nullptr);

    /// `text` is shown when `svg` is empty.
    void Show(const std::string& svg, const QString& text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// A point of the drawing, in its own unit, was clicked.
    void clicked(int x, int y);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    QRectF Place() const;

    QSvgRenderer drawing_;
    QString text_;
    std::string svg_;
};

}  // namespace kelvora
