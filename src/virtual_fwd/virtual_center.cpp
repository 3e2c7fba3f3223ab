#include "virtual_fwd/virtual_center.h"

#include <algorithm>

#include "app/center_keys.h"
#include "app/paths.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "reference/drop_file.h"
#include "reference/load_analysis.h"

namespace bellmark::virtual_fwd {

namespace {

constexpr std::array<double, 4> targetPounds{6000, 9000, 12000, 16000};
constexpr double dropToDropShare = 0.006;  ///< standard deviation of the mass's drops about their target

/// What the FWD tells of itself: its own configuration, as a document.
void SetFWDKeys(ProfileStrings& strings, const CalibrationRun& run) {
    strings.Set("Device Information", "DeviceDesignationName", run.DeviceName);
    strings.Set("Device Information", "DeviceModelNumber", "8002");
    strings.Set("Device Information", "DeviceSerialNumber", run.DeviceSerialNumber);
    strings.Set("Device Information", "LoadCellSerialNumber", "LC-8002");
    strings.Set("Device Information", "SensorSerialNumbers", "D1, D2, D3, D4, D5, D6, D7, D8, D9");
    strings.Set("Device Configuration", "NumberOfDeflectionSensors", "9");
    strings.Set("Device Calibration", "LoadCellCalibrationCenterGain", "1.0000");
    strings.Set("Device Calibration", "SensorCalibrationCenterGain",
                "1.0000, 1.0000, 1.0000, 1.0000, 1.0000, 1.0000, 1.0000, 1.0000, 1.0000");
}

/// What of a stored run a review needs to begin.
std::string InterimText(const CalibrationRun& run, const CenterConfig& center, const Path& file, DateTime now) {
    ProfileStrings strings;
    SetCenterKeys(strings, center, run.EnglishUnits, file, now);
    SetFWDKeys(strings, run);
    strings.Set("Device Information", "DeviceOwner", run.DeviceOwner);
    strings.Set("Device Information", "Manufacturer", NumberText(static_cast<int>(run.Manufacturer)));
    strings.Set("FWD Calibration Center", "NumberLoadLevels", NumberText(run.NumberLoadLevels));
    strings.Set("FWD Calibration Center", "NumberDropsPerLoadLevel", NumberText(run.NumberDropsPerLoadLevel));
    return strings.Text();
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

std::string TemplateText(const std::vector<float>& volts) {
    std::string text;
    for (const float value : volts) text += NumberText(value) + "\r\n";
    return text;
}

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

    void Write(const DropNumber& number, const std::vector<float>& volts) {
        run_.LoadCellRefTrials = number.trial - 1;
        run_.CurrentHeightIndex = number.height;
        run_.CurrentDropIndex = number.drop;
        if (options_.templateForm) {
            const int index = (number.height - 1) * options_.drops + number.drop - 1;
            const std::string name = "LoadCell" + NumberText(number.trial) + '_' + Format(index, "000") + ".txt";
            files_.ReplaceFile(folder_ / name, TemplateText(volts));
            return;
        }
        DropRecord drop;
        std::copy(volts.begin(), volts.end(), drop.RawVolts.begin());
        drop.NumSamples = static_cast<int>(volts.size());
        AnalyzeLoadSamples(drop, center_, run_.EnglishUnits);
        ReplaceTextFile(files_, folder_ / LoadDropFileName(run_), LoadDropFileText(drop, run_, center_, now_));
    }

  private:
    FileSystem& files_;
    Path folder_;
    const CenterOptions& options_;
    CalibrationRun run_;
    const CenterConfig& center_;
    DateTime now_;
};

std::string TruePeakLine(const DropNumber& number, const PulseModel& pulse) {
    const double pounds = ForceAt(pulse, pulse.startSeconds + pulse.widthSeconds / 2);
    return NumberText(number.trial) + '\t' + NumberText(number.height) + '\t' + NumberText(number.drop) + '\t' +
           Format(pounds, "0.00") + '\t' + Format(pounds * kilonewtonsPerPound, "0.0000") + "\r\n";
}

}  // namespace

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
    center.AccelRefPlus1GDC = 2.9713;
    center.AccelRefMinus1GDC = 2.1287;
    center.AccelRefCalibrationCoefficients = {-6.0527, 2.3734, 0.00012, -0.00001};
    center.AccelDailyCalibrationDate = DayOf(today);
    center.AccelDailyCalibrationTime = ZeroDate() + TimeOfDay(today);
    center.AccelDailyCalibrationTemperatureUnit = "Celsius";
    center.AccelDailyCalibrationTemp = 21.5;
    center.AccelExcitationVolts = 10;
    center.AccelGain = "1.00";
    center.AccelNewSlopeFactor = 0.4213;
    center.AccelDailyCalibrationPlus1GVoltage = 2.9705;
    center.AccelDailyCalibrationMinus1GVoltage = 2.1279;
    center.AccelDailyCalibrationPlus1GFlipVoltage = 2.9704;
    center.AccelSensitivity = 0.35;
    center.Notes[0] = "Imaginary equipment";
    return center;
}

void WriteCenter(FileSystem& files, const Path& programFolder, const CenterOptions& options, DateTime now) {
    const CenterConfig center = VirtualCenter(options.metric, now);
    const Path review = programFolder / "Review";
    files.CreateFolder(review);

    CalibrationRun run;
    run.DeviceOwner = "Sample Road Agency";
    run.DeviceName = "FWD-101";
    run.DeviceSerialNumber = "8002-101";
    run.EnglishUnits = !options.metric;
    run.NumberLoadLevels = options.heights;
    run.NumberDropsPerLoadLevel = options.drops;

    for (const Path& folder : {programFolder, review}) {
        ProfileStrings configuration;
        SetCenterKeys(configuration, center, run.EnglishUnits, folder / centerConfigName, now);
        ReplaceTextFile(files, folder / centerConfigName, configuration.Text());
    }
    ReplaceTextFile(files, review / interimCopyName, InterimText(run, center, review / interimCopyName, now));
    ProfileStrings fwd;
    SetFWDKeys(fwd, run);
    files.CreateFolder(programFolder / "FWD");
    ReplaceTextFile(files, programFolder / "FWD" / "Configuration.ddx", fwd.Text());

    // The conditioner's gain is a little low today; the shunt multiplier makes up for it.
    const LoadCellModel cell{VirtualCenter(false, now).ReferenceLoadCellCalibrationCoefficients, 12.4,
                             1 / center.ShuntCalibrationMultiplier};
    DropWriter writer(files, review, options, run, center, now);
    Random random(options.seed);
    std::string truePeaks = "Trial\tHeight\tDrop\tPeak (pounds)\tPeak (kN)\r\n";
    for (int trial = 1; trial <= options.trials; ++trial) {
        for (int height = 1; height <= options.heights; ++height) {
            for (int drop = 1; drop <= options.drops; ++drop) {
                const DropNumber number{trial, height, drop};
                const PulseModel pulse = DrawPulse(options, number, random);
                writer.Write(number, CaptureVolts(cell, pulse, random));
                truePeaks += TruePeakLine(number, pulse);
            }
        }
    }
    ReplaceTextFile(files, review / "TruePeaks.txt", truePeaks);
}

}  // namespace bellmark::virtual_fwd
