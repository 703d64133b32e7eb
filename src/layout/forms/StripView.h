// The strip of module buttons of one setup window. It shows a document's chain where the strip's rules place
// it, scaled to the window's width, with each module's name and options below; it decides nothing.
#pragma once

#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QWidget>
#include <array>
#include <optional>
#include <vector>

#include "catalogue/MessageCatalogue.h"
#include "layout/StripScale.h"
#include "layout/forms/ModuleButton.h"
#include "layout/forms/WaitingPanel.h"
#include "picture/ModuleStrip.h"
#include "setup/PosCfg.h"

namespace kelvora {

class StripView final : public QWidget, public ModuleToolbar {
    Q_OBJECT

public:
    StripView(const MessageCatalogue& catalogue, QWidget* parent = nullptr);

    /// Shows the chain of these modules.
    void ShowModules(const ModuleList& modules);

    /// Shows no modules, and that they are waited for, until the next ShowModules.
    void ShowWaiting(const QString& text);
    /// Shows meanwhile, greyed, which ones will come.
    void ShowExpected(const ModuleList& modules);
    /// What stands there while they are waited for; null while they are not.
    WaitingPanel* Waiting() { return panel_; }

    /// Sets all texts anew from the catalogue.
    void Retranslate();

    /// The selected button, which has a frame: it has the keyboard focus, or had it last in this window.
    std::optional<StripButton> FocusedButton() const;

    /// Shows a main button, with its parts, lifted out of the strip: with its middle at `x` (in pixels), or
    /// over its own place. Nothing puts all back.
    void Float(std::optional<StripButton> button, std::optional<int> x);

    /// The strip's main buttons in pixels, the floating one at its own place.
    QRect StripRect() const;

    /// The main button at a horizontal position in pixels; one outside the strip counts as its edge.
    std::optional<StripHit> HitAt(int x) const;

    /// A click that follows at once belongs to the one before, and does nothing.
    void SwallowDoubleClick() { sinceDrop_.start(); }

    /// Gives a shown button, or the first one, the keyboard focus.
    void FocusButton(std::optional<StripButton> button);

    /// Whether the empty strip's own button can be pressed.
    void AllowAdding(bool isAllowed) { addMaster_->setEnabled(isAllowed); }

    ModuleButton& Button(StripButton button) const { return *buttons_[static_cast<std::size_t>(button)]; }

    /// The strip's container in twips.
    int ContainerWidth() const override;
    int ContainerHeight() const override;

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

signals:
    /// A button was clicked, or Enter was pressed on it.
    void clicked(StripButton button);

    /// A button that a click does not open was clicked twice.
    void doubleClicked(StripButton button);

    /// A context menu is wanted; the button that it is for, or its parent, has got the focus.
    void menuRequested(const QPoint& globalPosition);

    /// The empty strip's own button was pressed.
    void masterRequested();

    /// What is waited for is to be stopped.
    void stopRequested();

    /// Another button has got the focus.
    void focusChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    void MakeButton(StripButton button);
    void MakeEmptyState();
    void Show(const ModuleList& modules);
    void ShowSelection();
    void Arrange();
    void ArrangeFloating();
    void ArrangeWaiting();
    StripScale Scale() const;
    int TextTop() const;
    int TextRoom() const;
    void ShowTexts(ModuleButton& button);
    bool IsSwallowed(const QEvent& event) const;

    const MessageCatalogue& catalogue_;
    std::array<ModuleButton*, StripButtonCount> buttons_{};
    WaitingPanel* panel_ = nullptr;
    QWidget* empty_ = nullptr;
    QLabel* emptyText_ = nullptr;
    QPushButton* addMaster_ = nullptr;
    ModuleList modules_;
    std::vector<PlacedButton> strip_;
    std::optional<StripButton> focused_;
    bool waiting_ = false;  ///< for the modules of a scan
    std::optional<StripButton> floating_;
    std::optional<int> floatingX_;
    QElapsedTimer sinceDrop_;
};

}  // namespace kelvora
