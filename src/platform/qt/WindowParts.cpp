#include "platform/qt/WindowParts.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QMainWindow>
#include <QTableView>

#include "platform/qt/ProgramStyle.h"

namespace kelvora {

void AddKeys(QWidget& window, const QList<QKeySequence>& keys, const std::function<void()>& action)
{
    auto* const entry = new QAction(&window);
    entry->setShortcuts(keys);
    QObject::connect(entry, &QAction::triggered, &window, action);
    window.addAction(entry);
}

QWidget* DialogParent()
{
    if (QWidget* active = QApplication::activeWindow())
        return active;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && dynamic_cast<QMainWindow*>(window))
            return window;
    return nullptr;
}

bool IsUnderDialog(const QWidget& widget)
{
    const QWidget* const modal = QApplication::activeModalWidget();
    return modal && modal != widget.window();
}

void BringToFront(QWidget& window)
{
    window.show();
    window.raise();
    window.activateWindow();
}

QPushButton* NamedButton(const char* name, QWidget& window, const QString& text)
{
    auto* const button = new QPushButton(text, &window);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    return button;
}

QLabel* TextLabel(const QString& name, const QString& text, QWidget* parent)
{
    auto* const label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

QLabel* LargeIcon(QStyle::StandardPixmap picture, QWidget& window)
{
    auto* const icon = new QLabel(&window);
    const int side = window.style()->pixelMetric(QStyle::PM_MessageBoxIconSize);
    icon->setPixmap(window.style()->standardIcon(picture).pixmap(side, side));
    return icon;
}

QSplitter* SplitDown(QWidget& above, QWidget& below, QWidget& window)
{
    auto* const split = new QSplitter(Qt::Vertical, &window);
    split->addWidget(&above);
    split->addWidget(&below);
    split->setStretchFactor(0, 3);
    split->setStretchFactor(1, 1);
    split->setChildrenCollapsible(false);
    return split;
}

void KeepHeadsWhole(QTableView& table)
{
    const auto widen = [&table] {
        const QHeaderView& heads = *table.horizontalHeader();
        for (int column = 0; column < heads.count(); ++column)
            table.setColumnWidth(column, std::max(table.columnWidth(column), heads.sectionSizeHint(column)));
    };
    widen();
    // The language may change.
    QObject::connect(table.model(), &QAbstractItemModel::headerDataChanged, &table, widen);
}

namespace {

// The style is another one when the touch size is switched.
class RowHeight final : public QObject {
public:
    explicit RowHeight(QTableView& table) : QObject(&table), table_(table)
    {
        table.installEventFilter(this);
        Set();
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::StyleChange || event->type() == QEvent::FontChange)
            Set();
        return QObject::eventFilter(watched, event);
    }

private:
    void Set()
    {
        const QFontMetrics metrics = table_.fontMetrics();
        table_.verticalHeader()->setDefaultSectionSize(
            ProgramStyle::LeastTarget(table_, metrics.lineSpacing() + metrics.descent()));
    }

    QTableView& table_;
};

}  // namespace

void ListRows(QTableView& table, std::span<const int> columnWidths)
{
    table.setSelectionBehavior(QAbstractItemView::SelectRows);
    table.setSelectionMode(QAbstractItemView::SingleSelection);
    table.setWordWrap(false);
    table.setTabKeyNavigation(false);
    table.setShowGrid(false);
    table.verticalHeader()->hide();
    // Never measured: the table may be long.
    table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    new RowHeight(table);
    table.horizontalHeader()->setStretchLastSection(true);
    table.horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table.horizontalHeader()->setHighlightSections(false);
    for (std::size_t column = 0; column < columnWidths.size(); ++column)
        table.setColumnWidth(static_cast<int>(column),
                             columnWidths[column] * table.fontMetrics().averageCharWidth());
    KeepHeadsWhole(table);
}

}  // namespace kelvora
