#include "relative/relative_readings.h"

#include <algorithm>
#include <cmath>

#include "fwd/fwd_document.h"
#include "fwd/fwd_peaks.h"
#include "platform/numbers.h"
#include "platform/text.h"

namespace bellmark {

namespace {

constexpr long long mostDropsRead = 50;
constexpr double largestReading = 1e9;  ///< far above what any FWD measures, in whatever unit

std::string SensorWords(const CalibrationRun& run, std::size_t sensor) {
    return "sensor " + NumberText(ShownSensorNumber(run, static_cast<int>(sensor)));
}

void ReadRelativeDrops(const FWDDocument& document, CalibrationRun& run, std::size_t index, RelativeReadings& found) {
    SensorCalRecord& sensor = run.Sensor[index];
    auto& readings = sensor.RelTrial.at(static_cast<std::size_t>(run.RelTrials)).DropData;
    readings = {};
    const int drops = document.Drops();
    const int field = static_cast<int>(index) + 2;
    for (long long at = 0; at < std::min(found.dropsInFile, mostDropsRead); ++at) {
        const int location = static_cast<int>(at / drops) + 1;
        const int drop = static_cast<int>(at % drops) + 1;
        const std::string text = document.DropFieldAt(location, drop, field);
        const auto number = NumberIn(text);
        const bool isReading = number && std::abs(*number) <= largestReading;
        if (!isReading) {
            found.unreadable.push_back("Drop " + NumberText(at + 1) + ", " + SensorWords(run, index) + ": \"" + text +
                                       '"');
        }
        readings.at(static_cast<std::size_t>(at)) =
            NormalisedReading(isReading ? *number : 0, sensor.InterimGain, sensor.InitialGain, run.EnglishUnits);
    }
}

}  // namespace

UnitAgreement AgreementOfUnits(const std::string& deflectionUnits, bool englishUnits) {
    const bool isMils = deflectionUnits == "mils" || deflectionUnits == "mil";
    const bool isMicrons = deflectionUnits == "microns" || deflectionUnits == "micron";
    if (!isMils && !isMicrons) return UnitAgreement::Unknown;
    return isMils == englishUnits ? UnitAgreement::Agrees : UnitAgreement::Differs;
}

double NormalisedReading(double reading, double interimGain, double initialGain, bool englishUnits) {
    if (initialGain == 0) return 0;
    const double normalised = Round(reading * interimGain / initialGain, englishUnits ? 4 : 2);
    return std::isfinite(normalised) ? normalised : 0;
}

RelativeReadings ReadRelativeTrial(const PDDXFile& file, CalibrationRun& run) {
    const FWDDocument document(file);
    RelativeReadings found;
    found.dropsInFile = static_cast<long long>(document.Locations()) * document.Drops();
    if (found.dropsInFile == 0) return found;
    found.deflectionUnits = document.Units().deflection;
    for (std::size_t s = 0; s < SensorCount(run); ++s) {
        FillSensor(document, run, s);
        ReadRelativeDrops(document, run, s, found);
    }
    return found;
}

}  // namespace bellmark
