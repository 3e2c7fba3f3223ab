#include "relative/relative_readings.h"

#include <algorithm>
#include <cmath>
#include <utility>

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

void ReadRelativeDrops(const FWDDocument& document, CalibrationRun& run, RelativeTrialInHand& inHand) {
    const auto trial = static_cast<std::size_t>(run.RelTrials);
    for (std::size_t s = 0; s < SensorCount(run); ++s) run.Sensor[s].RelTrial.at(trial).DropData = {};
    const int drops = document.Drops();
    for (long long at = 0; at < std::min(inHand.dropsInFile, mostDropsRead); ++at) {
        const int location = static_cast<int>(at / drops) + 1;
        const auto fields = document.DropFields(location, static_cast<int>(at % drops) + 1);
        for (std::size_t s = 0; s < SensorCount(run); ++s) {
            SensorCalRecord& sensor = run.Sensor[s];
            const double reading = NumberOfDrop(run, fields, s + 1, at + 1, inHand.unreadable);
            sensor.RelTrial[trial].DropData.at(static_cast<std::size_t>(at)) =
                NormalisedReading(reading, sensor.InterimGain, sensor.InitialGain, run.EnglishUnits);
        }
    }
}

/// what: "loads". unit: of the run. isEnglish: what the file's word means.
std::optional<std::string> DoubtAboutUnits(const std::string& what, const std::string& word,
                                           std::optional<bool> isEnglish, bool englishUnits, const std::string& unit) {
    if (word.empty()) return "The file does not tell the unit of its " + what + '.';
    if (!isEnglish) return "The unit of the file's " + what + ", \"" + word + "\", is not known.";
    if (*isEnglish == englishUnits) return std::nullopt;
    return "The file's " + what + " are in " + word + ", the calibration is in " + unit + '.';
}

}  // namespace

std::optional<std::string> DoubtAboutLoadUnits(const std::string& loadUnits, bool englishUnits) {
    return DoubtAboutUnits("loads", loadUnits, IsEnglishLoad(loadUnits), englishUnits, englishUnits ? "pounds" : "kN");
}

std::optional<std::string> DoubtAboutDeflectionUnits(const std::string& deflectionUnits, bool englishUnits) {
    return DoubtAboutUnits("deflections", deflectionUnits, IsEnglishDeflection(deflectionUnits), englishUnits,
                           englishUnits ? "mils" : "microns");
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

long long ReadRelativeTrial(const PDDXFile& file, CalibrationRun& run, const std::string& rawFileName) {
    const FWDDocument document(file);
    const long long dropsInFile = static_cast<long long>(document.Locations()) * document.Drops();
    if (dropsInFile == 0) return 0;
    RelativeTrialInHand inHand{rawFileName, dropsInFile};
    // The loads of the annual comparison are not used.
    if (const auto doubt = DoubtAboutDeflectionUnits(document.Units().deflection, run.EnglishUnits))
        inHand.unitDoubts.push_back(*doubt);
    for (std::size_t s = 0; s < SensorCount(run); ++s) FillSensor(document, run, s);
    ReadRelativeDrops(document, run, inHand);
    run.RelTrialInHand = std::move(inHand);
    return dropsInFile;
}

}  // namespace bellmark
