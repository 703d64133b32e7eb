// What goes over a line, frame by frame, for whoever watches it; between a bridge and its host, line by line.
#pragma once

#include <functional>
#include <string_view>

namespace kelvora {

struct LineTraffic {
    enum class Direction { Sent, Received };
    enum class Damage {
        None,
        BadFrame,  ///< its checksum or its form is wrong
        CutShort,  ///< the line fell silent, or a new frame began, in its middle
        Noise,     ///< bytes that belong to no frame
    };

    Direction direction = Direction::Sent;
    Damage damage = Damage::None;
    std::string_view bytes;  ///< as they went over the line; of the moment of the call alone
};

/// Empty when nobody watches.
using TrafficWatcher = std::function<void(const LineTraffic&)>;

}  // namespace kelvora
