#include "series/forms/SeriesChoice.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "platform/PortName.h"
#include "platform/qt/Text.h"
#include "setup/SetupFileNames.h"

namespace kelvora {

SeriesChoice::SeriesChoice(const UserFiles& files, const Lines& lines, PosCfg& defaults, QWidget* parent)
    : QWidget(parent),
      files_(files),
      ports_(lines),
      defaults_(defaults),
      setup_(MakeRow("Setup")),
      folder_(MakeRow("Folder")),
      linesLabel_(new QLabel(this))
{
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins({});
    int row = 0;
    for (const Row& each : {setup_, folder_}) {
        grid->addWidget(each.choice, row, 0);
        grid->addWidget(each.path, row, 1);
        grid->addWidget(each.browse, row, 2);
        ++row;
    }
    auto* const across = new QHBoxLayout;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const int line = static_cast<int>(i) + 1;
        auto* const box = new QCheckBox(this);
        box->setObjectName(QStringLiteral("Line%1").arg(line));
        box->setEnabled(ports_.AllPorts().at(i) != nullptr);
        connect(box, &QCheckBox::toggled, this, &SeriesChoice::changed);
        across->addWidget(box);
        lines_.at(i) = box;
    }
    across->addStretch(1);
    grid->addWidget(linesLabel_, row, 0);
    grid->addLayout(across, row, 1, 1, 2);
    connect(setup_.browse, &QPushButton::clicked, this, [this] { BrowseSetup(); });
    connect(folder_.browse, &QPushButton::clicked, this, [this] { BrowseFolder(); });
    setup_.choice->setChecked(true);
    Retranslate();
}

SeriesChoice::Row SeriesChoice::MakeRow(const char* name)
{
    const QString start = QLatin1String(name);
    const Row row{new QRadioButton(this), new QLineEdit(this), new QPushButton(this)};
    row.choice->setObjectName(start + QStringLiteral("Choice"));
    row.path->setObjectName(start + QStringLiteral("Path"));
    row.browse->setObjectName(start + QStringLiteral("Browse"));
    connect(row.choice, &QRadioButton::toggled, this, &SeriesChoice::changed);
    connect(row.path, &QLineEdit::textChanged, this, &SeriesChoice::changed);
    // Who types a path means it.
    connect(row.path, &QLineEdit::textEdited, row.choice,
            [choice = row.choice] { choice->setChecked(true); });
    return row;
}

void SeriesChoice::BrowseSetup()
{
    const auto file = GetConfigFileName(files_, defaults_, {});
    if (!file)
        return;
    setup_.choice->setChecked(true);
    setup_.path->setText(PathToQString(file->path));
}

void SeriesChoice::BrowseFolder()
{
    const QString folder = QFileDialog::getExistingDirectory(
        this, ToQString(files_.Words().Caption(Message::SeriesFolderTitle)), folder_.path->text());
    if (folder.isEmpty())
        return;
    folder_.choice->setChecked(true);
    folder_.path->setText(folder);
}

void SeriesChoice::OfferSetup(const QString& path)
{
    setup_.path->setText(path);
}

bool SeriesChoice::IsByName() const
{
    return folder_.choice->isChecked();
}

QString SeriesChoice::Path() const
{
    const QString path = (IsByName() ? folder_ : setup_).path->text();
    return path.isEmpty() ? path : QFileInfo(path).absoluteFilePath();
}

bool SeriesChoice::HasLine(int line) const
{
    return lines_.at(static_cast<std::size_t>(line) - 1)->isChecked();
}

QString SeriesChoice::LineTitle(int line) const
{
    const QString name = ToQString(PortName(line));
    return ports_.IsSimulated(line)
               ? name + QStringLiteral(" (") + ToQString(files_.Words().Caption(Message::SimulatedLine)) +
                     QLatin1Char(')')
               : name;
}

void SeriesChoice::ChooseLine(int line, bool chosen)
{
    QCheckBox* const box = lines_.at(static_cast<std::size_t>(line) - 1);
    box->setChecked(chosen && box->isEnabled());
}

bool SeriesChoice::IsComplete() const
{
    bool hasLine = false;
    for (const QCheckBox* const line : lines_)
        hasLine = hasLine || line->isChecked();
    return hasLine && !Path().isEmpty();
}

void SeriesChoice::Retranslate()
{
    const auto text = [this](const MessageId& id) { return ToQString(files_.Words().Caption(id)); };
    setup_.choice->setText(text(Message::SeriesOneSetup));
    folder_.choice->setText(text(Message::SeriesByName));
    for (const Row& row : {setup_, folder_}) {
        row.browse->setText(text(Message::SeriesBrowse));
        row.path->setAccessibleName(row.choice->text().remove(QLatin1Char('&')));
        row.browse->setAccessibleName(row.browse->text() + QLatin1Char(' ') + row.path->accessibleName());
    }
    linesLabel_->setText(text(Message::SeriesLines));
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const SerialPort* const port = ports_.AllPorts().at(i);
        lines_.at(i)->setText(LineTitle(static_cast<int>(i) + 1));
        lines_.at(i)->setToolTip(port ? PathToQString(port->Device()) : QString());
    }
}

}  // namespace kelvora
