#include "monthly/monthly_trial.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

#include "analysis/limits.h"
#include "fwd/fwd_document.h"
#include "fwd/fwd_peaks.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "relative/relative_readings.h"
#include "relative/relative_trial.h"
#include "run/stored_values.h"

namespace bellmark {

namespace {

constexpr double largestRatioOff = 0.003;
constexpr double largestGainChange = 0.003;
constexpr double largestGainDifference = 0.003;

std::size_t IndexOfTrial(int trials) {
    return static_cast<std::size_t>(trials - 1);
}

// ---- reading

MonthlyProblem ProblemOf(const MonthlyReading& reading, const CalibrationRun& run) {
    if (reading.sensors == 0) return MonthlyProblem::NoSensors;
    if (reading.sensors > static_cast<int>(maxSensors)) return MonthlyProblem::TooManySensors;
    if (run.RelTrials > 0 && reading.sensors != run.NumberSensors) return MonthlyProblem::OtherSensorCount;
    if (reading.dropsInFile != monthlyDropsPerSet * reading.sensors) return MonthlyProblem::WrongDropCount;
    return HasRoomForRelativeTrial(run) ? MonthlyProblem::None : MonthlyProblem::NoRoom;
}

std::string DateInReport(const std::string& stored) {
    const DateTime date = StoredDate(stored);
    return date == ZeroDate() ? stored : Format(date, "dd-mmm-yyyy");
}

void TakeSensors(const FWDDocument& document, CalibrationRun& run, MonthlyReading& reading) {
    if (run.DeviceSerialNumber.empty()) run.DeviceSerialNumber = document.DeviceSerialNumber();
    for (std::size_t s = 0; s < SensorCount(run); ++s) {
        FillSensor(document, run, s);
        const double found = document.SensorGain(static_cast<int>(s) + 1);
        const double known = run.Sensor[s].InitialGain;
        if (found == 0 || found == known) continue;
        reading.otherGains.push_back(SensorWords(run, s) + ": gain " + NumberText(found) + " in place of " +
                                     NumberText(known));
    }
}

void TakeDrops(const FWDDocument& document, CalibrationRun& run, RelativeTrialInHand& inHand, MonthlyReading& reading) {
    const auto trial = static_cast<std::size_t>(run.RelTrials);
    const FWDUnits units = document.Units();
    run.RelTrial.at(trial) = {};
    for (std::size_t s = 0; s < SensorCount(run); ++s) run.Sensor[s].RelTrial.at(trial) = {};
    for (int drop = 1; drop <= reading.dropsInFile; ++drop) {
        const auto fields = document.DropFields(1, drop);
        const double load = NumberOfDrop(run, fields, 0, drop, inHand.unreadable);
        reading.loads.push_back(StoredLoad(load, units.load, units.plateRadius, units.radius));
        for (std::size_t s = 0; s < SensorCount(run); ++s) {
            run.Sensor[s].RelTrial[trial].DropData.at(static_cast<std::size_t>(drop - 1)) =
                NumberOfDrop(run, fields, s + 1, drop, inHand.unreadable);
        }
    }
    for (const auto& doubt : {DoubtAboutLoadUnits(units.load, run.EnglishUnits),
                              DoubtAboutDeflectionUnits(units.deflection, run.EnglishUnits)}) {
        if (doubt) inHand.unitDoubts.push_back(*doubt);
    }
}

}  // namespace

MonthlyReading ReadMonthlyTrial(const PDDXFile& file, CalibrationRun& run, const std::string& rawFileName) {
    const FWDDocument document(file);
    MonthlyReading reading;
    reading.sensors = document.DeflectionSensors();
    reading.dropsInFile = document.Drops();
    reading.problem = ProblemOf(reading, run);
    const bool isRead = reading.problem == MonthlyProblem::None;
    if (!isRead && reading.problem != MonthlyProblem::WrongDropCount) return reading;
    run.NumberSensors = reading.sensors;
    run.NumberDropsPerLoadLevel = reading.dropsInFile;
    if (!isRead) return reading;
    TakeSensors(document, run, reading);
    RelativeTrialInHand inHand{rawFileName, reading.dropsInFile};
    TakeDrops(document, run, inHand, reading);
    run.RelTrialInHand = std::move(inHand);
    reading.deviceSerialNumber = document.DeviceSerialNumber();
    reading.operatorName = document.OperatorName();
    reading.endDate = DateInReport(document.EndDate());
    return reading;
}

std::vector<std::string> DoubtsAboutMonthlyTrial(const CalibrationRun& run) {
    std::vector<std::string> lines;
    const auto trial = static_cast<std::size_t>(run.RelTrials);
    for (std::size_t s = 0; s < SensorCount(run); ++s) {
        const char* lacking = run.Sensor[s].InitialGain == 0                    ? "existing gain"
                              : run.Sensor[s].RelTrial.at(trial).AdjFactor == 0 ? "deflection"
                                                                                : nullptr;
        if (lacking == nullptr) continue;
        lines.push_back(std::string("There is no ") + lacking + " of " + SensorWords(run, s) +
                        ": its relative gain is 0.");
    }
    AddDoubtsAboutReadings(run, lines);
    return lines;
}

// ---- analysis

namespace {

LatinSquareAnalysis SquareOf(const CalibrationRun& run, std::size_t trial) {
    const std::size_t drops = monthlyDropsPerSet * SensorCount(run);
    std::vector<std::span<const double>> readings;
    for (std::size_t s = 0; s < SensorCount(run); ++s)
        readings.push_back(std::span<const double>(run.Sensor[s].RelTrial.at(trial).DropData).first(drops));
    return AnalyseLatinSquare(readings, monthlyDropsPerSet);
}

void Store(const LatinSquareAnalysis& square, CalibrationRun& run, std::size_t trial) {
    RelativeTrialSummary& summary = run.RelTrial.at(trial);
    summary = {};
    summary.Avg = square.all.average;
    summary.StdDev = square.all.stdDev;
    summary.SSSet = square.SSSet;
    summary.SSSensor = square.SSSensor;
    summary.SSTotal = square.SSTotal;
    for (std::size_t set = 0; set < std::min(square.sets.size(), maxSets); ++set) {
        summary.SetAvg[set] = square.sets[set].average;
        summary.SetStdDev[set] = square.sets[set].stdDev;
    }
    for (std::size_t s = 0; s < square.sensors.size(); ++s) {
        RelativeTrialRecord& record = run.Sensor[s].RelTrial[trial];
        record.Average = square.sensors[s].average;
        record.StdDev = square.sensors[s].stdDev;
        record.AdjFactor = record.Average > 0 ? summary.Avg / record.Average : 0;
        record.Gain = run.Sensor[s].InitialGain * record.AdjFactor;
    }
}

}  // namespace

MonthlyAnalysis AnalyseMonthlyTrial(CalibrationRun& run, int trials, double cochranBefore,
                                    const AnalysisWarning& warn) {
    MonthlyAnalysis found;
    found.square = SquareOf(run, IndexOfTrial(trials));
    Store(found.square, run, IndexOfTrial(trials));
    found.table = LatinSquareTable(found.square, warn);
    found.standardError = InBothUnits(found.table.standardError, run.EnglishUnits);
    found.critical = FixedCriticalValues(run.NumberSensors, cochranBefore);
    const auto isSignificant = [&](std::size_t source) {
        const std::optional<double> F = found.table.rows.at(source).F;
        return F && ExceedsLimit(*F, found.critical.F);
    };
    found.SetIsSignificant = isSignificant(latin_square::set);
    found.PositionIsSignificant = isSignificant(latin_square::position);
    found.SensorIsSignificant = isSignificant(latin_square::sensor);
    found.cochran = CochranTest(found.square.sensors);
    found.CochranExceeded = found.cochran.C && ExceedsLimit(*found.cochran.C, found.critical.CochranCritical);
    return found;
}

// ---- counts and the decision

bool IsOutOf2Percent(double gain) {
    constexpr double largestOff = 0.02;
    return ExceedsLimit(std::abs(1 - gain), largestOff);
}

MonthlyCounts CountMonthlySensors(const CalibrationRun& run, int trials) {
    MonthlyCounts counts;
    for (std::size_t s = 0; s < SensorCount(run); ++s) {
        const SensorCalRecord& record = run.Sensor[s];
        const RelativeTrialRecord& last = record.RelTrial.at(IndexOfTrial(trials));
        MonthlySensor sensor;
        for (std::size_t t = 0; t <= IndexOfTrial(trials); ++t) sensor.meanGain += record.RelTrial[t].Gain / trials;
        sensor.isOutOfTolerance = ExceedsLimit(std::abs(1 - last.AdjFactor), largestRatioOff);
        sensor.isOutOf2Percent = IsOutOf2Percent(last.Gain);
        const double difference = std::abs(record.RelTrial[1].Gain - record.RelTrial[0].Gain);
        sensor.trialsDiffer = trials >= 2 && !ExceedsLimit(largestGainDifference, difference);
        sensor.isToBeReset = ExceedsLimit(std::abs(sensor.meanGain - record.InitialGain), largestGainChange);
        counts.OutOfTolerance += sensor.isOutOfTolerance ? 1 : 0;
        counts.OutOf2Percent += sensor.isOutOf2Percent ? 1 : 0;
        counts.TrialDifferenceFailures += sensor.trialsDiffer ? 1 : 0;
        counts.SensorsToReset += sensor.isToBeReset ? 1 : 0;
        counts.sensors.push_back(sensor);
    }
    return counts;
}

double ReplacedGainStdDev(const CalibrationRun& run, int trials, std::size_t sensor) {
    const SensorCalRecord& record = run.Sensor.at(sensor);
    GroupSums gains{record.RelTrial[0].Gain};
    for (std::size_t t = 0; t < static_cast<std::size_t>(trials); ++t) gains.Add(record.RelTrial.at(t).Gain);
    return gains.Group().stdDev;
}

bool ReplacedGainsAgree(const CalibrationRun& run, int trials, std::size_t sensor) {
    const auto& gains = run.Sensor.at(sensor).RelTrial;
    const double spread =
        trials == 2 ? std::abs(gains[1].Gain - gains[0].Gain) : ReplacedGainStdDev(run, trials, sensor);
    return ExceedsLimit(largestGainDifference, spread);
}

namespace {

MonthlyDecision DecisionOfMonthly(const CalibrationRun& run) {
    if (run.RelTrials == 0) return {step::monthlyTrial};
    const MonthlyCounts counts = CountMonthlySensors(run, run.RelTrials);
    if (run.RelTrials == 1) {
        const bool isDone = counts.OutOfTolerance == 0 && counts.OutOf2Percent == 0;
        return {isDone ? step::monthlyFinished : step::monthlyTrial};
    }
    MonthlyDecision decision;
    decision.asksForTwoNewTrials = counts.TrialDifferenceFailures > 0;
    if (!decision.asksForTwoNewTrials) decision.step = step::monthlyNext;
    return decision;
}

bool IsReplacementDone(const CalibrationRun& run, std::optional<std::size_t> sensor) {
    if (run.RelTrials >= static_cast<int>(maxTrials)) return true;
    return sensor && run.RelTrials >= 2 && ReplacedGainsAgree(run, run.RelTrials, *sensor);
}

}  // namespace

MonthlyDecision RelativeCalibrationStatus(const CalibrationRun& run, std::optional<std::size_t> replacedSensor) {
    if (run.CurrentProcedure != Procedure::SensorReplacement) return DecisionOfMonthly(run);
    if (run.RelTrials == 0) return {};
    return {IsReplacementDone(run, replacedSensor) ? step::replacementNext : step::replacementTrial};
}

}  // namespace bellmark
