#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/date_time.h"

/// F25 files, which the program reads without the converter: a header of records from 5001 on, then for each test
/// location its records 5301 ff. and a line a drop with the pressure under the plate in kPa and the deflections in
/// microns.
namespace bellmark {

class PDDXFile;

/// Why a file is refused, with the number of the line.
class F25Error : public std::runtime_error {
  public:
    F25Error(int line, const std::string& why);
};

struct F25Sensor {
    std::string serialNumber;
    double gain = 0;  ///< the one that a calibration changes, about 1; the sensor's own sensitivity is not used
};

struct F25Drop {
    double pressure = 0;              ///< kPa
    std::vector<double> deflections;  ///< microns, one a sensor
};

struct F25Location {
    std::string station;
    std::optional<DateTime> time;
    std::string comment;
    std::vector<F25Drop> drops;
};

struct F25Survey {
    std::string maker;
    std::string deviceSerialNumber;
    std::string fileName;
    std::optional<DateTime> begun;
    double plateRadius = 0;         ///< millimeters
    std::vector<double> distances;  ///< of the sensors from the plate's center, millimeters
    F25Sensor loadCell;
    std::vector<F25Sensor> sensors;
    std::vector<F25Location> locations;  ///< those with drops
};

/// Whether the text begins as an F25 file does, whatever its name says.
bool IsF25(std::string_view text);

/// Throws F25Error for what is not as the form demands; nothing is guessed.
F25Survey ReadF25(std::string_view text);

/// Force under the plate at a pressure: pounds or kN. radius: millimeters.
double ForceUnderPlate(double kiloPascal, double radius, bool englishUnits);

/// Fills an empty document as a converter would, with forces and deflections in the units of the calibration: pounds
/// to one decimal and mils to four, or kN to four and microns as they stand.
void FillDocument(const F25Survey& survey, bool englishUnits, PDDXFile& document);

}  // namespace bellmark
