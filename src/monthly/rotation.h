#pragma once

#include <cstddef>

/// How the sensors of a monthly trial rotate in the stand: by one position from set to set, so that after as many sets
/// as there are sensors each was in each position once (a cyclic Latin square). Positions count from the top of the
/// stand. Sensors, positions and sets are indexes from 0 up to the number of sensors.
namespace bellmark {

/// The sensor that stands at a position in a set.
constexpr std::size_t SensorAt(std::size_t position, std::size_t set, std::size_t sensors) {
    return (position + set) % sensors;
}

/// The position in which a sensor stands in a set: the inverse of SensorAt.
constexpr std::size_t PositionOf(std::size_t sensor, std::size_t set, std::size_t sensors) {
    return (sensor + sensors - set) % sensors;
}

}  // namespace bellmark
