#include "flash/forms/ChangesDialog.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <algorithm>

#include "platform/qt/Text.h"
#include "platform/qt/WindowParts.h"

namespace kelvora {

namespace {

/// Lines that the list shows without scrolling, and their width in characters.
constexpr std::size_t FewestLines = 4;
constexpr std::size_t MostLines = 16;
constexpr int LineWidth = 100;

/// What the list keeps of its width on a small screen, in characters.
constexpr int LeastWidth = 40;

QPlainTextEdit* ChangeList(const std::vector<std::string>& lines, QWidget* parent)
{
    auto* const list = new QPlainTextEdit(parent);
    list->setObjectName(QStringLiteral("Changes"));
    list->setReadOnly(true);
    list->setTabChangesFocus(true);
    QStringList texts;
    for (const std::string& line : lines)
        texts << ToQString(line);
    list->setPlainText(texts.join('\n'));
    const int rows = static_cast<int>(std::clamp(lines.size() + 1, FewestLines, MostLines));
    const int character = list->fontMetrics().averageCharWidth();
    const int line = list->fontMetrics().lineSpacing();
    list->setMinimumSize(LeastWidth * character, static_cast<int>(FewestLines) * line);
    list->resize(LineWidth * character, rows * line);
    return list;
}

}  // namespace

ChangesDialog::ChangesDialog(const MessageCatalogue& catalogue, const QString& title, const QString& question,
                             const std::vector<std::string>& lines, const QString& backup, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("ChangesDialog"));
    setWindowTitle(title);
    auto* const heading = TextLabel(QStringLiteral("Question"), question, this);
    auto* const list = ChangeList(lines, this);
    list->setAccessibleName(question);
    const QSize listSize = list->size();

    auto* const kept = TextLabel(QStringLiteral("Backup"), backup, this);
    kept->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);

    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Yes | QDialogButtonBox::No, this);
    auto* const compare =
        buttons->addButton(ToQString(catalogue.Caption(Message::CompareImages)), QDialogButtonBox::HelpRole);
    compare->setObjectName(QStringLiteral("Compare"));
    for (QAbstractButton* const button : buttons->buttons())
        static_cast<QPushButton*>(button)->setAutoDefault(false);
    // Enter must not write to a keyboard: a Yes is a decision.
    buttons->button(QDialogButtonBox::No)->setDefault(true);
    connect(compare, &QPushButton::clicked, this, &ChangesDialog::comparisonRequested);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* const above = new QHBoxLayout;
    above->addWidget(LargeIcon(QStyle::SP_MessageBoxQuestion, *this), 0, Qt::AlignTop);
    above->addWidget(heading, 1);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(above);
    layout->addWidget(list, 1);
    layout->addWidget(kept);
    layout->addWidget(buttons);
    const QSize wanted(listSize.width(), sizeHint().height() - list->sizeHint().height() + listSize.height());
    resize(wanted.expandedTo(minimumSizeHint()).boundedTo(screen()->availableSize() * 9 / 10));
    buttons->button(QDialogButtonBox::No)->setFocus();
}

}  // namespace kelvora
