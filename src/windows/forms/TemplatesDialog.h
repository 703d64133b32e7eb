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

    /// Whether a renamed template may be written there; it asks the person where something stands there. Must
    /// be set.
    std::function<bool(const std::string& path)> mayWrite;

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
