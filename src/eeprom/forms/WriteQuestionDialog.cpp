#include "eeprom/forms/WriteQuestionDialog.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <algorithm>

#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"

namespace kelvora {

namespace {

/// Lines of the table that stay in sight on the smallest screen: those of one module.
constexpr int FewestLines = 4;

QString WithLineFeeds(const std::string& text)
{
    return ToQString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

// What surrounds the lines inside the table's frame.
int Surrounding(const QPlainTextEdit& table)
{
    return 2 * (table.frameWidth() + static_cast<int>(table.document()->documentMargin()));
}

QPlainTextEdit* Table(const QString& text, QWidget* parent)
{
    auto* const table = new QPlainTextEdit(text, parent);
    table->setObjectName(QStringLiteral("Table"));
    table->setReadOnly(true);
    table->setTabChangesFocus(true);
    table->setLineWrapMode(QPlainTextEdit::NoWrap);
    table->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    table->setMinimumHeight(FewestLines * table->fontMetrics().lineSpacing() + Surrounding(*table));
    return table;
}

// Room for all lines and the bar that scrolls them.
QSize WholeSize(const QPlainTextEdit& table)
{
    int width = 0;
    const QStringList lines = table.toPlainText().split('\n');
    for (const QString& line : lines)
        width = std::max(width, table.fontMetrics().horizontalAdvance(line));
    return {width + table.verticalScrollBar()->sizeHint().width() + Surrounding(table),
            (static_cast<int>(lines.size()) + 1) * table.fontMetrics().lineSpacing() + Surrounding(table)};
}

}  // namespace

WriteQuestionDialog::WriteQuestionDialog(const QString& title, const WriteQuestion& question, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("WriteQuestionDialog"));
    setWindowTitle(title);
    auto* const text = TextLabel(QStringLiteral("Question"), WithLineFeeds(question.text), this);
    QPlainTextEdit* const table = Table(WithLineFeeds(question.table), this);
    table->setAccessibleName(text->text());

    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Yes | QDialogButtonBox::No, this);
    QPushButton* const no = buttons->button(QDialogButtonBox::No);
    buttons->button(QDialogButtonBox::Yes)->setAutoDefault(false);
    // Enter must not write to a module: a Yes is a decision.
    no->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* const above = new QHBoxLayout;
    above->addWidget(LargeIcon(QStyle::SP_MessageBoxWarning, *this), 0, Qt::AlignTop);
    above->addWidget(text, 1);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(above);
    layout->addWidget(table, 1);
    layout->addWidget(buttons);
    const QSize whole = WholeSize(*table);
    const QMargins margins = layout->contentsMargins();
    const QSize wanted(whole.width() + margins.left() + margins.right(),
                       sizeHint().height() - table->sizeHint().height() + whole.height());
    resize(wanted.expandedTo(minimumSizeHint()).boundedTo(screen()->availableSize() * 9 / 10));
    no->setFocus();
}

}  // namespace kelvora
