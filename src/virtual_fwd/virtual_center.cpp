#include "virtual_fwd/virtual_center.h"

#include <algorithm>
#include <cmath>

#include "pddx/pddx_file.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "reference/accel_analysis.h"
#include "reference/accel_drop_file.h"
#include "reference/drop_file.h"
#include "reference/load_analysis.h"
#include "run/accel_adjustment.h"
#include "run/calibration_run.h"
#include "run/center_keys.h"
#include "run/paths.h"
#include "virtual_fwd/live_drops.h"
#include "virtual_fwd/monthly_trials.h"

namespace bellmark::virtual_fwd {

namespace {

constexpr std::array<double, 4> targetPounds{6000, 9000, 12000, 16000};
constexpr double dropToDropShare = 0.006;  ///< standard deviation of the mass's drops about their target
constexpr std::array<double, 4> targetMicrons{250, 400, 600, 900};
constexpr std::uint64_t firstFWDSeed = 0x9E3779B97F4A7C15;    ///< unlike any seed that a user chooses
constexpr std::uint64_t firstAccelSeed = 0xC2B2AE3D27D4EB4F;  ///< unlike the FWD's as well
constexpr std::uint64_t firstSensorSeed = 0x165667B19E3779F9;
constexpr std::uint64_t firstReferenceSeed = 0x27D4EB2F165667C5;
constexpr std::uint64_t firstRelativeSeed = 0x85EBCA77C2B2AE63;
constexpr std::uint64_t firstMonthlySeed = 0x2545F4914F6CDD1D;

/// The keys of a stored run that a review needs to begin.
std::string InterimText(const CalibrationRun& run, const CenterConfig& center, const VirtualFWD& fwd, const Path& file,
                        DateTime now) {
    PDDXFile device;
    SetDeviceKeys(device, fwd, now);
    std::string text;
    device.PDDX_Output(text);
    ProfileStrings strings(text);
    SetCenterKeys(strings, center, run.EnglishUnits, file, now);
    strings.Set("Device Information", "DeviceOwner", run.DeviceOwner);
    strings.Set("Device Information", "Manufacturer", NumberText(static_cast<int>(run.Manufacturer)));
    strings.Set("FWD Calibration Center", "NumberLoadLevels", NumberText(run.NumberLoadLevels));
    strings.Set("FWD Calibration Center", "NumberDropsPerLoadLevel", NumberText(run.NumberDropsPerLoadLevel));
    return strings.Text();
}

std::string TemplateText(const std::vector<float>& volts) {
    std::string text;
    for (const float value : volts) text += NumberText(value) + "\r\n";
    return text;
}

/// Writes the drops of one reference instrument into a folder.
class DropWriter {
  public:
    DropWriter(FileSystem& files, Path folder, const CenterOptions& options, CalibrationRun run,
               const CenterConfig& center, DateTime now)
        : files_(files),
          folder_(std::move(folder)),
          options_(options),
          run_(std::move(run)),
          center_(center),
          now_(now) {}

    void WriteLoadDrop(const DropNumber& number, const std::vector<float>& volts) {
        run_.LoadCellRefTrials = number.trial - 1;
        if (options_.templateForm) return WriteTemplate("LoadCell" + NumberText(number.trial), number, volts);
        DropRecord drop = Captured(number, volts);
        AnalyzeLoadSamples(drop, center_, run_.EnglishUnits);
        ReplaceTextFile(files_, folder_ / LoadDropFileName(run_), LoadDropFileText(drop, run_, center_, now_));
    }

    void WriteAccelDrop(const DropNumber& number, const std::vector<float>& burst, const std::vector<float>& volts) {
        run_.RefTrials = number.trial - 1;
        if (options_.templateForm) {
            // There are names for two trials: later trials read the files of the first two again.
            if (number.trial <= 2) WriteTemplate("Ref" + NumberText(number.trial), number, volts);
            return;
        }
        DropRecord drop = Captured(number, burst);
        drop.BurstTime = now_;
        MeasureBurst(drop);
        CheckBurst(drop, center_);
        drop.TriggerTime = now_;
        SetSamples(drop, volts);
        AnalyzeAccelSamples(drop, center_);
        ReplaceTextFile(files_, folder_ / AccelDropFileName(run_), AccelDropFileText(drop, run_, center_, now_));
    }

  private:
    static void SetSamples(DropRecord& drop, const std::vector<float>& volts) {
        std::copy(volts.begin(), volts.end(), drop.RawVolts.begin());
        drop.NumSamples = static_cast<int>(volts.size());
    }

    DropRecord Captured(const DropNumber& number, const std::vector<float>& volts) {
        run_.CurrentHeightIndex = number.height;
        run_.CurrentDropIndex = number.drop;
        DropRecord drop;
        SetSamples(drop, volts);
        return drop;
    }

    void WriteTemplate(const std::string& baseName, const DropNumber& number, const std::vector<float>& volts) {
        const int index = (number.height - 1) * options_.drops + number.drop - 1;
        files_.ReplaceFile(folder_ / (baseName + '_' + Format(index, "000") + ".txt"), TemplateText(volts));
    }

    FileSystem& files_;
    Path folder_;
    const CenterOptions& options_;
    CalibrationRun run_;
    const CenterConfig& center_;
    DateTime now_;
};

/// All drops of the given number of trials, one after the other.
template <class Action>
void ForEachDrop(const CenterOptions& options, int trials, const Action& act) {
    for (int trial = 1; trial <= trials; ++trial) {
        for (int height = 1; height <= options.heights; ++height) {
            for (int drop = 1; drop <= options.drops; ++drop) act(DropNumber{trial, height, drop});
        }
    }
}

std::string TruePeakLine(const DropNumber& number, const std::string& peak, const std::string& inOtherUnits) {
    return NumberText(number.trial) + '\t' + NumberText(number.height) + '\t' + NumberText(number.drop) + '\t' + peak +
           '\t' + inOtherUnits + "\r\n";
}

/// The drops on the reference load cell; returns their true peaks and adds them to the lists.
std::map<DropNumber, double> WriteLoadDrops(DropWriter& writer, const CenterOptions& options, std::string& lines,
                                            LiveDrops& live) {
    const LoadCellModel cell = VirtualLoadCell();
    Random random(options.seed);
    std::map<DropNumber, double> truePeaks;
    lines += "Trial\tHeight\tDrop\tPeak (pounds)\tPeak (kN)\r\n";
    ForEachDrop(options, options.trials, [&](const DropNumber& number) {
        const PulseModel pulse = DrawPulse(options, number, random);
        writer.WriteLoadDrop(number, CaptureVolts(cell, pulse, random));
        const double pounds = ForceAt(pulse, pulse.startSeconds + pulse.widthSeconds / 2);
        lines += TruePeakLine(number, Format(pounds, "0.00"), Format(pounds * kilonewtonsPerPound, "0.0000"));
        truePeaks[number] = pounds;
        live.loadCell[number] = pulse;
    });
    return truePeaks;
}

using StandTrials = std::map<int, std::vector<StandDrop>>;

/// The drops on the reference accelerometer; returns their true values.
StandTrials WriteAccelDrops(DropWriter& writer, const CenterOptions& options, const CenterConfig& center,
                            std::string& lines, LiveDrops& live) {
    Random random(options.seed + firstAccelSeed);
    StandTrials trials;
    lines += "Reference trial\tHeight\tDrop\tPeak (microns)\tPeak (mils)\r\n";
    ForEachDrop(options, options.referenceTrials, [&](const DropNumber& number) {
        const AccelPulseModel pulse = DrawAccelPulse(options, number, random);
        const std::vector<float> burst = CaptureAccelBurst(center, pulse, random);
        writer.WriteAccelDrop(number, burst, CaptureAccelVolts(center, pulse, random));
        live.accelerometer[number] = pulse;
        const StandDrop& drop = trials[number.trial].emplace_back(StandDropOf(number, pulse));
        lines += TruePeakLine(number, Format(drop.microns, "0.00"), Format(drop.microns / micronsPerMil, "0.0000"));
    });
    return trials;
}

/// The files of one imaginary FWD.
class FWDWriter {
  public:
    FWDWriter(FileSystem& files, Path folder, const CenterOptions& options, const VirtualFWD& fwd, DateTime now)
        : files_(files), folder_(std::move(folder)), options_(options), fwd_(fwd), now_(now) {
        files_.CreateFolder(folder_);
    }

    void WriteLoadCell(const std::map<DropNumber, double>& truePeaks, Random& random) {
        Write("Configuration", ConfigurationText(fwd_, now_));
        std::map<int, std::vector<DropReading>> trials;
        for (const auto& [number, pounds] : truePeaks) {
            // Only the reference load cell is connected the wrong way round, not the FWD's own.
            trials[number.trial].push_back(ReadDrop(fwd_, number, std::abs(pounds), random));
        }
        for (const auto& [trial, drops] : trials) {
            const std::string name = "Trial" + NumberText(trial);
            Write(name, TrialText(fwd_, {name, "Load cell calibration, trial " + NumberText(trial), drops}, now_));
        }
    }

    void WriteSensors(const StandTrials& referenceTrials) {
        const SensorOptions& asked = options_.fwd.sensors;
        Random reference(options_.seed + firstReferenceSeed);
        for (const auto& [trial, drops] : referenceTrials) {
            Write("Reference" + NumberText(trial), ReferenceTrialText(fwd_, asked, trial, drops, reference, now_));
        }
        Random relative(options_.seed + firstRelativeSeed);
        for (int trial = 1; trial <= asked.relativeTrials; ++trial) {
            const std::vector<StandDrop> drops = DrawRelativeDrops(options_, trial, relative);
            Write("Relative" + NumberText(trial), RelativeTrialText(fwd_, asked, trial, drops, relative, now_));
        }
        Random monthly(options_.seed + firstMonthlySeed);
        for (int trial = 1; trial <= asked.monthlyTrials; ++trial) {
            const std::vector<StandDrop> drops = DrawMonthlyDrops(fwd_, asked, trial, monthly);
            Write("Monthly" + NumberText(trial), MonthlyTrialText(fwd_, asked, trial, drops, monthly, now_));
        }
    }

    void WriteTrueGains() {
        const SensorOptions& asked = options_.fwd.sensors;
        const bool isMonthly = asked.monthlyTrials > 0;
        std::string text = TrueGainsText(fwd_);
        if (options_.referenceTrials > 0 || asked.relativeTrials > 0 || isMonthly) text += SensorGainsText(fwd_, asked);
        if (isMonthly) text += MonthlyGainsText(fwd_, asked);
        ReplaceTextFile(files_, folder_ / "TrueGains.txt", text);
    }

  private:
    void Write(const std::string& name, const std::string& text) {
        ReplaceTextFile(files_, folder_ / (name + ".ddx"), text);
    }

    FileSystem& files_;
    Path folder_;
    const CenterOptions& options_;
    const VirtualFWD& fwd_;
    DateTime now_;
};

}  // namespace

LoadCellModel VirtualLoadCell() {
    const CenterConfig center = VirtualCenter(false, ZeroDate());
    return {center.ReferenceLoadCellCalibrationCoefficients, 12.4, 1 / center.ShuntCalibrationMultiplier};
}

AccelPulseModel DrawAccelPulse(const CenterOptions& options, const DropNumber& number, Random& random) {
    AccelPulseModel pulse;
    pulse.peakMicrons =
        targetMicrons[static_cast<std::size_t>(number.height - 1)] * (1 + dropToDropShare * Gaussian(random));
    pulse.startSeconds = 0.24 + 0.02 * random.Next();
    pulse.widthSeconds = 0.025 + 0.01 * random.Next();
    pulse.noiseVolts = options.accelNoiseVolts;
    pulse.driftVoltsPerSecond = options.accelDriftVoltsPerSecond * (2 * random.Next() - 1);
    if (const auto spoiled = options.spoiledReference.find(number); spoiled != options.spoiledReference.end())
        pulse.spoil = spoiled->second;
    return pulse;
}

StandDrop StandDropOf(const DropNumber& number, const AccelPulseModel& pulse) {
    const auto height = static_cast<std::size_t>(number.height - 1);
    const double microns = TruePeakMicrons(pulse);
    return {number, microns, targetPounds[height] / targetMicrons[height] * microns};
}

std::vector<StandDrop> DrawRelativeDrops(const CenterOptions& options, int trial, Random& random) {
    constexpr int drops = 40;
    // Repeated drops of one height scatter less than those of a trial that goes through the heights.
    constexpr double repeatShare = 0.002;
    constexpr double warmingShare = 0.01;
    const auto height = static_cast<std::size_t>(options.heights - 1);
    const double middle = targetMicrons[height] * (1 + dropToDropShare * Gaussian(random));
    std::vector<StandDrop> list;
    for (int drop = 1; drop <= drops; ++drop) {
        const double warming = warmingShare * (static_cast<double>(drop - 1) / (drops - 1) - 0.5);
        const double microns = middle * (1 + warming) * (1 + repeatShare * Gaussian(random));
        list.push_back(
            {{trial, options.heights, drop}, microns, targetPounds[height] / targetMicrons[height] * microns});
    }
    return list;
}

VirtualFWD MakeFWD(const CenterOptions& options, Random& random) {
    const FWDOptions& asked = options.fwd;
    // Rounded so that TrueGains.txt holds the gain in full.
    const double drawnGain = Round(0.985 + 0.03 * random.Next(), 5);
    VirtualFWD fwd;
    fwd.make = asked.make;
    fwd.serialNumber = "8002-101";
    fwd.loadCell = {Round(asked.initialGain, 4), asked.trueGain.value_or(drawnGain), asked.scatter, asked.offsetPounds};
    fwd.loads = asked.loads ? *asked.loads : LoadFormNamed(options.metric ? asked.make.metricLoads : "lbf").value();
    fwd.loads.resolution = asked.loadResolution.value_or(fwd.loads.resolution);
    fwd.deflections =
        asked.deflections ? *asked.deflections : DeflectionFormNamed(options.metric ? "microns" : "mils").value();
    if (fwd.deflections.name == "microns") fwd.deflections.resolution = asked.make.micronResolution;
    fwd.deflections.resolution = asked.deflectionResolution.value_or(fwd.deflections.resolution);
    Random sensorRandom(options.seed + firstSensorSeed);
    fwd.sensors = MakeSensors(asked.make, asked.sensors, sensorRandom);
    fwd.badReadings = asked.badReadings;
    return fwd;
}

PulseModel DrawPulse(const CenterOptions& options, const DropNumber& number, Random& random) {
    PulseModel pulse;
    pulse.peakPounds =
        targetPounds[static_cast<std::size_t>(number.height - 1)] * (1 + dropToDropShare * Gaussian(random));
    pulse.startSeconds = 0.24 + 0.02 * random.Next();
    pulse.widthSeconds = 0.025 + 0.005 * random.Next();
    pulse.noisePounds = options.noisePounds;
    pulse.driftPoundsPerSecond = 8 * (random.Next() - 0.5);
    pulse.humPounds = options.humPounds;
    if (const auto spoiled = options.spoiled.find(number); spoiled != options.spoiled.end())
        pulse.spoil = spoiled->second;
    return pulse;
}

CenterConfig VirtualCenter(bool metric, DateTime today) {
    CenterConfig center;
    center.PDDXVersionNumber = "1.0";
    center.DelimiterSymbol = ",";
    center.DecimalSymbol = ".";
    center.CalibrationCenter = "Sample Calibration Center";
    center.CalCenterIDCode = 7;
    center.CalibrationCenterOperator = "A. Operator";
    center.SignalConditionerSerialNumber = "SC-1042";
    center.AtoDBoardSerialNumber = "none";
    center.ReferenceLoadCellName = "RLC-07";
    center.ReferenceLoadCellCalibrationDate = today - std::chrono::days(120);
    center.ReferenceLoadCellExcitationVolts = 10;
    center.ReferenceLoadCellGain = "5.00";
    center.UseBVoltages = true;
    center.ReferenceLoadCellPlusVoltage = 3.742;
    center.ReferenceLoadCellMinusVoltage = -3.738;
    center.ReferenceLoadCellUnbalancedZero = 1.218;
    center.ReferenceLoadCellUnits = metric ? "kN" : poundForce;
    center.ReferenceLoadCellCalibrationCoefficients = {4012.37, 1.8312, -0.26471, 0.0118, -0.00049};
    center.ReferenceLoadCellSensitivity = 800;
    if (metric) {
        for (double& coefficient : center.ReferenceLoadCellCalibrationCoefficients) coefficient *= kilonewtonsPerPound;
        center.ReferenceLoadCellSensitivity *= kilonewtonsPerPound;
    }
    center.ShuntCalibrationMultiplier = 1.002;
    center.AccelerometerSerialNumber = "ACC-311";
    center.AccelerometerModelNumber = "A5-CAP";
    center.AccelReferenceCalibrationDate = today - std::chrono::days(200);
    // The signal conditioner removes the sensor's bias: turned over, its voltage is negative.
    center.AccelRefPlus1GDC = 0.4221;
    center.AccelRefMinus1GDC = -0.4205;
    center.AccelRefCalibrationCoefficients = {-0.0019, 2.3736, 0.00012, -0.00001};
    center.AccelDailyCalibrationDate = DayOf(today);
    center.AccelDailyCalibrationTime = ZeroDate() + TimeOfDay(today);
    center.AccelDailyCalibrationTemperatureUnit = "Celsius";
    center.AccelDailyCalibrationTemp = 21.5;
    center.AccelExcitationVolts = 10;
    center.AccelGain = "1.00";
    center.AccelNewSlopeFactor = 0.4213;
    center.AccelDailyCalibrationPlus1GVoltage = 0.4213;
    center.AccelDailyCalibrationMinus1GVoltage = -0.4213;
    center.AccelDailyCalibrationPlus1GFlipVoltage = 0.4212;
    center.AccelSensitivity = 0.06;
    center.Notes[0] = "Imaginary equipment";
    return center;
}

void WriteCenter(FileSystem& files, const Path& programFolder, const CenterOptions& options, DateTime now) {
    const CenterConfig center = VirtualCenter(options.metric, now);
    // The FWD has its own random numbers, so that other readings leave the reference's signals unchanged.
    Random fwdRandom(options.seed + firstFWDSeed);
    const VirtualFWD fwd = MakeFWD(options, fwdRandom);
    const Path review = programFolder / "Review";
    files.CreateFolder(review);

    CalibrationRun run;
    run.DeviceOwner = "Sample Road Agency";
    run.Manufacturer = fwd.make.make;
    run.DeviceName = fwd.make.designation;
    run.DeviceSerialNumber = fwd.serialNumber;
    run.EnglishUnits = !options.metric;
    run.NumberLoadLevels = options.heights;
    run.NumberDropsPerLoadLevel = options.drops;

    for (const Path& folder : {programFolder, review}) {
        ProfileStrings configuration;
        SetCenterKeys(configuration, center, run.EnglishUnits, folder / centerConfigName, now);
        ReplaceTextFile(files, folder / centerConfigName, configuration.Text());
    }
    ReplaceTextFile(files, review / interimCopyName, InterimText(run, center, fwd, review / interimCopyName, now));

    CenterConfig today = center;
    ComputeAccelAdjustment(today);
    DropWriter writer(files, review, options, run, today, now);
    std::string lines;
    LiveDrops live{options.seed, LiveDrops().secondsToDrop, options.noisePounds, options.accelNoiseVolts, {}, {}};
    const auto truePeaks = WriteLoadDrops(writer, options, lines, live);
    const StandTrials standTrials = WriteAccelDrops(writer, options, today, lines, live);
    if (options.live) ReplaceTextFile(files, programFolder / liveDropsName, LiveDropsText(live));
    ReplaceTextFile(files, review / "TruePeaks.txt", lines);
    FWDWriter fwdWriter(files, programFolder / "FWD", options, fwd, now);
    fwdWriter.WriteLoadCell(truePeaks, fwdRandom);
    fwdWriter.WriteSensors(standTrials);
    fwdWriter.WriteTrueGains();
}

}  // namespace bellmark::virtual_fwd
