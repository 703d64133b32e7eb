// The templates to begin a new setup with, as cards; one's own can be renamed and removed.
#pragma once

#include <QDialog>
#include <functional>
#include <vector>

#include "catalogue/UserFiles.h"
#include "layout/Templates.h"
#include "picture/forms/SetupCards.h"

class QPushButton;

namespace kelvora {

class TemplatesDialog final : public QDialog {
public:
    /// Both outlive the dialog. Accepted when one was chosen.
    TemplatesDialog(const UserFiles& files, const Templates& templates, QWidget* parent = nullptr);

    /// The path of the chosen one; empty where there is none.
    std::string Chosen() const;

    /// Whether a template's file is open in a window, and so stays as it is; the person is told then. Must be
    /// set.
    std::function<bool(const std::string& path)> isOpen;

private:
    void Arrange();
    void List();
    void ShowChosen();
    void Rename();
    void Remove();

    const UserFiles& files_;
    const Templates& templates_;
    std::vector<Template> list_;
    SetupCards* cards_;
    QPushButton* create_;
    QPushButton* rename_;
    QPushButton* remove_;
};

}  // namespace kelvora
