// The serial devices of this machine, as a person tells them apart.
#pragma once

#include <string>
#include <vector>

namespace kelvora {

struct SerialDevice {
    std::string
        path;  ///< stays with this adapter when it is plugged in elsewhere, where the system has such a path
    std::string node;  ///< what the system calls it now, such as "/dev/ttyUSB0"; may be the same
    std::string name;  ///< the adapter's own name; empty where it gives none, as the next two
    std::string maker;
    std::string serialNumber;
};

class SerialDevices {
public:
    virtual ~SerialDevices() = default;

    /// The devices that are plugged in now, by node. Texts are Windows-1252 bytes, paths are bytes.
    virtual std::vector<SerialDevice> List() const = 0;
};

}  // namespace kelvora
