// The wizard's table of modules: a row an address with the identity and the bytes that were read, and the
// list of identities to change to.
#pragma once

#include <QString>
#include <QWidget>
#include <array>

#include "catalogue/MessageCatalogue.h"
#include "eeprom/IdentityChoices.h"

class QComboBox;
class QGridLayout;
class QLabel;

namespace kelvora {

class IdentityRows final : public QWidget {
    Q_OBJECT

public:
    explicit IdentityRows(const MessageCatalogue& catalogue, QWidget* parent = nullptr);

    /// Shows what was found and read; each list shows its row's identity, and none where that cannot be
    /// written. There the list has one more entry, which chooses none again.
    void Show(const ModuleMemory& memory);

    IdentityChoices Choices() const;

    /// Whether in at least one row another identity is chosen than it has.
    bool IsChanged() const;

    /// Puts the focus on the first list that can be used. False when none can.
    bool FocusFirstList();

signals:
    /// The user has chosen an identity.
    void identityChosen();

private:
    struct Row {
        QLabel* address;
        QLabel* device;
        QLabel* bytes;
        QComboBox* list;
    };

    Row MakeRow(QGridLayout& grid, std::size_t address, const MessageCatalogue& catalogue);

    void OfferNone(QComboBox& list, bool isOffered) const;

    QString noChoice_;
    std::array<Row, WritableAddresses> rows_{};
};

}  // namespace kelvora
