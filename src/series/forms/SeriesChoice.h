// What a series writes, and on which lines: the upper part of its window.
#pragma once

#include <QWidget>
#include <array>

#include "catalogue/UserFiles.h"
#include "ports/Lines.h"
#include "setup/PosCfg.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace kelvora {

class SeriesChoice final : public QWidget {
    Q_OBJECT

public:
    /// All but the parent outlive it; `defaults` remembers the folders.
    SeriesChoice(const UserFiles& files, const Lines& lines, PosCfg& defaults, QWidget* parent = nullptr);

    /// Whether a series can begin: a file or a folder, and a line.
    bool IsComplete() const;

    /// Offers that setup file.
    void OfferSetup(const QString& path);

    bool IsByName() const;
    QString Path() const;  ///< of the setup, or of the folder
    bool HasLine(int line) const;
    void ChooseLine(int line, bool chosen);
    QString LineTitle(int line) const;  ///< "COM1", and that it is simulated when it is

    void Retranslate();

signals:
    /// Something else is chosen.
    void changed();

private:
    struct Row {
        QRadioButton* choice;
        QLineEdit* path;
        QPushButton* browse;
    };

    Row MakeRow(const char* name);
    void BrowseSetup();
    void BrowseFolder();

    const UserFiles& files_;
    const Lines& ports_;
    PosCfg& defaults_;
    Row setup_;
    Row folder_;
    QLabel* linesLabel_;
    std::array<QCheckBox*, LineCount> lines_{};
};

}  // namespace kelvora
