// Parts that several windows are made of.
#pragma once

#include <QKeySequence>
#include <QList>
#include <QPushButton>
#include <QSplitter>
#include <QStyle>
#include <functional>
#include <span>

class QLabel;
class QTableView;

namespace kelvora {

/// Calls `action` on any of the keys, which no menu entry or button has, while `window`, which is one of its
/// own on the screen, is in front.
void AddKeys(QWidget& window, const QList<QKeySequence>& keys, const std::function<void()>& action);

/// The window that a dialog belongs to: the active one; right after another dialog has closed there may be
/// none, then the main window that is shown.
QWidget* DialogParent();

/// Whether a dialog keeps hands from `widget`. Screen readers press all the same.
bool IsUnderDialog(const QWidget& widget);

/// Shows the window before all others, with the keys going to it.
void BringToFront(QWidget& window);

/// A button of that name that the Enter key does not press from elsewhere in the window.
QPushButton* NamedButton(const char* name, QWidget& window, const QString& text = {});

/// A text as it stands, wrapped where there is no room for it.
QLabel* TextLabel(const QString& name, const QString& text, QWidget* parent = nullptr);

/// The icon of a message box, in its size.
QLabel* LargeIcon(QStyle::StandardPixmap picture, QWidget& window);

/// The main part of a window above, three times as high as the part below.
QSplitter* SplitDown(QWidget& above, QWidget& below, QWidget& window);

/// From now on each column of the table, which has its model, is at least as wide as its head.
void KeepHeadsWhole(QTableView& table);

/// A table for many rows of one height, chosen one at a time; its columns are so many characters wide.
void ListRows(QTableView& table, std::span<const int> columnWidths);

}  // namespace kelvora
