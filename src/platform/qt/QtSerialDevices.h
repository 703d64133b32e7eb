// The serial devices of this machine by Qt.
#pragma once

#include "platform/SerialDevices.h"

namespace kelvora {

class QtSerialDevices final : public SerialDevices {
public:
    std::vector<SerialDevice> List() const override;
};

}  // namespace kelvora
