// How close a calibration of the deflection sensors comes to their true gains, starting from the volts of the reference
// accelerometer: two reference trials, then two relative trials.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iostream>

#include "analysis/analysis.h"
#include "platform/numbers.h"
#include "reference/accel_analysis.h"
#include "run/accel_adjustment.h"
#include "virtual_fwd/virtual_center.h"

namespace bellmark::virtual_fwd {
namespace {

constexpr int seeds = 50;
constexpr int trials = 2;
constexpr double mostStdError = 0.002;  // of a slope (AASHTO R32)

CenterConfig Today() {
    CenterConfig center = VirtualCenter(false, MakeDateTime(2012, 3, 9));
    ComputeAccelAdjustment(center);
    return center;
}

/// The results of a calibration of the sensors in mils.
class SensorCalibration {
  public:
    explicit SensorCalibration(const CenterOptions& options)
        : options_(options),
          fwdRandom_(options.seed),
          fwd_(MakeFWD(options, fwdRandom_)),
          interimGains(fwd_.sensors.size()),
          finalGains(fwd_.sensors.size()) {
        Random accelRandom(options.seed + 1'000'000);
        for (int trial = 1; trial <= trials; ++trial) Reference(trial, accelRandom);
        for (int trial = 1; trial <= trials; ++trial) Relative(trial);
    }

    /// Error of a gain, as a share of the true one.
    double Error(const std::vector<double>& gains, std::size_t sensor) const {
        return gains[sensor] / fwd_.sensors[sensor].trueGain - 1;
    }

  private:
    CenterOptions options_;
    Random fwdRandom_;
    VirtualFWD fwd_;

  public:
    std::vector<double> interimGains;             ///< means of the reference trials
    std::vector<double> finalGains;               ///< means of the relative trials
    std::vector<std::vector<double>> stdErrors;   ///< of the slopes, by reference trial and sensor
    std::vector<std::vector<double>> trialGains;  ///< by reference trial and sensor
    double worstRelativeError = 0;                ///< largest standard error of a relative trial, microns

  private:
    double PeakMils(const AccelPulseModel& pulse, Random& random) {
        static const CenterConfig center = Today();
        static DropRecord drop;
        const auto volts = CaptureAccelVolts(center, pulse, random);
        std::copy(volts.begin(), volts.end(), drop.RawVolts.begin());
        drop.NumSamples = static_cast<int>(volts.size());
        AnalyzeAccelSamples(drop, center);
        return drop.PeakEnglish;
    }

    /// The sensor's readings of a trial in its file, mils.
    std::vector<double> Written(const std::vector<DropReading>& readings, std::size_t sensor) const {
        std::vector<double> mils;
        for (const DropReading& reading : readings) {
            mils.push_back(
                ToResolution(reading.microns[sensor] * fwd_.deflections.unitsPerMicron, fwd_.deflections.resolution));
        }
        return mils;
    }

    std::vector<DropReading> Read(int trial, const std::vector<StandDrop>& drops) {
        return ReadStandDrops(fwd_, options_.fwd.sensors.standEffect, trial, drops, fwdRandom_);
    }

    void Reference(int trial, Random& random) {
        std::vector<StandDrop> drops;
        std::vector<double> peaks;
        for (int height = 1; height <= options_.heights; ++height) {
            for (int drop = 1; drop <= options_.drops; ++drop) {
                const DropNumber number{trial, height, drop};
                const AccelPulseModel pulse = DrawAccelPulse(options_, number, random);
                drops.push_back(StandDropOf(number, pulse));
                peaks.push_back(PeakMils(pulse, random));
            }
        }
        const auto readings = Read(trial, drops);
        stdErrors.emplace_back();
        trialGains.emplace_back();
        for (std::size_t sensor = 0; sensor < fwd_.sensors.size(); ++sensor) {
            const auto fit = RegressThroughOrigin(Written(readings, sensor), peaks, static_cast<int>(peaks.size()));
            stdErrors.back().push_back(fit.stdErrSlope);
            trialGains.back().push_back(fit.slope * fwd_.sensors[sensor].initialGain);
            interimGains[sensor] += trialGains.back().back() / trials;
        }
    }

    /// Gains in proportion to the mean of all sensors divided by that of each; readings taken with the interim gains.
    void Relative(int trial) {
        const auto readings = Read(trial, DrawRelativeDrops(options_, trial, fwdRandom_));
        std::vector<std::vector<double>> mils;
        std::vector<double> means;
        double grandMean = 0;
        for (std::size_t sensor = 0; sensor < fwd_.sensors.size(); ++sensor) {
            auto& list = mils.emplace_back(Written(readings, sensor));
            double& mean = means.emplace_back(0);
            for (double& reading : list) {
                reading = Round(reading * interimGains[sensor] / fwd_.sensors[sensor].initialGain, 4);
                mean += reading / static_cast<double>(list.size());
            }
            grandMean += mean / static_cast<double>(fwd_.sensors.size());
        }
        for (std::size_t sensor = 0; sensor < means.size(); ++sensor)
            finalGains[sensor] += interimGains[sensor] * grandMean / means[sensor] / trials;
        worstRelativeError = std::max(worstRelativeError, StandardError(mils, means, grandMean));
    }

    /// Scatter that neither sensor nor set of five drops explains, microns.
    static double StandardError(const std::vector<std::vector<double>>& mils, const std::vector<double>& means,
                                double grandMean) {
        constexpr std::size_t setLength = 5;
        const std::size_t sensors = mils.size();
        const std::size_t drops = mils.front().size();
        double squares = 0;
        for (std::size_t first = 0; first < drops; first += setLength) {
            double setMean = 0;
            for (const auto& list : mils) {
                for (std::size_t drop = first; drop < first + setLength; ++drop)
                    setMean += list[drop] / static_cast<double>(setLength * sensors);
            }
            for (std::size_t sensor = 0; sensor < sensors; ++sensor) {
                for (std::size_t drop = first; drop < first + setLength; ++drop)
                    squares += std::pow(mils[sensor][drop] - means[sensor] - setMean + grandMean, 2);
            }
        }
        const std::size_t freedom = drops * sensors - 1 - (drops / setLength - 1) - (sensors - 1);
        return micronsPerMil * std::sqrt(squares / static_cast<double>(freedom));
    }
};

/// The calibrations of the seeds 1 to 50, made once for all tests.
const std::vector<SensorCalibration>& Calibrations() {
    static const auto calibrations = [] {
        std::vector<SensorCalibration> list;
        CenterOptions options;
        for (options.seed = 1; options.seed <= seeds; ++options.seed) list.emplace_back(options);
        return list;
    }();
    return calibrations;
}

struct Errors {
    double mean = 0;    ///< with its sign
    double amount = 0;  ///< mean without signs
    double worst = 0;
};

/// Errors of all sensors of all seeds; prints them in percent.
Errors ErrorsOf(std::vector<double> SensorCalibration::*gains, const char* what) {
    Errors errors;
    for (const SensorCalibration& calibration : Calibrations()) {
        const std::size_t sensors = (calibration.*gains).size();
        for (std::size_t sensor = 0; sensor < sensors; ++sensor) {
            const double error = calibration.Error(calibration.*gains, sensor);
            errors.mean += error / static_cast<double>(seeds * sensors);
            errors.amount += std::abs(error) / static_cast<double>(seeds * sensors);
            errors.worst = std::max(errors.worst, std::abs(error));
        }
    }
    std::cout << what << ", " << seeds << " calibrations of 9 sensors: mean error of the gain " << 100 * errors.mean
              << " %, mean amount " << 100 * errors.amount << " %, worst " << 100 * errors.worst << " %\n";
    return errors;
}

TEST(SensorAccuracy, TwoReferenceTrialsFindTheGains) {
    const Errors errors = ErrorsOf(&SensorCalibration::interimGains, "two reference trials");
    EXPECT_LE(errors.amount, 0.0005);
    EXPECT_LE(errors.worst, 0.001);
}

TEST(SensorAccuracy, TwoRelativeTrialsFindThemBetter) {
    const Errors errors = ErrorsOf(&SensorCalibration::finalGains, "and two relative trials");
    EXPECT_LE(errors.amount, 0.0003);
    EXPECT_LE(errors.worst, 0.001);
}

// A sound FWD meets the limits of the procedure: pairs of trials within 0.005, standard errors within 0.002 and 3
// microns.
TEST(SensorAccuracy, SoundSensorsKeepTheLimits) {
    double difference = 0, stdError = 0, relativeError = 0;
    for (const SensorCalibration& calibration : Calibrations()) {
        for (std::size_t sensor = 0; sensor < calibration.interimGains.size(); ++sensor) {
            const auto& gains = calibration.trialGains;
            difference = std::max(difference, std::abs(gains[1][sensor] - gains[0][sensor]));
            for (const auto& errors : calibration.stdErrors) stdError = std::max(stdError, errors[sensor]);
        }
        relativeError = std::max(relativeError, calibration.worstRelativeError);
    }
    std::cout << "worst of them: difference of a pair " << difference << ", standard error of a slope " << stdError
              << ", of a relative trial " << relativeError << " microns\n";
    EXPECT_LE(difference, 0.005);
    EXPECT_LE(stdError, mostStdError);
    EXPECT_LE(relativeError, 3);
}

TEST(SensorAccuracy, BadSensorIsSeenByItsStandardErrorAlone) {
    CenterOptions options;
    options.heights = 3;
    options.drops = 5;
    options.fwd.sensors.badSensor = 4;
    for (options.seed = 1; options.seed <= 3; ++options.seed) {
        for (const auto& errors : SensorCalibration(options).stdErrors) {
            for (std::size_t sensor = 0; sensor < errors.size(); ++sensor)
                EXPECT_EQ(errors[sensor] > 0.0021, sensor == 3) << sensor << ' ' << errors[sensor];
        }
    }
}

}  // namespace
}  // namespace bellmark::virtual_fwd
