// The window that compares two flash images: their dumps side by side, the differences in words below, ways
// to go from one to the next and to look for bytes, and saving it all as a text.
#pragma once

#include <QDialog>

#include "catalogue/UserFiles.h"
#include "flash/ImageComparison.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace kelvora {

class ImageTable;

class ComparisonDialog final : public QDialog {
public:
    /// `files` outlives the window.
    ComparisonDialog(const UserFiles& files, ImageComparison images, QWidget* parent = nullptr);

    /// Shows the texts of the program's language.
    void Retranslate();

private:
    void MakeKeys();
    void Arrange();
    void ListDifferences();
    void Step(int by);
    void ShowDifference();
    void Find();
    void SaveAs();

    const UserFiles& files_;
    ImageComparison images_;
    std::vector<std::string> described_;  ///< the differences in words
    QLabel* findLabel_;
    QLineEdit* find_;
    QPushButton* findNext_;
    QLabel* found_;
    ImageTable* table_;
    QLabel* count_;
    QListWidget* list_;
    QPushButton* previous_;
    QPushButton* next_;
    QPushButton* save_;
};

}  // namespace kelvora
