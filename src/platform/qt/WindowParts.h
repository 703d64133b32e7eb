// Parts that several windows are made of.
#pragma once

#include <QKeySequence>
#include <QList>
#include <QPushButton>
#include <QSplitter>
#include <functional>
#include <span>

class QTableView;

namespace kelvora {

/// Calls `action` on any of the keys, which no menu entry or button has, while `window`, which is one of its
/// own on the screen, is in front.
void AddKeys(QWidget& window, const QList<QKeySequence>& keys, const std::function<void()>& action);

/// A button of that name that the Enter key does not press from elsewhere in the window.
QPushButton* NamedButton(const char* name, QWidget& window, const QString& text = {});

/// The main part of a window above, three times as high as the part below.
QSplitter* SplitDown(QWidget& above, QWidget& below, QWidget& window);

/// From now on each column of the table, which has its model, is at least as wide as its head.
void KeepHeadsWhole(QTableView& table);

/// A table for many rows of one height, chosen one at a time; its columns are so many characters wide.
void ListRows(QTableView& table, std::span<const int> columnWidths);

}  // namespace kelvora
