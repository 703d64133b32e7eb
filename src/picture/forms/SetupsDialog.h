// The window that compares two setups: their strips and keys beside each other with the differences marked,
// the differences in words below, and ways to go from one to the next. It changes nothing.
#pragma once

#include <QDialog>
#include <array>
#include <optional>

#include "catalogue/MessageCatalogue.h"
#include "picture/SetupComparison.h"

class QLabel;
class QListWidget;
class QPushButton;
class QTabBar;

namespace kelvora {

class ElidedLabel;
class PictureView;

/// A setup, and what the window calls it.
struct NamedSetup {
    QString name;
    SetupDocument document;

    friend bool operator==(const NamedSetup&, const NamedSetup&) = default;
};

class SetupsDialog final : public QDialog {
public:
    /// `catalogue` outlives the window.
    SetupsDialog(const MessageCatalogue& catalogue, NamedSetup before, NamedSetup after,
                 QWidget* parent = nullptr);

    /// Compares these from now on; does nothing when they are what is shown.
    void ShowSetups(NamedSetup before, NamedSetup after);

    /// Shows the texts of the catalogue's language.
    void Retranslate();

private:
    /// One half of the window.
    struct Half {
        ElidedLabel* name;
        PictureView* picture;
    };

    void MakeKeys();
    void Arrange();
    void ListViews();
    void ListDifferences();
    void Step(int by);
    void ShowDifference();
    void ShowPictures();
    void ShowPicture(SetupComparison::Side side);
    std::optional<std::size_t> Chosen() const;
    ModuleKind View() const;
    QString Caption(const MessageId& message) const;

    const MessageCatalogue& catalogue_;
    NamedSetup before_;
    NamedSetup after_;
    SetupComparison comparison_;
    QTabBar* views_;
    std::array<Half, 2> halves_;
    QLabel* hint_;
    QLabel* count_;
    QListWidget* list_;
    QPushButton* previous_;
    QPushButton* next_;
};

}  // namespace kelvora
