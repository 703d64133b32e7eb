// The question before a keyboard's flash memory is written: what will change there, line by line. It is
// answered with Yes or No, and No is the default.
#pragma once

#include <QDialog>
#include <string>
#include <vector>

#include "catalogue/MessageCatalogue.h"

namespace kelvora {

class ChangesDialog final : public QDialog {
    Q_OBJECT

public:
    /// `question` stands above `lines`, each of them one change, or a heading over some, and `backup` below
    /// them.
    ChangesDialog(const MessageCatalogue& catalogue, const QString& title, const QString& question,
                  const std::vector<std::string>& lines, const QString& backup, QWidget* parent = nullptr);

signals:
    /// The images themselves are wanted.
    void comparisonRequested();
};

}  // namespace kelvora
