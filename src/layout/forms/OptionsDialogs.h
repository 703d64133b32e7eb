// The small dialogs in which a module's options are set. They only read and fill their controls.
#pragma once

#include <QDialog>
#include <array>

#include "catalogue/MessageCatalogue.h"
#include "layout/ModuleOptions.h"

class QCheckBox;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace kelvora {

/// The badge reader: tracks, separators and auto-read. OK is refused, with the reason, while a separator is
/// entered that a setup file cannot carry.
class McrOptionsDialog final : public QDialog {
public:
    McrOptionsDialog(const MessageCatalogue& catalogue, const McrOptions& options, QWidget* parent);

    McrOptions Options() const;

private:
    void CheckSeparators();

    std::array<QRadioButton*, 3> tracks_{};
    std::array<QLineEdit*, 3> separators_{};
    QCheckBox* autoread_ = nullptr;
    QLabel* reason_ = nullptr;
    QDialogButtonBox* buttons_ = nullptr;
};

/// The main keyboard: fiscal, and the backlight where it has one.
class MasterOptionsDialog final : public QDialog {
public:
    MasterOptionsDialog(const MessageCatalogue& catalogue, const MasterOptions& options, QWidget* parent);

    MasterOptions Options() const;

private:
    QCheckBox* fiscal_;
    QCheckBox* backlight_;
    bool hasBacklight_;
};

}  // namespace kelvora
