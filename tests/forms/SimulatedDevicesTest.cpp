#include "windows/forms/SimulatedDevices.h"

#include <QFile>

#include "forms/MainWindowFixture.h"

namespace kelvora {
namespace {

class SimulatedDevicesForm : public MainWindowFixture {
protected:
    SimulatedDevicesForm() : MainWindowFixture(true) {}

    PortNames Names(const std::vector<LineArgument>& fixed)
    {
        return {files, Folder() + "/ports.ini", fixed};
    }
};

TEST_F(SimulatedDevicesForm, StandBehindThePortsThatWereNotNamedUntilTheyGo)
{
    SimulatedDevices(program, Names({{1, "/dev/mine"}})).Begin({});
    EXPECT_FALSE(program.lines.HasSimulation());
    const PortNames names = Names({});
    auto devices = std::make_unique<SimulatedDevices>(program, names);
    for (const bool isEnded : {true, false}) {
        devices->Begin({});
        EXPECT_TRUE(prompt.shown.empty()) << prompt.shown.back().body;
        EXPECT_TRUE(program.lines.IsSimulated(1));
        const QString device = PathToQString(port.Device());
        EXPECT_TRUE(device.startsWith("/dev/pts/") && QFile::exists(device)) << port.Device();
        if (isEnded)
            devices->End();
        else
            devices.reset();
        EXPECT_FALSE(QFile::exists(device)) << "its program has ended";
    }
}

}  // namespace
}  // namespace kelvora
