// The window in which the key types of one keyboard are set. It is shown modally; the map comes and goes
// through the settings' Xchange text. Only Quit stores; Esc and the close box discard, after a question.
#pragma once

#include <QDialog>
#include <array>

#include "app/MessageCatalogue.h"
#include "keymap/KeyMapSession.h"
#include "platform/Prompt.h"
#include "setup/PosCfg.h"

class QButtonGroup;
class QCheckBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace kelvora {

class KeyGridView;

class frmKeyb : public QDialog {
public:
    /// `kind` has keys (KM096, KM064, ICCR). All but the parent outlive the form.
    frmKeyb(ModuleKind kind, const MessageCatalogue& catalogue, Prompt& prompt, PosCfg& settings,
            QWidget* parent = nullptr);

    const KeyMapSession& Session() const { return session_; }

    /// For an empty map: asks whether to read it from the settings again, and on OK does so.
    void ReloadEmptyMap();

    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* MakeControls();
    QWidget* MakeChoices();
    QPushButton* MakeButton(const MessageId& caption, const char* name);
    void Activate();
    void ShowChoices();
    void ShowSession();
    void KeyTypeOption_Click(int index);
    void UnusedCheck_Click();
    void DefaultMapping_Click();
    void Back_Click();
    void Undo_Click();
    void Redo_Click();
    QSize InitialSize() const;

    KeyMapSession session_;
    ModuleKind kind_;
    const MessageCatalogue& catalogue_;
    Prompt& prompt_;
    PosCfg& settings_;
    KeyGridView* grid_;
    QGroupBox* keyControls_ = nullptr;
    QButtonGroup* keyTypes_ = nullptr;
    QCheckBox* unusedCheck_ = nullptr;
    std::array<QRadioButton*, 4> keyTypeOption_{};
    QPushButton* undo_ = nullptr;
    QPushButton* redo_ = nullptr;
    QLabel* hint_ = nullptr;
};

class frmKeyb96 : public frmKeyb {
public:
    frmKeyb96(const MessageCatalogue& catalogue, Prompt& prompt, PosCfg& settings, QWidget* parent = nullptr)
        : frmKeyb(ModuleKind::KM096, catalogue, prompt, settings, parent)
    {
    }
};

class frmKeyb64 : public frmKeyb {
public:
    frmKeyb64(const MessageCatalogue& catalogue, Prompt& prompt, PosCfg& settings, QWidget* parent = nullptr)
        : frmKeyb(ModuleKind::KM064, catalogue, prompt, settings, parent)
    {
    }
};

class frmKeybICCR : public frmKeyb {
public:
    frmKeybICCR(const MessageCatalogue& catalogue, Prompt& prompt, PosCfg& settings,
                QWidget* parent = nullptr)
        : frmKeyb(ModuleKind::ICCR, catalogue, prompt, settings, parent)
    {
    }
};

}  // namespace kelvora
