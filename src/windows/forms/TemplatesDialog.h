// The templates to begin a new setup with, as cards; one's own can be removed.
#pragma once

#include <QDialog>
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

private:
    void Arrange();
    void List();
    void ShowChosen();
    void Remove();

    const UserFiles& files_;
    const Templates& templates_;
    std::vector<Template> list_;
    SetupCards* cards_;
    QPushButton* create_;
    QPushButton* remove_;
};

}  // namespace kelvora
