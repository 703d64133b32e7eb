#include "eeprom/forms/IdentityRows.h"

#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QWheelEvent>
#include <utility>

#include "platform/qt/Text.h"

namespace kelvora {

namespace {

constexpr int ColumnCount = 4;

/// The space between two columns, in pixels.
constexpr int ColumnSpacing = 24;

// The wheel scrolls past a list that it must not change.
class IdentityBox final : public QComboBox {
public:
    using QComboBox::QComboBox;

protected:
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

QLabel* AddLabel(QGridLayout& grid, int row, int column, const QString& name)
{
    auto* label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    grid.addWidget(label, row, column);
    return label;
}

}  // namespace

IdentityRows::IdentityRows(const MessageCatalogue& catalogue, QWidget* parent)
    : QWidget(parent), noChoice_(ToQString(catalogue.Caption(Message::EepromNoChoice)))
{
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(ColumnSpacing);
    grid->setColumnStretch(ColumnCount, 1);
    int column = 0;
    for (const MessageId& head : {Message::EepromHeadAddress, Message::EepromHeadDevice,
                                  Message::EepromHeadData, Message::EepromHeadChange}) {
        QLabel* label = AddLabel(*grid, 0, column, QStringLiteral("InfoHdrs%1").arg(column));
        label->setText(ToQString(catalogue.Caption(head)));
        ++column;
    }
    for (std::size_t address = 0; address < rows_.size(); ++address)
        rows_.at(address) = MakeRow(*grid, address, catalogue);
    grid->setRowStretch(grid->rowCount(), 1);
}

IdentityRows::Row IdentityRows::MakeRow(QGridLayout& grid, std::size_t address,
                                        const MessageCatalogue& catalogue)
{
    const auto number = static_cast<int>(address);
    const auto name = [&](const char* control) {
        return QString::fromLatin1(control) + QString::number(number);
    };
    const int line = number + 1;
    Row row{AddLabel(grid, line, 0, name("AddrInfo")), AddLabel(grid, line, 1, name("DevInfo")),
            AddLabel(grid, line, 2, name("EepromInfo")), new IdentityBox(this)};
    row.address->setText(QString::number(number));
    row.bytes->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    row.bytes->setTextInteractionFlags(Qt::TextSelectableByMouse);
    row.list->setObjectName(name("NewDev"));
    row.list->setAccessibleName(ToQString(catalogue.Caption(Message::EepromHeadChange) + ", " +
                                          catalogue.Word(Message::EepromAddressWord)) +
                                QString::number(number));
    for (const DeviceIdentity& identity : OfferedIdentities)
        row.list->addItem(ToQString(identity.name));
    connect(row.list, &QComboBox::activated, this, [this, list = row.list](int index) {
        // The entry behind the identities takes a choice back.
        if (std::cmp_equal(index, OfferedIdentities.size()))
            list->setCurrentIndex(-1);
        emit identityChosen();
    });
    grid.addWidget(row.list, line, 3);
    return row;
}

void IdentityRows::Show(const ModuleMemory& memory)
{
    for (std::size_t address = 0; address < rows_.size(); ++address) {
        const ModuleRow& module = memory.Rows().at(address);
        const Row& row = rows_.at(address);
        const bool read = module.block.has_value();
        row.address->setEnabled(read);
        row.list->setEnabled(read);
        row.bytes->setText(read ? ToQString(BlockText(*module.block)) : QString());
        row.device->setText(address < memory.Count() ? ToQString(module.identity.name) : QString());
        row.list->setAccessibleDescription(row.device->text() + QLatin1Char(' ') + row.bytes->text());
        const auto& offered = module.identity.offered;
        OfferNone(*row.list, !offered);
        row.list->setCurrentIndex(offered ? static_cast<int>(*offered) : -1);
    }
}

// A module that has none of the identities can be left without one, also after a slip.
void IdentityRows::OfferNone(QComboBox& list, bool isOffered) const
{
    constexpr auto Entry = static_cast<int>(OfferedIdentities.size());
    if (isOffered && list.count() == Entry)
        list.addItem(noChoice_);
    else if (!isOffered && list.count() > Entry)
        list.removeItem(Entry);
}

IdentityChoices IdentityRows::Choices() const
{
    IdentityChoices choices;
    for (std::size_t address = 0; address < rows_.size(); ++address)
        if (const int index = rows_.at(address).list->currentIndex(); index >= 0)
            choices.at(address) = static_cast<std::size_t>(index);
    return choices;
}

bool IdentityRows::IsChanged() const
{
    for (const Row& row : rows_)
        if (row.list->currentIndex() >= 0 && row.list->currentText() != row.device->text())
            return true;
    return false;
}

bool IdentityRows::FocusFirstList()
{
    for (const Row& row : rows_)
        if (row.list->isEnabled()) {
            row.list->setFocus();
            return true;
        }
    return false;
}

}  // namespace kelvora
