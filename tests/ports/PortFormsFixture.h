// Scripted ports, boxes and dialogs, for the forms of the ports.
#pragma once

#include "catalogue/UserFiles.h"
#include "fakes/FakeEventLoop.h"
#include "fakes/FakeFileDialogs.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakePrompt.h"
#include "fakes/FakeSerialDevices.h"
#include "forms/Controls.h"
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
