// The window in which the key types of one keyboard are set. It is shown modally; the map comes and goes
// through the settings' Xchange text. Only Quit stores; Esc and the close box discard, after a question.
#pragma once

#include <QDialog>
#include <QTimer>
#include <array>
#include <string>

#include "catalogue/Texts.h"
#include "keymap/KeyMapSession.h"

class QButtonGroup;
class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace kelvora {

class KeyGridView;

class frmKeyb : public QDialog {
    Q_OBJECT

public:
    /// `kind` has keys (KM096, KM064, ICCR) and names the form's object: frmKeyb96, frmKeyb64, frmKeybICCR.
    /// `setupName` stands in the title. Texts and `xchange` outlive the form.
    frmKeyb(ModuleKind kind, const Texts& texts, std::string& xchange, const std::string& setupName,
            QWidget* parent = nullptr);

    const KeyMapSession& Session() const { return session_; }

    /// For an empty map: asks whether to read it from the settings again, and on OK does so.
    void ReloadEmptyMap();

    /// Esc and the close box. A changed map is discarded only after a question; the form then hides as soon
    /// as it has the focus again.
    void reject() override;

signals:
    /// The form shows its session anew: keys may have been chosen or changed.
    void sessionShown();

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* MakeControls();
    QLayout* MakeFind();
    QWidget* MakeChoices();
    QPushButton* MakeButton(const MessageId& caption, const char* name);
    void ShowPictures();
    void Activate();
    void ShowChoices(const KeyChoices& choices);
    void ShowSession();
    void ShowHint();
    void ShowChange();
    void KeyTypeOption_Click(int index);
    void UnusedCheck_Click();
    void DefaultMapping_Click();
    void Back_Click();
    void FindKey();
    void Undo();
    void Redo();
    QSize InitialSize() const;

    KeyMapSession session_;
    ModuleKind kind_;
    const Texts& texts_;
    std::string& xchange_;
    KeyGridView* grid_;
    QLineEdit* find_ = nullptr;
    QGroupBox* keyControls_ = nullptr;
    QButtonGroup* keyTypes_ = nullptr;
    QCheckBox* unusedCheck_ = nullptr;
    std::array<QRadioButton*, 4> keyTypeOption_{};
    QPushButton* undo_ = nullptr;
    QPushButton* redo_ = nullptr;
    QLabel* hint_ = nullptr;
    QTimer discardWait_;  ///< runs from the answer to the form's end
};

}  // namespace kelvora
