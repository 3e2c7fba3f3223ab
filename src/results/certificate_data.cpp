#include "results/certificate_data.h"

#include <limits>
#include <span>
#include <utility>

#include "app/workflow.h"
#include "platform/format.h"
#include "platform/json.h"
#include "platform/sha256.h"
#include "platform/text.h"
#include "relative/relative_analysis.h"
#include "results/certificate.h"
#include "results/load_cell_evaluation.h"
#include "results/sensor_evaluation.h"
#include "run/calibration_run.h"
#include "run/center_config.h"
#include "run/reference_trials.h"
#include "run/version.h"

namespace bellmark {

namespace {

constexpr int formatVersion = 1;

/// The operator has seen the warnings of the analyses before accepting the calibration.
void AlreadyTold(const char*) {}

const char* Verdict(bool isPassed) {
    return isPassed ? "passed" : "failed";
}

Json Quantity(double value, const char* unit) {
    return Json::Object({{"value", value}, {"unit", unit}});
}

const char* DeflectionUnit(bool englishUnits) {
    return englishUnits ? "mil" : "micron";
}

const char* ForceUnit(bool englishUnits) {
    return englishUnits ? "pound-force" : "kN";
}

/// Null for an unknown date.
Json Date(DateTime date) {
    return date == ZeroDate() ? Json() : Json(Format(date, "yyyy-mm-dd"));
}

/// A message as the operator reads it, one text per line.
Json Lines(std::string_view message) {
    std::vector<Json> lines;
    for (const std::string_view line : SplitLines(message)) {
        if (!Trim(line).empty()) lines.emplace_back(Trim(line));
    }
    return Json::Array(std::move(lines));
}

template <class ItemOf>
Json ListOf(int count, ItemOf itemOf) {
    std::vector<Json> items;
    for (int i = 0; i < count; ++i) items.push_back(itemOf(static_cast<std::size_t>(i)));
    return Json::Array(std::move(items));
}

Json SoftwareData() {
    const ProgramVersion version = VersionOfProgram();
    return Json::Object({{"name", "Bellmark"}, {"version", version.number}, {"buildDate", version.buildDate}});
}

Json CalibrationData(const CalibrationRun& run, DateTime now) {
    return Json::Object({{"date", Date(now)},
                         {"time", Format(now, "hh:nn:ss")},
                         {"type", "Annual"},
                         {"procedure", "AASHTO R 32"},
                         {"isReview", run.ReviewMode},
                         {"folder", PathText(run.OutputFolder.filename())}});
}

Json CenterData(const CenterConfig& center) {
    return Json::Object({{"name", center.CalibrationCenter},
                         {"idCode", center.CalCenterIDCode},
                         {"operator", center.CalibrationCenterOperator},
                         {"signalConditioner", center.SignalConditionerSerialNumber},
                         {"dataAcquisitionBoard", center.AtoDBoardSerialNumber}});
}

Json DeviceData(const CalibrationRun& run) {
    return Json::Object({{"owner", run.DeviceOwner},
                         {"unit", run.DeviceName},
                         {"manufacturer", MakerName(run.Manufacturer)},
                         {"designation", run.DeviceDesignationName},
                         {"model", run.DeviceModelNumber},
                         {"serialNumber", run.DeviceSerialNumber},
                         {"operator", run.OperatorName}});
}

Json ReferenceData(const CenterConfig& center) {
    const bool isCalibratedDaily = center.AccelDailyCalibrationDate != ZeroDate();
    const Json daily =
        isCalibratedDaily
            ? Json::Object(
                  {{"date", Date(center.AccelDailyCalibrationDate)},
                   {"time", Format(center.AccelDailyCalibrationTime, "hh:nn:ss")},
                   {"temperature", Quantity(center.AccelDailyCalibrationTemp,
                                            StartsWithIgnoringCase(center.AccelDailyCalibrationTemperatureUnit, "F")
                                                ? "degree Fahrenheit"
                                                : "degree Celsius")}})
            : Json();
    return Json::Object(
        {{"loadCell", Json::Object({{"name", center.ReferenceLoadCellName},
                                    {"calibrationDate", Date(center.ReferenceLoadCellCalibrationDate)}})},
         {"accelerometer", Json::Object({{"model", center.AccelerometerModelNumber},
                                         {"serialNumber", center.AccelerometerSerialNumber},
                                         {"calibrationDate", Date(center.AccelReferenceCalibrationDate)},
                                         {"dailyCalibration", daily}})}});
}

/// The results of a trial's regression through the origin.
Json::Members RegressionData(int number, const TrialRecord& trial) {
    return {{"trial", number},
            {"gain", trial.Gain},
            {"adjustmentFactor", trial.AdjFactor},
            {"standardError", trial.StdErrAdjFactor},
            {"verdict", Verdict(!IsStdErrorTooLarge(trial.StdErrAdjFactor))}};
}

Json GainLimitsData(double smallest, double greatest) {
    return Json::Array({smallest, greatest});
}

Json LoadCellData(const CalibrationRun& run) {
    if (!run.LoadCellCalComplete) return {};
    const int trials = AcceptedLoadCellTrials(run);
    std::vector<double> gains;
    for (int t = 0; t < trials; ++t) gains.push_back(run.LCTrial.at(static_cast<std::size_t>(t)).Gain);
    const LoadCellEvaluation judged = EvaluateLoadCell(gains, run.LoadCellInitialGain);
    const double finalGain = run.NewLoadCellCalibrationCenterGain;
    const Json trialData = ListOf(trials, [&](std::size_t t) {
        Json::Members members = RegressionData(static_cast<int>(t) + 1, run.LCTrial.at(t));
        const TrialShape& shape = run.LCTrialShape.at(t);
        members.insert(members.end(), {{"heights", shape.heights},
                                       {"dropsPerHeight", shape.dropsPerHeight},
                                       {"unitOfPeaks", ForceUnit(shape.englishUnits)}});
        return Json::Object(std::move(members));
    });
    using namespace loadCellLimits;
    return Json::Object({{"serialNumber", run.LoadCellSerialNumber},
                         {"asFoundGain", run.LoadCellInitialGain},
                         {"asLeftGain", finalGain},
                         {"change", GainChange(finalGain, run.LoadCellInitialGain)},
                         {"trials", trialData},
                         {"limits", Json::Object({{"spread", largestSpread},
                                                  {"gain", GainLimitsData(smallestGain, greatestGain)},
                                                  {"change", largestChange},
                                                  {"standardError", largestStdError}})},
                         {"verdicts", Json::Object({{"spread", Verdict(judged.isRepeatable)},
                                                    {"gain", Verdict(judged.isGainWithinLimits)},
                                                    {"change", Verdict(judged.isChangeWithinLimit)},
                                                    {"all", Verdict(judged.IsPassed())}})},
                         {"messages", Lines(run.LoadCellMessage)}});
}

Json ReferenceTrialData(const CalibrationRun& run, std::size_t trial) {
    const TrialShape& shape = run.RefTrialShape.at(trial);
    return Json::Object({{"trial", static_cast<int>(trial) + 1},
                         {"heights", shape.heights},
                         {"dropsPerHeight", shape.dropsPerHeight},
                         {"unitOfPeaks", DeflectionUnit(shape.englishUnits)}});
}

/// The files of a run do not keep the sums of squares. They are computed from the readings.
double StdErrorOfRelativeTrial(const CalibrationRun& run, std::size_t trial) {
    std::vector<std::span<const double>> readings;
    for (int s = 0; s < run.NumberSensors; ++s) {
        const RelativeTrialRecord& record = run.Sensor.at(static_cast<std::size_t>(s)).RelTrial.at(trial);
        readings.push_back(std::span<const double>(record.DropData).first(relativeDrops));
    }
    const TwoWayAnalysis found = AnalyseTwoWay(readings, relativeDropsPerSet);
    RelativeTrialSummary summary;
    summary.SSSet = found.SSSet;
    summary.SSSensor = found.SSSensor;
    summary.SSTotal = found.SSTotal;
    return RelativeTrialTable(summary, run.NumberSensors, AlreadyTold).standardError;
}

Json RelativeTrialData(const CalibrationRun& run, std::size_t trial) {
    const double standardError = StdErrorOfRelativeTrial(run, trial);
    const char* unit = DeflectionUnit(run.EnglishUnits);
    return Json::Object({{"trial", static_cast<int>(trial) + 1},
                         {"mean", Quantity(run.RelTrial.at(trial).Avg, unit)},
                         {"standardError", Quantity(standardError, unit)},
                         {"verdict", Verdict(!InBothUnits(standardError, run.EnglishUnits).isTooLarge)}});
}

Json RelativeGainData(const CalibrationRun& run, const RelativeTrialRecord& record, std::size_t trial) {
    const char* unit = DeflectionUnit(run.EnglishUnits);
    return Json::Object({{"trial", static_cast<int>(trial) + 1},
                         {"gain", record.Gain},
                         {"meansRatio", record.AdjFactor},
                         {"standPosition", record.Position > 0 ? Json(record.Position) : Json()},
                         {"mean", Quantity(record.Average, unit)},
                         {"standardDeviation", Quantity(record.StdDev, unit)}});
}

Json SensorData(const CalibrationRun& run, std::size_t sensor, const SensorCriteria& criteria) {
    const SensorCalRecord& record = run.Sensor.at(sensor);
    const bool needsHistory = criteria.FailsGain() && criteria.isChangeTooLarge;
    return Json::Object(
        {{"number", ShownSensorNumber(run, static_cast<int>(sensor))},
         {"serialNumber", record.SerialNumber},
         {"asFoundGain", record.InitialGain},
         {"interimGain", record.InterimGain},
         {"asLeftGain", record.FinalGain},
         {"change", GainChange(record.FinalGain, record.InitialGain)},
         {"referenceTrials", ListOf(AcceptedReferenceTrials(run),
                                    [&](std::size_t t) {
                                        return Json::Object(
                                            RegressionData(static_cast<int>(t) + 1, record.RefTrial.at(t)));
                                    })},
         {"relativeTrials",
          ListOf(run.RelTrials, [&](std::size_t t) { return RelativeGainData(run, record.RelTrial.at(t), t); })},
         {"verdicts", Json::Object({{"gain", Verdict(!criteria.FailsGain())},
                                    {"change", Verdict(!criteria.isChangeTooLarge)},
                                    {"all", Verdict(!needsHistory)}})}});
}

Json FinalAnalysisData(const CalibrationRun& run) {
    const auto analysis = AnalyseAllTrials(run, AlreadyTold);
    if (!analysis) return {};
    return Json::Object({{"F", Json(analysis->F)},
                         {"sensorDegreesOfFreedom", analysis->sensorDegrees},
                         {"errorDegreesOfFreedom", analysis->errorDegrees},
                         {"P", analysis->P},
                         {"verdict", analysis->verdict}});
}

Json SensorLimitsData(Make make) {
    const FinalGainLimits limits = LimitsOfFinalGain(make);
    return Json::Object({{"gain", GainLimitsData(limits.smallest, limits.greatest)},
                         {"change", limits.largestChange},
                         {"pairDifference", largestPairDifference},
                         {"standardError", largestStdError},
                         {"relativeStandardError", Quantity(largestRelativeStdError, "micron")}});
}

Json SensorsData(const CalibrationRun& run) {
    if (!run.SensorRelCalComplete) return {};
    const SensorEvaluation judged = EvaluateSensors(run);
    bool allPass = true;
    for (const SensorCriteria& criteria : judged.sensors) {
        if (criteria.FailsGain() && criteria.isChangeTooLarge) allPass = false;
    }
    return Json::Object(
        {{"sensors",
          ListOf(run.NumberSensors, [&](std::size_t s) { return SensorData(run, s, judged.sensors.at(s)); })},
         {"referenceTrials",
          ListOf(AcceptedReferenceTrials(run), [&](std::size_t t) { return ReferenceTrialData(run, t); })},
         {"relativeTrials", ListOf(run.RelTrials, [&](std::size_t t) { return RelativeTrialData(run, t); })},
         {"finalAnalysis", FinalAnalysisData(run)},
         {"limits", SensorLimitsData(run.Manufacturer)},
         {"verdicts", Json::Object({{"reference", Verdict(run.SensorRefCalGood)}, {"final", Verdict(allPass)}})},
         {"messages",
          Json::Object({{"reference", Lines(ReferenceMessages(run))}, {"relative", Lines(run.SensorRelMessage)}})}});
}

Json NotesData(const CenterConfig& center) {
    std::vector<Json> notes;
    for (const std::string& note : center.Notes) {
        if (!Trim(note).empty()) notes.emplace_back(Trim(note));
    }
    return Json::Array(std::move(notes));
}

Json FilesData(const std::vector<FileDigest>& files) {
    std::vector<Json> items;
    for (const FileDigest& file : files) {
        items.push_back(Json::Object(
            {{"name", file.name}, {"bytes", static_cast<long long>(file.bytes)}, {"sha256", file.sha256}}));
    }
    return Json::Array(std::move(items));
}

void AddDigests(const FileSystem& files, const Path& folder, const std::string& prefix, const std::string& exceptName,
                const KnownDigests& known, std::vector<FileDigest>& digests) {
    for (const std::string& name : files.FileNames(folder)) {
        if (prefix.empty() && EqualIgnoringCase(name, exceptName)) continue;
        const auto found = known.find(prefix + name);
        if (found != known.end()) {
            digests.push_back(found->second);
            continue;
        }
        constexpr auto anySize = std::numeric_limits<std::uintmax_t>::max();
        digests.push_back(DigestOf(prefix + name, files.ReadBytes(folder / PathFromText(name), anySize)));
    }
    for (const std::string& name : files.FolderNames(folder)) {
        AddDigests(files, folder / PathFromText(name), prefix + name + '/', exceptName, known, digests);
    }
}

}  // namespace

FileDigest DigestOf(std::string name, std::string_view bytes) {
    return {std::move(name), bytes.size(), Sha256(bytes)};
}

std::vector<FileDigest> DigestsOfFolder(const FileSystem& files, const Path& folder, const std::string& exceptName,
                                        const KnownDigests& known) {
    std::vector<FileDigest> digests;
    AddDigests(files, folder, "", exceptName, known, digests);
    return digests;
}

Json CertificateData(const CalibrationRun& run, const CenterConfig& center, const std::vector<FileDigest>& files,
                     DateTime now) {
    return Json::Object({{"format", "Bellmark calibration certificate"},
                         {"formatVersion", formatVersion},
                         {"software", SoftwareData()},
                         {"calibration", CalibrationData(run, now)},
                         {"center", CenterData(center)},
                         {"device", DeviceData(run)},
                         {"references", ReferenceData(center)},
                         {"loadCell", LoadCellData(run)},
                         {"deflectionSensors", SensorsData(run)},
                         {"notes", NotesData(center)},
                         {"files", FilesData(files)}});
}

}  // namespace bellmark
