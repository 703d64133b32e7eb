// The windows about templates: a new setup made from one, and the setup in front kept as one.
#pragma once

#include "layout/SetupDesk.h"
#include "layout/Templates.h"
#include "windows/forms/SetupWindows.h"

class QWidget;

namespace kelvora {

class TemplateForms {
public:
    /// All outlive the object.
    TemplateForms(const SetupDesk& desk, SetupWindows& setups, QWidget& window);

    /// Asks for a template and opens a new window with what it holds.
    void New();

    /// Asks for a name and keeps that setup under it; `name` is offered. Returns whether it is kept.
    bool Save(const SetupDocument& document, const std::string& name);

private:
    /// Tells the person when it is.
    bool IsOpen(const std::string& path) const;

    const SetupDesk& desk_;
    SetupWindows& setups_;
    QWidget& window_;
    Templates templates_;
};

}  // namespace kelvora
