// The picture of a keyboard: its housing with one cap a grid position, numbered, sized after the key map and
// scaled with the widget. Mouse and arrow keys choose keys in the session that it shows.
#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "catalogue/MessageCatalogue.h"
#include "keymap/KeyGrid.h"
#include "keymap/KeyMapSession.h"

namespace kelvora {

class KeyCap;

class KeyGridView : public QWidget {
    Q_OBJECT

public:
    /// Both outlive the view.
    KeyGridView(KeyMapSession& session, const MessageCatalogue& catalogue, QWidget* parent);

    /// Shows what the session holds. A map that does not fit leaves the picture as it was, dimmed.
    void LayoutKeyGrid();

    /// "Key 43, quadruple key, row 4, column 7".
    QString KeyName(int position) const;

    /// Gives the keyboard focus to the cap of the session's ring.
    void FocusKeys();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// The user has chosen keys.
    void keysChosen();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QSize SizeFor(int keyWidth, int keyHeight) const;
    int Rows() const;
    KeyCap* Cap(int position) const { return caps_[static_cast<std::size_t>(position) - 1]; }
    void ShowKey(int position);
    void PlaceKeys();
    void FindRecesses();
    void AddRecess(const KeyRect& part);

    KeyMapSession& session_;
    const MessageCatalogue& catalogue_;
    std::vector<KeyCap*> caps_;
    std::string map_;              ///< the last map that did fit; single keys before the first
    std::vector<KeyRect> places_;  ///< where single keys would stand
    std::vector<KeyRect> recesses_;
    std::vector<QString> stateNames_;
    KeyRect housing_;
    int entry_ = 0;  ///< the one cap that the Tab key stops at
};

}  // namespace kelvora
