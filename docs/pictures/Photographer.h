// Takes pictures of windows and writes them as files.
#pragma once

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

private:
    void Save(const QImage& picture, const QString& name) const;

    QString folder_;
};

}  // namespace kelvora
