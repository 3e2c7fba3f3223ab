#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/format.h"
#include "platform/numbers.h"

namespace bellmark {

/// The document of an FWD's file of one monthly trial. Sensors rotate in the stand; the readings do not show it.
struct MonthlyFile {
    int sensors = 7;
    int drops = 35;
    std::string fwd = "8002-123";
    std::string units = "mils";
    double level = 20;             ///< mean deflection
    double firstGain = 1;          ///< of the first sensor; the next ones are higher by 0.001 each
    std::vector<double> ratios{};  ///< of each sensor: mean of all over its own; 1 for those not listed
    double scatter = 0.02;         ///< of each reading, in the unit of the deflections
    int seed = 0;                  ///< so that no trial repeats the readings of another

    std::string Text() const {
        std::string serials, gains, text;
        for (int s = 0; s < sensors; ++s) {
            serials += (s > 0 ? ", S" : "S") + NumberText(101 + s);
            gains += (s > 0 ? ", " : "") + Format(firstGain + 0.001 * s, "0.000");
        }
        text = "[Device Information]\r\nDeviceSerialNumber=" + fwd + "\r\nSensorSerialNumbers=" + serials +
               "\r\n[Device Configuration]\r\nNumberOfDeflectionSensors=" + NumberText(sensors) +
               "\r\n[Device Calibration]\r\nSensorCalibrationCenterGain=" + gains +
               "\r\n[Operations Information]\r\nOperatorName=A. Sample\r\nEndDate=09-03-2012\r\n[Units]\r\n"
               "LoadUnits=" +
               (units == "mils" ? "pounds" : "kN") + "\r\nDeflectionUnits=" + units +
               "\r\n[Deflection Data]\r\nNumberOfTestLocations=1\r\n[Test Location 1]\r\nNumberOfDrops=" +
               NumberText(drops) + "\r\n";
        for (int drop = 1; drop <= drops; ++drop) {
            text += "DropData_" + NumberText(drop) + "=" + NumberText(12000 + drop);
            for (int s = 0; s < sensors; ++s) text += ", " + Format(Reading(s, drop), "0.0000");
            text += "\r\n";
        }
        return text;
    }

  private:
    double Reading(int sensor, int drop) const {
        const auto index = static_cast<std::size_t>(sensor);
        const double ratio = index < ratios.size() ? ratios[index] : 1;
        // Spread evenly over five steps, so that the mean over a set is 0.
        const int step = (drop + 2 * sensor + seed) % 5 - 2;
        return level / ratio + scatter * step / 2 * (1 + 0.1 * seed);
    }
};

}  // namespace bellmark
