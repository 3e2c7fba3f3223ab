#include "fwd/fwd_peaks.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "pddx/pddx_file.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "run/stored_values.h"
#include "run/trial.h"

namespace bellmark {

namespace {

constexpr const char* location = "Test Location 1";
constexpr double largestPeak = 1e9;  ///< far above what any FWD measures, in whatever unit

/// Empty for a section or key that the document does not have.
std::string ValueOf(const PDDXFile& document, std::string_view section, std::string_view key) {
    if (!document.Sections().Contains(section)) return {};
    const auto& elements = document.Sections(section).Elements();
    return elements.Contains(key) ? elements.At(key).Value() : std::string();
}

std::string TrimmedField(const std::string& list, int field) {
    return std::string(Trim(GetListField(field, list)));
}

double GainIn(const std::string& list, int field) {
    return StoredNumber(ZeroIfEmpty(TrimmedField(list, field)));
}

void FillDevice(const PDDXFile& document, CalibrationRun& run, std::size_t device) {
    if (!CalibratesSensors(run)) {
        if (run.LoadCellSerialNumber.empty()) {
            run.LoadCellSerialNumber = Trim(ValueOf(document, "Device Information", "LoadCellSerialNumber"));
        }
        if (run.LoadCellInitialGain == 0) {
            const double gain = GainIn(ValueOf(document, "Device Calibration", "LoadCellCalibrationCenterGain"), 1);
            run.LoadCellInitialGain = gain == 0 ? 1.0 : gain;
        }
        return;
    }
    SensorCalRecord& sensor = run.Sensor.at(device);
    const int field = static_cast<int>(device) + 1;
    if (sensor.SerialNumber.empty()) {
        sensor.SerialNumber = TrimmedField(ValueOf(document, "Device Information", "SensorSerialNumbers"), field);
    }
    if (sensor.InitialGain == 0) {
        sensor.InitialGain = GainIn(ValueOf(document, "Device Calibration", "SensorCalibrationCenterGain"), field);
    }
}

bool IsOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

struct DocumentUnits {
    std::string load;
    std::string deflection;
    std::string radius;
    double plateRadius = 0;
};

DocumentUnits UnitsOf(const PDDXFile& document) {
    const auto word = [&](const char* key) { return std::string(Trim(ValueOf(document, "Units", key))); };
    return {word("LoadUnits"), word("DeflectionUnits"), word("LoadPlateRadiusUnits"),
            GainIn(ValueOf(document, "Device Configuration", "LoadPlateRadius"), 1)};
}

void JudgeUnits(const DocumentUnits& units, bool sensors, FWDPeaks& peaks) {
    const std::string& word = sensors ? units.deflection : units.load;
    peaks.unitsAreKnown = sensors ? IsOneOf(word, {"mils", "mil", "microns", "micron"})
                                  : IsOneOf(word, {"pound-force per square inch", "kip", "kilo-Pascal", "pound-force",
                                                   "pounds", "kilo-Newton", "kN"});
    if (!peaks.unitsAreKnown) peaks.unknownUnits = word;
}

}  // namespace

double StoredLoad(double value, std::string_view loadUnits, double radius, std::string_view radiusUnits) {
    constexpr double pi = 3.14159;
    if (loadUnits == "pound-force per square inch") return Round(value * pi * (radius * radius), 1);
    if (loadUnits == "kip") return Round(value * 1000, 1);
    if (loadUnits == "kilo-Pascal") {
        const bool isMillimeters = IsOneOf(radiusUnits, {"milimeters", "millimeter"});
        const double meters = isMillimeters ? radius / 1000 : radius;
        return Round(value * pi * (meters * meters), 4);
    }
    return value;
}

double StoredDeflection(double value, std::string_view deflectionUnits) {
    return Round(value, deflectionUnits == "mils" ? 2 : 4);
}

FWDPeaks ReadFWDPeaks(const PDDXFile& document, CalibrationRun& run) {
    const bool sensors = CalibratesSensors(run);
    for (std::size_t device = 0; device < DevicesInTrial(run); ++device) FillDevice(document, run, device);
    FWDPeaks peaks;
    peaks.hasLocations = PDDXCount(ValueOf(document, "Deflection Data", "NumberOfTestLocations")) > 0;
    peaks.dropsInFile = PDDXCount(ValueOf(document, location, "NumberOfDrops"));
    if (peaks.dropsInFile != run.Trial.shape.Drops()) return peaks;
    const DocumentUnits units = UnitsOf(document);
    JudgeUnits(units, sensors, peaks);
    for (int drop = 1; drop <= run.Trial.shape.Drops(); ++drop) {
        const std::string fields = ValueOf(document, location, "DropData_" + NumberText(drop));
        for (std::size_t device = 0; device < DevicesInTrial(run); ++device) {
            const std::string field = TrimmedField(fields, sensors ? static_cast<int>(device) + 2 : 1);
            const auto number = NumberIn(ZeroIfEmpty(field));
            const double value = number.value_or(0);
            const double peak = sensors ? StoredDeflection(value, units.deflection)
                                        : StoredLoad(value, units.load, units.plateRadius, units.radius);
            // A dead sensor may read 0, but no drop is without load.
            if (!number || std::abs(peak) > largestPeak || (!sensors && !(peak > 0))) {
                peaks.unreadable.push_back("Drop " + NumberText(drop) + ": \"" + field + '"');
            }
            TrialOf(run, device).DropData.at(static_cast<std::size_t>(drop - 1)) = peak;
        }
    }
    return peaks;
}

std::vector<std::string> DifferencesFromRun(const PDDXFile& document, const CalibrationRun& run) {
    std::vector<std::string> differences;
    const auto compare = [&](const char* what, const char* key, const std::string& known) {
        const std::string found(Trim(ValueOf(document, "Device Information", key)));
        if (found.empty() || known.empty() || EqualIgnoringCase(found, Trim(known))) return;
        differences.push_back(what + found + " in place of " + known);
    };
    compare("FWD serial number ", "DeviceSerialNumber", run.DeviceSerialNumber);
    if (!CalibratesSensors(run)) compare("load cell ", "LoadCellSerialNumber", run.LoadCellSerialNumber);
    return differences;
}

}  // namespace bellmark
