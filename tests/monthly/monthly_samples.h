#pragma once

#include <string>
#include <vector>

#include "pddx/pddx_file.h"
#include "platform/numbers.h"

namespace bellmark {

/// A document of a monthly trial as the FWD writes it; what is left empty follows from the readings.
struct SampleDocument {
    std::vector<double> gains;                  ///< one a sensor
    std::vector<std::vector<double>> readings;  ///< of each sensor its drops
    std::string sensors;                        ///< "NumberOfDeflectionSensors"
    std::string deflectionUnits = "microns";
    std::string firstDrop;  ///< the whole line of the first drop

    /// Readings as whole numbers of a unit's part.
    void TakeReadings(const std::vector<std::vector<int>>& parts, int partsOfUnit) {
        readings.clear();
        for (const auto& sensor : parts) {
            readings.emplace_back();
            for (const int part : sensor) readings.back().push_back(static_cast<double>(part) / partsOfUnit);
        }
    }

    void Fill(PDDXFile& document) const {
        const auto set = [&](const char* section, const std::string& key, const std::string& value) {
            document.Sections(section).Elements(key).SetValue(value);
        };
        const std::size_t dropsInFile = readings.empty() ? 0 : readings.front().size();
        std::string serials, gainList;
        for (std::size_t s = 0; s < gains.size(); ++s) {
            serials += (s > 0 ? ", S-" : "S-") + NumberText(s + 1);
            gainList += (s > 0 ? ", " : "") + NumberText(gains[s]);
        }
        set("Units", "LoadUnits", deflectionUnits == "mils" ? "pounds" : "kN");
        set("Units", "DeflectionUnits", deflectionUnits);
        set("Device Information", "DeviceSerialNumber", "8002-123");
        set("Device Information", "SensorSerialNumbers", serials);
        set("Device Configuration", "NumberOfDeflectionSensors",
            sensors.empty() ? NumberText(readings.size()) : sensors);
        set("Device Calibration", "SensorCalibrationCenterGain", gainList);
        set("Operations Information", "OperatorName", "F. Driver");
        set("Operations Information", "EndDate", "03-09-2012");
        PDDXSection& location = document.AddTestLocation(0);
        for (std::size_t drop = 0; drop < dropsInFile; ++drop) {
            std::string line = NumberText(deflectionUnits == "mils" ? 11900 + drop : 53 + drop);
            for (const auto& sensor : readings) line += ", " + NumberText(sensor[drop]);
            location.AddDropData(0).SetValue(drop == 0 && !firstDrop.empty() ? firstDrop : line);
        }
        if (dropsInFile == 0) location.Elements("NumberOfDrops").SetValue("0");
    }
};

}  // namespace bellmark
