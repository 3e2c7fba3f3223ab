#include "run/interim_keys.h"

#include <algorithm>
#include <span>

#include "analysis/analysis.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "platform/text.h"
#include "run/center_config.h"
#include "run/center_keys.h"
#include "run/run_document.h"
#include "run/stored_values.h"

namespace bellmark {

namespace {

constexpr const char* calibration = "Device Calibration";
constexpr const char* information = "Device Information";
constexpr const char* interimState = "Interim State";
constexpr const char* endMark = "Complete";
/// All drops of an annual relative trial, whatever the number of heights and drops: the analysis of variance needs them
/// all.
constexpr std::size_t storedRelativeDrops = 40;
constexpr int mostTrials = static_cast<int>(maxTrials);
constexpr int lastProcedure = static_cast<int>(Procedure::Results);

std::string Key(const char* name, std::size_t index, const char* rest) {
    return name + NumberText(index + 1) + rest;
}

std::size_t Trials(int count) {
    return static_cast<std::size_t>(std::clamp(count, 0, mostTrials));
}

std::size_t Drops(const TrialShape& shape) {
    return static_cast<std::size_t>(std::clamp(shape.Drops(), 0, static_cast<int>(maxDrops)));
}

class Writer {
  public:
    Writer(ProfileStrings& strings, const char* section) : strings_(strings), section_(section) {}

    void Text(const std::string& key, const std::string& value) { strings_.Set(section_, key, value); }
    void Number(const std::string& key, double value) { Text(key, NumberText(value)); }
    void Boolean(const std::string& key, bool value) { Text(key, BooleanText(value)); }
    void List(const std::string& key, std::span<const double> values) {
        std::string list;
        for (const double value : values) {
            if (!list.empty()) list += ", ";
            list += NumberText(value);
        }
        Text(key, list);
    }
    /// One member of each sensor's record.
    template <class Member>
    void SensorList(const std::string& key, const CalibrationRun& run, Member member) {
        std::array<double, maxSensors> values{};
        const std::size_t count = SensorCount(run);
        for (std::size_t s = 0; s < count; ++s) values[s] = static_cast<double>(member(run.Sensor[s]));
        List(key, std::span(values).first(count));
    }

  private:
    ProfileStrings& strings_;
    const char* section_;
};

void SetLoadCell(Writer& keys, const CalibrationRun& run, DateTime today) {
    const std::size_t trials = Trials(run.LoadCellRefTrials);
    if (trials > 0) keys.Number("LoadCellRefTrials", run.LoadCellRefTrials);
    for (std::size_t t = 0; t < trials; ++t) {
        keys.Number(Key("LoadCellTrial", t, "Gain"), run.LCTrial[t].Gain);
        keys.Number(Key("LoadCellTrial", t, "AdjFactor"), run.LCTrial[t].AdjFactor);
    }
    if (run.NewLoadCellCalibrationCenterGain > 0) {
        keys.Text("NewLoadCellCalibrationCenterDate", Format(today, "dd-mmm-yyyy"));
        keys.Text("NewLoadCellCalibrationCenterGain", Format(run.NewLoadCellCalibrationCenterGain, "0.00000000"));
    }
    for (std::size_t t = 0; t < trials; ++t) {
        keys.List(Key("LCTrial", t, "RefDropData"),
                  std::span(run.LCTrial[t].RefDropData).first(Drops(run.LCTrialShape[t])));
        keys.List(Key("LCTrial", t, "DropData"), std::span(run.LCTrial[t].DropData).first(Drops(run.LCTrialShape[t])));
    }
}

void SetSummaries(Writer& keys, const CalibrationRun& run) {
    keys.Number("RefTrials", run.RefTrials);
    for (std::size_t t = 0; t < Trials(run.RefTrials); ++t) {
        keys.Number(Key("RefTrial", t, "Avg"), run.RefTrial[t].Avg);
        keys.Number(Key("RefTrial", t, "StdDev"), run.RefTrial[t].StdDev);
        keys.Number(Key("RefTrial", t, "Change"), run.RefTrial[t].Change);
    }
    keys.Number("RefCalAvg", run.RefCalAvg);
    keys.Number("RefCalStdDev", run.RefCalStdDev);
    keys.Number("RefCalChange", run.RefCalChange);
    keys.Number("RelTrials", run.RelTrials);
    for (std::size_t t = 0; t < Trials(run.RelTrials); ++t) {
        keys.Number(Key("RelTrial", t, "Avg"), run.RelTrial[t].Avg);
        keys.Number(Key("RelTrial", t, "StdDev"), run.RelTrial[t].StdDev);
        keys.Number(Key("RelTrial", t, "ChiSq"), run.RelTrial[t].ChiSq);
    }
    for (std::size_t t = 0; t < Trials(run.RelTrials); ++t) {
        for (std::size_t m = 0; m < maxSets; ++m) {
            keys.Number(Key("RelTrial", t, "SetAvg") + NumberText(m + 1), run.RelTrial[t].SetAvg[m]);
            keys.Number(Key("RelTrial", t, "SetStdDev") + NumberText(m + 1), run.RelTrial[t].SetStdDev[m]);
        }
    }
}

void SetSensorGains(Writer& keys, const CalibrationRun& run, DateTime today) {
    // An interim gain of exactly 0 in the first sensor means that there are none yet.
    if (run.Sensor[0].InterimGain != 0) {
        keys.SensorList("SensorInterimGain", run, [](const auto& sensor) { return sensor.InterimGain; });
    }
    if (run.Sensor[0].FinalGain != 0) {
        keys.SensorList("SensorFinalGain", run, [](const auto& sensor) { return sensor.FinalGain; });
        keys.Text("SensorFinalDate", Format(today, "dd-mmm-yyyy"));
    }
}

void SetSensorRefTrials(Writer& keys, const CalibrationRun& run) {
    const std::size_t trials = Trials(run.RefTrials);
    for (std::size_t t = 0; t < trials; ++t) {
        keys.SensorList(Key("SensorRefTrial", t, "Gain"), run,
                        [t](const auto& sensor) { return sensor.RefTrial[t].Gain; });
        keys.SensorList(Key("SensorRefTrial", t, "AdjFactor"), run,
                        [t](const auto& sensor) { return sensor.RefTrial[t].AdjFactor; });
    }
    for (std::size_t t = 0; t < trials; ++t) {
        // All sensors share the peaks of the one accelerometer.
        keys.List(Key("SensorRefTrial", t, "RefDropData"),
                  std::span(run.Sensor[0].RefTrial[t].RefDropData).first(Drops(run.RefTrialShape[t])));
    }
    for (std::size_t t = 0; t < trials; ++t) {
        for (std::size_t s = 0; s < SensorCount(run); ++s) {
            keys.List(Key("SensorRefTrial", t, "Sensor") + NumberText(s + 1) + "DropData",
                      std::span(run.Sensor[s].RefTrial[t].DropData).first(Drops(run.RefTrialShape[t])));
        }
    }
}

void SetSensorRelTrials(Writer& keys, const CalibrationRun& run) {
    const std::size_t trials = Trials(run.RelTrials);
    for (std::size_t t = 0; t < trials; ++t) {
        const auto list = [&](const char* name, auto RelativeTrialRecord::*member) {
            keys.SensorList(Key("SensorRelTrial", t, name), run,
                            [=](const auto& sensor) { return sensor.RelTrial[t].*member; });
        };
        list("StdDev", &RelativeTrialRecord::StdDev);
        list("Average", &RelativeTrialRecord::Average);
        list("Position", &RelativeTrialRecord::Position);
        list("Gain", &RelativeTrialRecord::Gain);
        list("AdjFactor", &RelativeTrialRecord::AdjFactor);
    }
    for (std::size_t t = 0; t < trials; ++t) {
        for (std::size_t s = 0; s < SensorCount(run); ++s) {
            keys.List(Key("SensorRelTrial", t, "Sensor") + NumberText(s + 1) + "DropData",
                      std::span(run.Sensor[s].RelTrial[t].DropData).first(storedRelativeDrops));
        }
    }
}

void SetState(ProfileStrings& strings, const CalibrationRun& run) {
    Writer center(strings, centerSection);
    center.Number("NumberLoadLevels", run.NumberLoadLevels);
    center.Number("NumberDropsPerLoadLevel", run.NumberDropsPerLoadLevel);
    center.Boolean("EnglishUnits", run.EnglishUnits);
    center.Number("SensorStand", run.SensorStand);
    Writer keys(strings, calibration);
    keys.Number("CurrentProcedure", static_cast<int>(run.CurrentProcedure));
    keys.Number("CurrentProcStep", run.CurrentProcStep);
    keys.Boolean("FlagUnacceptedTrial", run.FlagUnacceptedTrial);
    keys.Boolean("LoadCellCalComplete", run.LoadCellCalComplete);
    keys.Boolean("SensorRefCalComplete", run.SensorRefCalComplete);
    keys.Boolean("SensorRelCalComplete", run.SensorRelCalComplete);
    Writer device(strings, information);
    device.Number("Manufacturer", static_cast<int>(run.Manufacturer));
    device.Text("DeviceOwner", run.DeviceOwner);
    keys.Text("DeviceOwnerFolder", PathText(run.OwnerFolder));
    device.Text("DeviceSerialNumber", run.DeviceSerialNumber);
    keys.Text("DeviceOwnerSNFolder", PathText(run.DeviceFolder));
    if (!run.OutputFolder.empty()) keys.Text("DeviceOwnerSNDateFolder", PathText(run.OutputFolder));
}

std::string TextOf(const std::optional<double>& value) {
    return value ? NumberText(*value) : std::string();
}

/// State of a run that the other keys do not hold; a resumed run would differ without it.
void SetInterimState(ProfileStrings& strings, const CalibrationRun& run, const CenterConfig& center) {
    Writer keys(strings, interimState);
    keys.Text("MeasuredUnbalancedZero", TextOf(run.MeasuredUnbalancedZero));
    keys.Text("MeasuredPlus", TextOf(run.MeasuredPlus));
    keys.Text("MeasuredMinus", TextOf(run.MeasuredMinus));
    keys.Number("SensorType", run.SensorType);
    keys.Boolean("LoadCellOnly", run.LoadCellOnly);
    keys.Number("AccelDailyCalibration+1GStdDev", center.AccelDailyCalibrationPlus1GStdDev);
    keys.Number("AccelDailyCalibration-1GStdDev", center.AccelDailyCalibrationMinus1GStdDev);
    keys.Number("AccelDailyCalibration+1GFlipStdDev", center.AccelDailyCalibrationPlus1GFlipStdDev);
    keys.Text("SimDataLocation", PathText(run.SimDataLocation));
    const auto trialIf = [&](bool isMeant) {
        return static_cast<int>(isMeant ? run.Trial.procedure : Procedure::None);
    };
    keys.Number("ProcedureOfUnacceptedTrial", trialIf(run.FlagUnacceptedTrial));
    const bool hasDrops = run.Trial.DropSequenceIndex > 0 || run.Trial.wasInterrupted;
    keys.Number("ProcedureOfDropsInHand", trialIf(hasDrops && !run.FlagUnacceptedTrial));
    const auto shape = [&](const char* name, std::size_t t, const TrialShape& of) {
        keys.Number(Key(name, t, "Heights"), of.heights);
        keys.Number(Key(name, t, "Drops"), of.dropsPerHeight);
        keys.Boolean(Key(name, t, "EnglishUnits"), of.englishUnits);
    };
    for (std::size_t t = 0; t < Trials(run.LoadCellRefTrials); ++t) shape("LCTrial", t, run.LCTrialShape[t]);
    for (std::size_t t = 0; t < Trials(run.RefTrials); ++t) shape("SensorRefTrial", t, run.RefTrialShape[t]);
    const auto marks = [&](const char* name, const std::array<bool, maxDrops>& flags) {
        std::array<double, maxDrops> numbers{};
        std::copy(flags.begin(), flags.end(), numbers.begin());
        keys.List(name, numbers);
    };
    marks("NoiseMarks", run.Trial.DropNoiseFlags);
    marks("RangeMarks", run.Trial.DropRangeFlags);
}

class Reader {
  public:
    Reader(const ProfileStrings& strings, const char* section) : strings_(strings), section_(section) {}

    std::string Text(const std::string& key) const { return strings_.Get(section_, key); }
    double Number(const std::string& key) const { return StoredNumber(ZeroIfEmpty(Text(key))); }
    int Whole(const std::string& key, int most) const { return StoredWhole(Text(key), 0, most); }
    bool Boolean(const std::string& key) const { return StoredBoolean(Text(key)); }
    std::optional<double> Known(const std::string& key) const { return NumberIn(Text(key)); }
    int ListLength(const std::string& key) const {
        const std::string list = Text(key);
        return list.empty() ? 0 : static_cast<int>(Split(list, ',').size());
    }
    /// Fills in the values of the list; the others stay 0.
    void List(const std::string& key, std::span<double> values) const {
        const auto fields = Split(Text(key), ',');
        for (std::size_t i = 0; i < values.size() && i < fields.size(); ++i) values[i] = StoredNumber(fields[i]);
    }
    /// One member of each sensor's record.
    template <class Member>
    void SensorList(const std::string& key, CalibrationRun& run, Member member) const {
        std::array<double, maxSensors> values{};
        List(key, values);
        for (std::size_t s = 0; s < SensorCount(run); ++s) member(run.Sensor[s]) = values[s];
    }

  private:
    const ProfileStrings& strings_;
    const char* section_;
};

void ReadState(const ProfileStrings& strings, CalibrationRun& run) {
    constexpr int lastStep = step::resultsLast;
    constexpr int greatest = 32767;
    const Reader center(strings, centerSection);
    ReadSequenceKeys(strings, run);
    run.EnglishUnits = center.Boolean("EnglishUnits");
    run.SensorStand = center.Whole("SensorStand", greatest);
    const Reader device(strings, information);
    run.Manufacturer = static_cast<Make>(device.Whole("Manufacturer", static_cast<int>(Make::Kuab)));
    run.DeviceOwner = device.Text("DeviceOwner");
    run.DeviceSerialNumber = device.Text("DeviceSerialNumber");
    const Reader keys(strings, calibration);
    run.CurrentProcedure = static_cast<Procedure>(keys.Whole("CurrentProcedure", lastProcedure));
    run.CurrentProcStep = keys.Whole("CurrentProcStep", lastStep);
    run.FlagUnacceptedTrial = keys.Boolean("FlagUnacceptedTrial");
    run.SensorRefCalComplete = keys.Boolean("SensorRefCalComplete");
    run.LoadCellCalComplete = keys.Boolean("LoadCellCalComplete");
    run.SensorRelCalComplete = keys.Boolean("SensorRelCalComplete");
    run.OwnerFolder = PathFromText(keys.Text("DeviceOwnerFolder"));
    run.DeviceFolder = PathFromText(keys.Text("DeviceOwnerSNFolder"));
    run.OutputFolder = PathFromText(keys.Text("DeviceOwnerSNDateFolder"));
    if (!run.DeviceFolder.empty()) run.DeviceName = PathText(run.DeviceFolder.filename());
}

/// The length of the list is the trial's number of drops. A file without heights and drops takes them from the set-up
/// if those give the same number.
TrialShape ShapeOf(const ProfileStrings& strings, const CalibrationRun& run, const char* name, std::size_t t) {
    const Reader state(strings, interimState);
    const Reader lists(strings, calibration);
    const int stored =
        std::min(std::max(lists.ListLength(Key(name, t, "RefDropData")), lists.ListLength(Key(name, t, "DropData"))),
                 static_cast<int>(maxDrops));
    TrialShape shape{state.Whole(Key(name, t, "Heights"), static_cast<int>(maxHeights)),
                     state.Whole(Key(name, t, "Drops"), static_cast<int>(maxDrops)),
                     state.Text(Key(name, t, "EnglishUnits")).empty() ? run.EnglishUnits
                                                                      : state.Boolean(Key(name, t, "EnglishUnits"))};
    if (shape.Drops() == stored) return shape;
    for (const int heights : {run.NumberLoadLevels, 4, 3}) {
        if (heights > 0 && stored % heights == 0) return {heights, stored / heights, shape.englishUnits};
    }
    return {1, stored, shape.englishUnits};
}

void ReadInterimState(const ProfileStrings& strings, CalibrationRun& run) {
    constexpr int mostSensorTypes = 1;
    const Reader keys(strings, interimState);
    run.MeasuredUnbalancedZero = keys.Known("MeasuredUnbalancedZero");
    run.MeasuredPlus = keys.Known("MeasuredPlus");
    run.MeasuredMinus = keys.Known("MeasuredMinus");
    // Only a KUAB has a choice. If none was made, it must still be made.
    const int notChosen = run.Manufacturer == Make::Kuab ? -1 : 0;
    const std::string type = keys.Text("SensorType");
    run.SensorType = type.empty() ? notChosen : StoredWhole(type, notChosen, mostSensorTypes);
    run.LoadCellOnly = keys.Boolean("LoadCellOnly");
    run.SimDataLocation = PathFromText(keys.Text("SimDataLocation"));
    const auto procedure = [&](const char* key) { return static_cast<Procedure>(keys.Whole(key, lastProcedure)); };
    run.Trial.procedure = procedure(run.FlagUnacceptedTrial ? "ProcedureOfUnacceptedTrial" : "ProcedureOfDropsInHand");
    run.Trial.wasInterrupted = !run.FlagUnacceptedTrial && run.Trial.procedure != Procedure::None;
    run.Trial.shape = {run.NumberLoadLevels, run.NumberDropsPerLoadLevel, run.EnglishUnits};
    const auto marks = [&](const char* name, std::array<bool, maxDrops>& flags) {
        std::array<double, maxDrops> numbers{};
        keys.List(name, numbers);
        std::transform(numbers.begin(), numbers.end(), flags.begin(), [](double number) { return number != 0; });
    };
    marks("NoiseMarks", run.Trial.DropNoiseFlags);
    marks("RangeMarks", run.Trial.DropRangeFlags);
}

/// The slope itself is stored; its standard error is not.
double StandardErrorOfSlope(const TrialRecord& trial, std::size_t drops) {
    return RegressThroughOrigin(trial.DropData, trial.RefDropData, static_cast<int>(drops)).stdErrSlope;
}

void ReadLoadCell(const ProfileStrings& strings, CalibrationRun& run) {
    const Reader keys(strings, calibration);
    run.LoadCellRefTrials = keys.Whole("LoadCellRefTrials", mostTrials);
    for (std::size_t t = 0; t < Trials(run.LoadCellRefTrials); ++t) {
        TrialRecord& trial = run.LCTrial[t];
        run.LCTrialShape[t] = ShapeOf(strings, run, "LCTrial", t);
        const std::size_t drops = Drops(run.LCTrialShape[t]);
        trial.Gain = keys.Number(Key("LoadCellTrial", t, "Gain"));
        trial.AdjFactor = keys.Number(Key("LoadCellTrial", t, "AdjFactor"));
        keys.List(Key("LCTrial", t, "DropData"), std::span(trial.DropData).first(drops));
        keys.List(Key("LCTrial", t, "RefDropData"), std::span(trial.RefDropData).first(drops));
        trial.StdErrAdjFactor = StandardErrorOfSlope(trial, drops);
    }
    run.NewLoadCellCalibrationCenterDate = keys.Text("NewLoadCellCalibrationCenterDate");
    run.NewLoadCellCalibrationCenterGain = keys.Number("NewLoadCellCalibrationCenterGain");
}

void ReadSummaries(const Reader& keys, CalibrationRun& run) {
    run.RefCalAvg = keys.Number("RefCalAvg");
    run.RefCalChange = keys.Number("RefCalChange");
    run.RefCalStdDev = keys.Number("RefCalStdDev");
    run.RefTrials = keys.Whole("RefTrials", mostTrials);
    for (std::size_t t = 0; t < Trials(run.RefTrials); ++t) {
        run.RefTrial[t].Avg = keys.Number(Key("RefTrial", t, "Avg"));
        run.RefTrial[t].Change = keys.Number(Key("RefTrial", t, "Change"));
        run.RefTrial[t].StdDev = keys.Number(Key("RefTrial", t, "StdDev"));
    }
    run.RelTrials = keys.Whole("RelTrials", mostTrials);
    for (std::size_t t = 0; t < Trials(run.RelTrials); ++t) {
        RelativeTrialSummary& trial = run.RelTrial[t];
        for (std::size_t m = 0; m < maxSets; ++m) {
            trial.SetAvg[m] = keys.Number(Key("RelTrial", t, "SetAvg") + NumberText(m + 1));
            trial.SetStdDev[m] = keys.Number(Key("RelTrial", t, "SetStdDev") + NumberText(m + 1));
        }
        trial.Avg = keys.Number(Key("RelTrial", t, "Avg"));
        trial.StdDev = keys.Number(Key("RelTrial", t, "StdDev"));
        trial.ChiSq = keys.Number(Key("RelTrial", t, "ChiSq"));
    }
}

void ReadSensorRefTrials(const ProfileStrings& strings, CalibrationRun& run) {
    const Reader keys(strings, calibration);
    for (std::size_t t = 0; t < Trials(run.RefTrials); ++t) {
        run.RefTrialShape[t] = ShapeOf(strings, run, "SensorRefTrial", t);
        const std::size_t drops = Drops(run.RefTrialShape[t]);
        keys.SensorList(Key("SensorRefTrial", t, "AdjFactor"), run,
                        [t](auto& sensor) -> double& { return sensor.RefTrial[t].AdjFactor; });
        keys.SensorList(Key("SensorRefTrial", t, "Gain"), run,
                        [t](auto& sensor) -> double& { return sensor.RefTrial[t].Gain; });
        std::array<double, maxDrops> reference{};
        keys.List(Key("SensorRefTrial", t, "RefDropData"), std::span(reference).first(drops));
        for (std::size_t s = 0; s < SensorCount(run); ++s) {
            TrialRecord& trial = run.Sensor[s].RefTrial[t];
            trial.RefDropData = reference;
            keys.List(Key("SensorRefTrial", t, "Sensor") + NumberText(s + 1) + "DropData",
                      std::span(trial.DropData).first(drops));
            trial.StdErrAdjFactor = StandardErrorOfSlope(trial, drops);
        }
    }
}

void ReadSensorRelTrials(const Reader& keys, CalibrationRun& run) {
    for (std::size_t t = 0; t < Trials(run.RelTrials); ++t) {
        const auto list = [&](const char* name, double RelativeTrialRecord::*member) {
            keys.SensorList(Key("SensorRelTrial", t, name), run,
                            [=](auto& sensor) -> double& { return sensor.RelTrial[t].*member; });
        };
        list("AdjFactor", &RelativeTrialRecord::AdjFactor);
        list("Average", &RelativeTrialRecord::Average);
        list("Gain", &RelativeTrialRecord::Gain);
        list("StdDev", &RelativeTrialRecord::StdDev);
        std::array<double, maxSensors> positions{};
        keys.List(Key("SensorRelTrial", t, "Position"), positions);
        for (std::size_t s = 0; s < SensorCount(run); ++s) {
            RelativeTrialRecord& trial = run.Sensor[s].RelTrial[t];
            trial.Position = StoredWhole(NumberText(positions[s]), 0, static_cast<int>(maxSensors));
            keys.List(Key("SensorRelTrial", t, "Sensor") + NumberText(s + 1) + "DropData",
                      std::span(trial.DropData).first(storedRelativeDrops));
        }
    }
}

}  // namespace

void SetRunKeys(ProfileStrings& strings, const CalibrationRun& run, const std::string& comment, DateTime today) {
    Writer keys(strings, calibration);
    SetLoadCell(keys, run, today);
    SetSummaries(keys, run);
    SetSensorGains(keys, run, today);
    SetSensorRefTrials(keys, run);
    SetSensorRelTrials(keys, run);
    keys.Text("CalibrationComment", comment);
    SetState(strings, run);
}

void ReadRunKeys(const ProfileStrings& strings, CalibrationRun& run) {
    ReadState(strings, run);
    ReadInterimState(strings, run);
    const Reader keys(strings, calibration);
    ReadLoadCell(strings, run);
    ReadSummaries(keys, run);
    keys.SensorList("SensorInterimGain", run, [](auto& sensor) -> double& { return sensor.InterimGain; });
    keys.SensorList("SensorFinalGain", run, [](auto& sensor) -> double& { return sensor.FinalGain; });
    ReadSensorRefTrials(strings, run);
    ReadSensorRelTrials(keys, run);
}

void SetStateKeys(ProfileStrings& strings, const CalibrationRun& run, const CenterConfig& center) {
    SetInterimState(strings, run, center);
    strings.Set(interimState, endMark, BooleanText(true));
}

void ReadDailyDeviations(const ProfileStrings& strings, CenterConfig& center) {
    const Reader keys(strings, interimState);
    const auto take = [&](const char* key, double& member) { member = keys.Known(key).value_or(member); };
    take("AccelDailyCalibration+1GStdDev", center.AccelDailyCalibrationPlus1GStdDev);
    take("AccelDailyCalibration-1GStdDev", center.AccelDailyCalibrationMinus1GStdDev);
    take("AccelDailyCalibration+1GFlipStdDev", center.AccelDailyCalibrationPlus1GFlipStdDev);
}

void RemoveStateKeys(ProfileStrings& strings) {
    strings.RemoveSection(interimState);
}

bool HasEndMark(const ProfileStrings& strings) {
    return StoredBoolean(strings.Get(interimState, endMark));
}

std::string ReadCommentKey(const ProfileStrings& strings) {
    return Reader(strings, calibration).Text("CalibrationComment");
}

}  // namespace bellmark
