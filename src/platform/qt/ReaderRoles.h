// What a screen reader takes widgets for that Qt tells nothing about: those that paint themselves (pictures,
// and lists of entries, each of them pressed like a button, and selected or not), which go by their
// accessible names, and windows.
#pragma once

#include <QAbstractButton>
#include <functional>

namespace kelvora {

/// For a window that is neither a dialog nor a main window: it goes by its title.
void ShowAsWindow(QWidget& window);

void ShowAsPicture(QWidget& picture);

/// Shows `list` as the list of the entries in it.
void ShowAsList(QWidget& list);

/// Shows `button` as an entry of the list that it stands in. `isSelected` is asked whenever that is wanted.
void ShowAsEntry(QAbstractButton& button, std::function<bool()> isSelected);

/// Tells that an entry has been selected, or is no longer.
void TellSelection(QWidget& entry);

}  // namespace kelvora
