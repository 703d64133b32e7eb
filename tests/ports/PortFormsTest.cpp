#include "ports/PortFormsFixture.h"
#include "ports/forms/PortsDialog.h"
#include "ports/forms/frmPortSetup.h"

namespace kelvora {

class PortSetupForm : public PortFormsFixture {
protected:
    static std::string Chosen(frmPortSetup& form)
    {
        std::string chosen;
        for (const auto* option : form.findChildren<QRadioButton*>())
            if (option->isChecked())
                chosen += option->objectName().toStdString() + ' ';
        return chosen;
    }

    PosCfg settings{SetupMode::New, 1};
};

TEST_F(PortSetupForm, TabsAreThePortsThatOpenAndChoicesCountAtOnce)
{
    devices.condition = {{"/dev/ttyS1", PortFailure::None}, {"/dev/ttyS2", PortFailure::None}};
    settings.CommsPort = 3;
    settings.PortSettings = "38400,O,7,2";
    frmPortSetup form(texts, lines, settings, nullptr);
    int changes = 0;
    QObject::connect(&form, &frmPortSetup::changed, [&changes] { ++changes; });
    Show(form);
    auto& tabs = Find<QTabBar>(form, "TabStrip1");
    ASSERT_EQ(tabs.count(), 2);
    EXPECT_EQ(tabs.tabText(0) + tabs.tabText(1), "Com2Com3");
    EXPECT_EQ(tabs.currentIndex(), 1);
    EXPECT_FALSE(com2.IsOpen() || com3.IsOpen());
    EXPECT_EQ(Chosen(form), "BaudRateOption1 ParityOption1 DataBitsOption7 StopBitsOption2 ");
    EXPECT_EQ(settings.PortSettings, "38400,O,7,2") << "showing writes nothing";

    Press(form, "BaudRateOption1");
    EXPECT_EQ(settings.PortSettings, "9600,O,7,2") << "the option that was shown already counts too";
    Press(form, "ParityOption2");
    Press(form, "StopBitsOption1");
    EXPECT_EQ(settings.PortSettings, "9600,e,7,1");
    EXPECT_EQ(changes, 3);
    tabs.setCurrentIndex(0);
    Press(form, "DataBitsOption8");
    tabs.setCurrentIndex(1);
    EXPECT_EQ(Chosen(form), "BaudRateOption1 ParityOption3 DataBitsOption7 StopBitsOption1 ");
    auto& shown = Find<QRadioButton>(form, "BaudRateOption1");
    shown.setFocus();
    QTest::keyClick(&shown, Qt::Key_Down);
    EXPECT_EQ(settings.PortSettings, "4800,e,7,1") << "the arrow keys choose";
    EXPECT_EQ(settings.BaudRate(), 2);
    Press(form, "ExitCommand");
    EXPECT_FALSE(form.isVisible());
}

TEST_F(PortSetupForm, WithoutAPortItSaysSoAndCloses)
{
    frmPortSetup form(texts, lines, settings, nullptr);
    EXPECT_EQ(Find<QTabBar>(form, "TabStrip1").tabText(0), "Com?");
    texts.Speak(MessageCatalogue(std::string(CatalogueHeader) + "104, None. \r\n119, Ports \r\n", "ENG"));
    Show(form);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(prompt.shown.at(0).title + prompt.shown[0].body, "Ports None. ");
}

class PortsForm : public PortFormsFixture {
protected:
    PortsForm()
    {
        devices.devices = {
            {"/dev/serial/by-id/usb-X", "/dev/ttyUSB0", "UART", "Maker", "A5"},
            {"/dev/ttyS0", "/dev/ttyS0", "", "", ""},
        };
        devices.condition = {{"/dev/serial/by-id/usb-X", PortFailure::NotAllowed},
                             {"/dev/ttyS0", PortFailure::None}};
        devices.groups["/dev/serial/by-id/usb-X"] = "dialout";
    }

    static QComboBox& Device(PortsDialog& form, int port)
    {
        return Find<QComboBox>(form, "Device" + std::to_string(port));
    }
    static auto Adapter(PortsDialog& form, int port) { return Says(form, "Adapter" + std::to_string(port)); }

    const std::string path = "/config/ports.ini";
};

TEST_F(PortsForm, AdaptersAreChosenByTheirNamesTriedAndKept)
{
    PortNames names(files, path, {});
    PortsDialog form(texts, lines, names, devices, nullptr);
    Show(form);
    EXPECT_EQ(Device(form, 2).itemText(0), "UART, Maker, A5 (/dev/ttyUSB0)");
    EXPECT_EQ(Adapter(form, 2), "Not among the devices found");
    Device(form, 2).setFocus();
    QTest::keyClick(&Device(form, 2), Qt::Key_Down);
    EXPECT_EQ(Device(form, 2).currentText(), "/dev/serial/by-id/usb-X");
    EXPECT_EQ(Adapter(form, 2), "UART, Maker, A5 (/dev/ttyUSB0)");
    Press(form, "Try2");
    EXPECT_THAT(Says(form, "Result"), StartsWith("COM2: Your account"));
    EXPECT_THAT(Says(form, "Result"), EndsWith("\nsudo usermod -aG dialout $USER"));
    EXPECT_EQ(com2.Device(), "/dev/ttyS1") << "trying puts nothing in force";
    EXPECT_FALSE(IsUsable(form, "Try4")) << "no such port in this program";

    devices.devices.push_back({"/dev/ttyACM0", "/dev/ttyACM0", "Modem", "", ""});
    Press(form, "LookAgain");
    EXPECT_EQ(Device(form, 1).count(), 3);
    EXPECT_EQ(Device(form, 2).currentText(), "/dev/serial/by-id/usb-X");
    Device(form, 3).setEditText("");
    QTest::keyClick(&Device(form, 3), Qt::Key_Return);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(com2.Device(), "/dev/serial/by-id/usb-X");
    EXPECT_EQ(ReadPorts(files.content.at(path)),
              (PortDevices{"/dev/ttyS0", "/dev/serial/by-id/usb-X", "/dev/ttyS2", "/dev/ttyS3"}));
}

TEST_F(PortsForm, WhatIsNoPathIsRefusedAndCancelKeepsNothing)
{
    PortNames names(files, path, {{2, "/dev/ttyS0"}});
    PortsDialog form(texts, lines, names, devices, nullptr);
    Show(form);
    EXPECT_FALSE(Device(form, 2).isEnabled());
    EXPECT_EQ(Adapter(form, 2), "Found; it gives no name of its own - Set by --line for this run");
    Device(form, 1).setEditText("COM7");
    EXPECT_EQ(Adapter(form, 1), "Neither the path of a device nor a line such as tcp:host:4000.");
    const auto* ok = Find<QDialogButtonBox>(form).button(QDialogButtonBox::Ok);
    EXPECT_FALSE(ok->isEnabled() || IsUsable(form, "Try1"));
    Device(form, 1).setEditText("/dev/ttyUSB7");
    EXPECT_TRUE(ok->isEnabled());
    form.reject();
    EXPECT_TRUE(files.content.empty());
    EXPECT_EQ(com1.Device(), "/dev/ttyS0");
}

TEST_F(PortsForm, ALineOnTheNetworkIsTriedWhileTheDialogStaysAsItIs)
{
    PortNames names(files, path, {});
    PortsDialog form(texts, lines, names, devices, nullptr);
    Show(form);
    Device(form, 2).setEditText("bridge:till:4000");
    EXPECT_EQ(Adapter(form, 2), "A bridge: another program talks to the terminal");
    Device(form, 2).setEditText("tcp:till:4000");
    EXPECT_EQ(Adapter(form, 2), "A line on the network");
    devices.condition["tcp:till:4000"] = PortFailure::None;
    com2.fixedSettings = true;
    int openings = 0;
    com2.whileOpening = [&] {
        ++openings;
        EXPECT_EQ(Says(form, "Result"), "Connecting ...");
        Press(form, "Try2");
        form.accept();
        form.reject();
        EXPECT_TRUE(form.isVisible());
    };
    Press(form, "Try2");
    EXPECT_EQ(openings, 1);
    EXPECT_EQ(Says(form, "Result"),
              "COM2: The server answers. Speed and parity of the line are what is set in the server.");
    com2.whileOpening = nullptr;
    form.accept();
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(ReadPorts(files.content.at(path))[1], "tcp:till:4000");
    EXPECT_TRUE(lines.IsAvailable(2));
    devices.condition.clear();
    EXPECT_TRUE(lines.IsAvailable(2)) << "a menu does not wait for the network";
}

TEST_F(PortsForm, DamagedFileIsReplacedOnlyWhenTheUserSaysSo)
{
    const auto choose = [this](const char* device) {
        PortNames names(files, path, {});
        PortsDialog form(texts, lines, names, devices, nullptr);
        Device(form, 1).setEditText(device);
        form.accept();
        EXPECT_EQ(com1.Device(), device) << "it holds for this run in any case";
    };
    files.content[path] = "not a file of ports";
    choose("/dev/ttyS0");
    EXPECT_TRUE(prompt.shown.empty()) << "nothing was changed";
    choose("/dev/a");
    EXPECT_EQ(prompt.shown.at(0).style.defaultAnswer, Answer::No);
    EXPECT_EQ(files.content[path], "not a file of ports");
    prompt.answers = {Answer::Yes};
    files.unwritable.insert(path);
    choose("/dev/b");
    EXPECT_EQ(prompt.shown.size(), 3U) << "the question, and that it could not be written";
    files.unwritable.clear();
    prompt.answers = {Answer::Yes};
    choose("/dev/c");
    EXPECT_EQ(ReadPorts(files.content[path])[0], "/dev/c");
}

}  // namespace kelvora
