// The dialog "Communications Settings": speed, parity, data bits and stop bits of the ports that exist, a tab
// each. A choice counts at once; there is no OK. What each choice writes is said in ports/PortSetup.h.
#pragma once

#include <QDialog>

#include "catalogue/Texts.h"
#include "ports/Lines.h"
#include "ports/PortSetup.h"

class QBoxLayout;
class QButtonGroup;
class QTabBar;

namespace kelvora {

class frmPortSetup final : public QDialog {
    Q_OBJECT

public:
    /// Learns which ports exist by opening each. `settings` are those of the window that the dialog is opened
    /// from; both outlive it. Without any port the dialog says so when it shows, and closes.
    frmPortSetup(const Texts& texts, const Lines& lines, PosCfg& settings, QWidget* parent);

signals:
    /// The settings of the window have changed.
    void changed();

protected:
    void showEvent(QShowEvent* event) override;

private:
    using Choose = void (PortSetup::*)(int);

    void AddTabs();
    QLayout* AddFrames();
    QButtonGroup* AddFrame(QBoxLayout& layout, const char* name, const MessageId& caption);
    void AddOption(QButtonGroup& group, int index, const QString& caption);
    void OnChoice(QButtonGroup& group, Choose choose);
    void Activate();
    void TabStrip1_Click(int tab);
    void ShowChoices();

    const Texts& texts_;
    PortSetup setup_;
    QTabBar* tabs_;
    QButtonGroup* baud_ = nullptr;
    QButtonGroup* parity_ = nullptr;
    QButtonGroup* dataBits_ = nullptr;
    QButtonGroup* stopBits_ = nullptr;
    bool wasShown_ = false;
};

}  // namespace kelvora
