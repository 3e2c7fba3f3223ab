#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace bellmark {

class PDDXFile;

/// Units of a document, in its own words, and the radius of the load plate in radiusUnits.
struct FWDUnits {
    std::string load;
    std::string deflection;
    std::string radius;
    double plateRadius = 0;
};

/// Common values of the document of an FWD's file. Fields count from 1; a value missing from the document is empty or
/// 0. The document must outlive it.
class FWDDocument {
  public:
    explicit FWDDocument(const PDDXFile& document) : document_(document) {}

    int Locations() const;
    int Sensors() const;            ///< number of serial numbers in the document
    int DeflectionSensors() const;  ///< as the device's configuration tells it
    int Drops() const;              ///< of the first location
    /// All fields of a drop: the load, then the sensors.
    std::vector<std::string> DropFields(int location, int drop) const;
    std::string DeviceSerialNumber() const;
    std::string OperatorName() const;
    std::string EndDate() const;  ///< in the document's own form
    std::string LoadCellSerialNumber() const;
    std::string SensorSerialNumber(int sensor) const;
    double LoadCellGain() const;
    double SensorGain(int sensor) const;
    FWDUnits Units() const;

  private:
    std::string Value(std::string_view section, std::string_view key) const;

    const PDDXFile& document_;
};

}  // namespace bellmark
