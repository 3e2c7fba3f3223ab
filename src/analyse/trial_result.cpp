#include "analyse/trial_result.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "analyse/drop_result.h"
#include "analysis/analysis.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "platform/text.h"
#include "run/calibration_run.h"
#include "run/interim_keys.h"
#include "run/paths.h"
#include "run/stored_values.h"
#include "run/trial.h"

namespace bellmark {

namespace {

/// The reference's peaks of a trial as they are analysed now.
struct PeaksNow {
    std::array<double, maxDrops> peaks{};
    std::string problem;
};

PeaksNow AnalysePeaks(const FileSystem& files, const Path& folder, DropAnalyser& analyser, Procedure procedure,
                      int number, const TrialShape& shape) {
    PeaksNow now;
    const int drops = std::min(shape.Drops(), static_cast<int>(maxDrops));
    if (drops == 0) now.problem = "the record tells no drops";
    for (int i = 0; i < drops && now.problem.empty(); ++i) {
        const std::string name = DropFileName(procedure, number, PlaceOf(shape, i));
        const DropResult drop = analyser.Analyse(files, ActualPath(files, folder / PathFromText(name)));
        if (!drop.problem.empty()) now.problem = name + ": " + drop.problem;
        now.peaks[static_cast<std::size_t>(i)] = shape.englishUnits ? drop.peakEnglish : drop.peakMetric;
    }
    return now;
}

double LargestDifference(std::span<const double> a, std::span<const double> b) {
    double largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (std::abs(a[i] - b[i]) > std::abs(largest)) largest = a[i] - b[i];
    }
    return largest;
}

TrialResult Regress(TrialResult result, const TrialRecord& stored, const PeaksNow& now, const TrialShape& shape) {
    constexpr int gainDecimals = 4;
    result.problem = now.problem;
    if (result.problem.empty() && stored.AdjFactor == 0) result.problem = "the record tells no adjustment factor";
    if (!result.problem.empty()) return result;
    result.drops = shape.Drops();
    const auto drops = static_cast<std::size_t>(result.drops);
    const OriginRegression fit = RegressThroughOrigin(stored.DropData, now.peaks, result.drops);
    // The record of a finished calibration holds the new gain in place of the initial one.
    result.initialGain = Round(stored.Gain / stored.AdjFactor, gainDecimals);
    result.adjustmentFactor = fit.slope;
    result.standardError = fit.stdErrSlope;
    result.gain = result.initialGain * fit.slope;
    result.storedGain = stored.Gain;
    result.largestPeakDifference =
        LargestDifference(std::span(now.peaks).first(drops), std::span(stored.RefDropData).first(drops));
    return result;
}

CalibrationRun ReadRecord(const FileSystem& files, const Path& record) {
    const ProfileStrings strings(ReadTextFile(files, record));
    CalibrationRun run;
    run.NumberSensors =
        StoredWhole(strings.Get("Device Configuration", "NumberOfDeflectionSensors"), 0, static_cast<int>(maxSensors));
    ReadRunKeys(strings, run);
    return run;
}

}  // namespace

bool IsRecordName(std::string_view name) {
    constexpr std::string_view ending = ".ddx";
    return StartsWithIgnoringCase(name, "BellmarkCalibrationRecord ") && name.size() > ending.size() &&
           EqualIgnoringCase(name.substr(name.size() - ending.size()), ending);
}

std::vector<TrialResult> AnalyseTrials(const FileSystem& files, const Path& record, const CenterConfig& center) {
    std::vector<TrialResult> results;
    TrialResult result;
    result.record = record;
    const Path folder = record.parent_path();
    try {
        const CalibrationRun run = ReadRecord(files, record);
        result.serialNumber = run.DeviceSerialNumber;
        DropAnalyser analyser(center);
        for (int t = 0; t < run.LoadCellRefTrials; ++t) {
            const auto at = static_cast<std::size_t>(t);
            const TrialShape& shape = run.LCTrialShape[at];
            result.number = t + 1;
            const PeaksNow now = AnalysePeaks(files, folder, analyser, Procedure::LoadCell, t + 1, shape);
            results.push_back(Regress(result, run.LCTrial[at], now, shape));
        }
        for (int t = 0; t < run.RefTrials; ++t) {
            const auto at = static_cast<std::size_t>(t);
            const TrialShape& shape = run.RefTrialShape[at];
            result.number = t + 1;
            const PeaksNow now = AnalysePeaks(files, folder, analyser, Procedure::Sensors, t + 1, shape);
            for (std::size_t s = 0; s < SensorCount(run); ++s) {
                result.sensor = static_cast<int>(s) + 1;
                results.push_back(Regress(result, run.Sensor[s].RefTrial[at], now, shape));
            }
        }
        if (results.empty()) result.problem = "holds no trials";
    } catch (const FileError& error) {
        result.problem = error.what();
    }
    if (!result.problem.empty()) results.push_back(result);
    return results;
}

}  // namespace bellmark
