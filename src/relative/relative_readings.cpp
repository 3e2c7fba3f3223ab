#include "relative/relative_readings.h"

#include <algorithm>
#include <cmath>

#include "fwd/fwd_document.h"
#include "fwd/fwd_peaks.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "relative/relative_trial.h"

namespace bellmark {

namespace {

constexpr long long mostDropsRead = 50;
constexpr double largestReading = 1e9;  ///< far above what any FWD measures, in whatever unit

/// "sensor 3", or "load"
std::string FieldWords(const CalibrationRun& run, std::size_t field) {
    return field == 0 ? "load" : SensorWords(run, field - 1);
}

void ReadRelativeDrops(const FWDDocument& document, CalibrationRun& run, RelativeReadings& found) {
    const auto trial = static_cast<std::size_t>(run.RelTrials);
    for (std::size_t s = 0; s < SensorCount(run); ++s) run.Sensor[s].RelTrial.at(trial).DropData = {};
    const int drops = document.Drops();
    for (long long at = 0; at < std::min(found.dropsInFile, mostDropsRead); ++at) {
        const int location = static_cast<int>(at / drops) + 1;
        const auto fields = document.DropFields(location, static_cast<int>(at % drops) + 1);
        for (std::size_t s = 0; s < SensorCount(run); ++s) {
            SensorCalRecord& sensor = run.Sensor[s];
            const double reading = NumberOfDrop(run, fields, s + 1, at + 1, found.unreadable);
            sensor.RelTrial[trial].DropData.at(static_cast<std::size_t>(at)) =
                NormalisedReading(reading, sensor.InterimGain, sensor.InitialGain, run.EnglishUnits);
        }
    }
}

}  // namespace

std::string DoubtAboutUnits(const std::string& deflectionUnits, bool englishUnits) {
    const bool isMils = deflectionUnits == "mils" || deflectionUnits == "mil";
    const bool isMicrons = deflectionUnits == "microns" || deflectionUnits == "micron";
    if (deflectionUnits.empty()) return "The file does not tell the unit of its deflections.";
    if (!isMils && !isMicrons) return "The unit of the file's deflections, \"" + deflectionUnits + "\", is not known.";
    if (isMils == englishUnits) return {};
    return "The file's deflections are in " + deflectionUnits + ", the calibration is in " +
           (englishUnits ? "mils." : "microns.");
}

double NormalisedReading(double reading, double interimGain, double initialGain, bool englishUnits) {
    if (initialGain == 0) return 0;
    const double normalised = Round(reading * interimGain / initialGain, englishUnits ? 4 : 2);
    return std::isfinite(normalised) ? normalised : 0;
}

double NumberOfDrop(const CalibrationRun& run, const std::vector<std::string>& fields, std::size_t field,
                    long long drop, std::vector<std::string>& unreadable) {
    const std::string text = field < fields.size() ? fields[field] : std::string();
    const auto number = NumberIn(text);
    if (number && std::abs(*number) <= largestReading) return *number;
    unreadable.push_back("Drop " + NumberText(drop) + ", " + FieldWords(run, field) + ": \"" + text + '"');
    return 0;
}

RelativeReadings ReadRelativeTrial(const PDDXFile& file, CalibrationRun& run) {
    const FWDDocument document(file);
    RelativeReadings found;
    found.dropsInFile = static_cast<long long>(document.Locations()) * document.Drops();
    if (found.dropsInFile == 0) return found;
    found.deflectionUnits = document.Units().deflection;
    for (std::size_t s = 0; s < SensorCount(run); ++s) FillSensor(document, run, s);
    ReadRelativeDrops(document, run, found);
    return found;
}

}  // namespace bellmark
