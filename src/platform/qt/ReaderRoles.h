// What a screen reader takes widgets for that paint themselves: pictures, and lists of entries, each of them
// pressed like a button, and selected or not. All go by their accessible names.
#pragma once

#include <QAbstractButton>
#include <functional>

namespace kelvora {

void ShowAsPicture(QWidget& picture);

/// Shows `list` as the list of the entries in it.
void ShowAsList(QWidget& list);

/// Shows `button` as an entry of the list that it stands in. `isSelected` is asked whenever that is wanted.
void ShowAsEntry(QAbstractButton& button, std::function<bool()> isSelected);

/// Tells that an entry has been selected, or is no longer.
void TellSelection(QWidget& entry);

}  // namespace kelvora
