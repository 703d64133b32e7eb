// Scripted ports, boxes and dialogs, for the forms of the ports.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QTest>
#include <string>

#include "catalogue/UserFiles.h"
#include "fakes/FakeEventLoop.h"
#include "fakes/FakeFileDialogs.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakePrompt.h"
#include "fakes/FakeSerialDevices.h"
#include "ports/Lines.h"

namespace kelvora {

class PortFormsFixture : public testing::Test {
protected:
    /// Shows a form and lets it do what it does at its showing.
    static void Show(QWidget& form)
    {
        form.show();
        QCoreApplication::processEvents();
    }

    template <class Widget>
    static Widget& Find(QWidget& form, const std::string& name)
    {
        auto* const found = form.findChild<Widget*>(QString::fromStdString(name));
        if (!found)
            throw std::logic_error("no " + name);
        return *found;
    }

    static void Press(QWidget& form, const std::string& name) { Find<QAbstractButton>(form, name).click(); }

    FakeSerialDevices devices;
    SilentPort com1{devices, "/dev/ttyS0"};
    SilentPort com2{devices, "/dev/ttyS1"};
    SilentPort com3{devices, "/dev/ttyS2"};
    FakeFiles files;
    FakePrompt prompt;
    FakeFileDialogs dialogs;
    FakeEventLoop loop;
    Texts texts{prompt};
    Lines lines{{&com1, &com2, &com3, nullptr}, loop};
    std::string folder;
    UserFiles userFiles{texts, files, dialogs, folder};
};

}  // namespace kelvora
