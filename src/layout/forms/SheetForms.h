// The commands that put a setup's sheet on paper or into a file: print, print preview, export. One drawing
// serves all three.
#pragma once

#include <functional>
#include <string>

#include "layout/SetupSession.h"

class QWidget;

namespace kelvora {

class SheetForms {
public:
    /// The session's window; both outlive the object.
    SheetForms(SetupSession& session, QWidget& window) : session_(session), window_(window) {}

    /// Whether the setup has changes that its file does not hold; must be set.
    std::function<bool()> isChanged;

    void Print();
    void Preview();
    void Export();

private:
    std::string Sheet() const;

    SetupSession& session_;
    QWidget& window_;
};

}  // namespace kelvora
