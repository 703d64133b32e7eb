// The strip of module buttons of one setup window. It shows a document's chain where the strip's rules place
// it, scaled to the window's width, with each module's name and options below; it decides nothing.
#pragma once

#include <QLabel>
#include <QWidget>
#include <array>
#include <functional>
#include <optional>
#include <vector>

#include "app/MessageCatalogue.h"
#include "layout/ModuleStrip.h"
#include "layout/forms/ModuleButton.h"
#include "setup/PosCfg.h"

namespace kelvora {

class StripView final : public QWidget, public ModuleToolbar {
public:
    StripView(const MessageCatalogue& catalogue, QWidget* parent = nullptr);

    /// Called with a button that was clicked or on which Enter was pressed.
    std::function<void(StripButton)> onClick;

    /// Called when a context menu is wanted, after the button or its parent has got the focus.
    std::function<void(StripButton, const QPoint& globalPosition)> onContextMenu;

    /// Called on a double click.
    std::function<void(StripButton)> onDoubleClick;

    /// Shows the chain of these modules.
    void ShowModules(const ModuleList& modules);

    /// Sets all texts anew from the catalogue.
    void Retranslate();

    /// The button that has the keyboard focus.
    std::optional<StripButton> FocusedButton() const;

    /// Gives a shown button, or the first one, the keyboard focus.
    void FocusButton(std::optional<StripButton> button);

    ModuleButton& Button(StripButton button) const { return *buttons_[static_cast<std::size_t>(button)]; }

    /// The strip's container in twips.
    int ContainerWidth() const override;
    int ContainerHeight() const override;

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MakeButton(StripButton button);
    void Arrange();
    void ShowTexts(ModuleButton& button);
    const ModuleRecord* RecordOf(StripButton button) const;
    QString Caption(StripButton button) const;
    QString Summary(StripButton button) const;

    const MessageCatalogue& catalogue_;
    std::array<ModuleButton*, StripButtonCount> buttons_{};
    QLabel* empty_;
    ModuleList modules_;
    std::vector<PlacedButton> strip_;
};

}  // namespace kelvora
