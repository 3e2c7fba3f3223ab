#include "fwd/fwd_peaks.h"

#include <algorithm>
#include <cmath>

#include "fwd/fwd_document.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "run/trial.h"

namespace bellmark {

namespace {

constexpr double largestPeak = 1e9;  ///< far above what any FWD measures, in whatever unit

/// "Sensor 3 (D3)"
std::string SensorText(const CalibrationRun& run, std::size_t device) {
    return "Sensor " + NumberText(ShownSensorNumber(run, static_cast<int>(device))) + " (" +
           SerialNumberOf(run, device) + ')';
}

void FillDevice(const FWDDocument& document, CalibrationRun& run, std::size_t device) {
    if (!CalibratesSensors(run)) {
        if (run.LoadCellSerialNumber.empty()) run.LoadCellSerialNumber = document.LoadCellSerialNumber();
        if (run.LoadCellInitialGain == 0) {
            const double gain = document.LoadCellGain();
            run.LoadCellInitialGain = gain == 0 ? 1.0 : gain;
        }
        return;
    }
    FillSensor(document, run, device);
}

bool IsOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

void JudgeUnits(const FWDUnits& units, bool sensors, FWDPeaks& peaks) {
    const std::string& word = sensors ? units.deflection : units.load;
    peaks.unitsAreKnown = (sensors ? IsEnglishDeflection(word) : IsEnglishLoad(word)).has_value();
    if (!peaks.unitsAreKnown) peaks.unknownUnits = word;
}

/// A dead sensor reads 0 at each drop, like a sensor missing from the file. A gain is the initial one times the
/// adjustment.
std::vector<std::string> SensorsWithoutGain(const CalibrationRun& run) {
    std::vector<std::string> sensors;
    const auto drops = static_cast<std::ptrdiff_t>(run.Trial.shape.Drops());
    for (std::size_t device = 0; device < DevicesInTrial(run); ++device) {
        const std::string name = SensorText(run, device);
        const auto& peaks = TrialOf(run, device).DropData;
        if (std::all_of(peaks.begin(), peaks.begin() + drops, [](double peak) { return peak == 0; }))
            sensors.push_back(name + " shows no deflection in any drop");
        if (InitialGainOf(run, device) == 0) sensors.push_back(name + " has no initial gain");
    }
    return sensors;
}

}  // namespace

std::optional<bool> IsEnglishLoad(std::string_view loadUnits) {
    if (IsOneOf(loadUnits, {"pound-force", "pounds", "kip", "pound-force per square inch"})) return true;
    if (IsOneOf(loadUnits, {"kilo-Newton", "kN", "kilo-Pascal"})) return false;
    return std::nullopt;
}

std::optional<bool> IsEnglishDeflection(std::string_view deflectionUnits) {
    if (IsOneOf(deflectionUnits, {"mils", "mil"})) return true;
    if (IsOneOf(deflectionUnits, {"microns", "micron"})) return false;
    return std::nullopt;
}

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

void FillSensor(const FWDDocument& document, CalibrationRun& run, std::size_t index) {
    SensorCalRecord& sensor = run.Sensor.at(index);
    const int field = static_cast<int>(index) + 1;
    if (sensor.SerialNumber.empty()) sensor.SerialNumber = document.SensorSerialNumber(field);
    if (sensor.InitialGain == 0) sensor.InitialGain = document.SensorGain(field);
}

FWDPeaks ReadFWDPeaks(const PDDXFile& file, CalibrationRun& run) {
    const FWDDocument document(file);
    const bool sensors = CalibratesSensors(run);
    const int drops = run.Trial.shape.Drops();
    for (std::size_t device = 0; device < DevicesInTrial(run); ++device) FillDevice(document, run, device);
    FWDPeaks peaks;
    peaks.hasLocations = document.Locations() > 0;
    peaks.dropsInFile = document.Drops();
    if (peaks.dropsInFile != drops) return peaks;
    const FWDUnits units = document.Units();
    JudgeUnits(units, sensors, peaks);
    for (int drop = 1; drop <= drops; ++drop) {
        const std::vector<std::string> fields = document.DropFields(1, drop);
        for (std::size_t device = 0; device < DevicesInTrial(run); ++device) {
            const std::size_t at = sensors ? device + 1 : 0;
            const std::string field = at < fields.size() ? fields[at] : std::string();
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
    if (sensors) peaks.withoutGain = SensorsWithoutGain(run);
    return peaks;
}

std::vector<std::string> DifferencesFromRun(const PDDXFile& file, const CalibrationRun& run) {
    const FWDDocument document(file);
    std::vector<std::string> differences;
    const auto compare = [&](const char* what, const std::string& found, const std::string& known) {
        if (found.empty() || known.empty() || EqualIgnoringCase(found, Trim(known))) return;
        differences.push_back(what + found + " in place of " + known);
    };
    compare("FWD serial number ", document.DeviceSerialNumber(), run.DeviceSerialNumber);
    const bool comparesSensors = CalibratesSensors(run) || IsMonthly(run.CurrentProcedure);
    if (!comparesSensors) {
        compare("load cell ", document.LoadCellSerialNumber(), run.LoadCellSerialNumber);
        return differences;
    }
    for (int s = 0; s < std::clamp(run.NumberSensors, 0, static_cast<int>(maxSensors)); ++s) {
        compare(("sensor " + NumberText(ShownSensorNumber(run, s)) + ": ").c_str(), document.SensorSerialNumber(s + 1),
                run.Sensor[static_cast<std::size_t>(s)].SerialNumber);
    }
    const int found = document.Sensors();
    if (found > 0 && found != run.NumberSensors) {
        differences.push_back(NumberText(found) + " sensors in place of " + NumberText(run.NumberSensors));
    }
    return differences;
}

}  // namespace bellmark
