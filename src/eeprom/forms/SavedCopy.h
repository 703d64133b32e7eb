// Where the copy of what was overwritten is: the path in one piece, to be read whole and copied.
#pragma once

#include <QWidget>

#include "catalogue/MessageCatalogue.h"

class QLineEdit;

namespace kelvora {

class SavedCopy final : public QWidget {
public:
    explicit SavedCopy(const MessageCatalogue& catalogue, QWidget* parent = nullptr);

    /// Shows the path; nothing when it is empty.
    void Show(const QString& path);

private:
    QLineEdit* path_;
};

}  // namespace kelvora
