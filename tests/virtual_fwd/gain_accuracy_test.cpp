// How close a load cell calibration comes to the FWD's true gain, starting from the volts of the reference load cell.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iostream>

#include "analysis/analysis.h"
#include "reference/load_analysis.h"
#include "virtual_fwd/virtual_center.h"

namespace bellmark::virtual_fwd {
namespace {

// The analysis uses only the pulse and the 50 ms before it. So the pulse comes 0.18 s earlier in the block than in a
// real capture, and the block ends at 0.1 s, just after the latest peak: a tenth of the samples gives the same result.
constexpr double earlierSeconds = 0.18;
constexpr int neededSamples = 1500;

class CalibrationBench {
  public:
    double PeakOf(const PulseModel& pulse, Random& random, int samples = neededSamples) {
        const auto volts = CaptureVolts(cell_, pulse, random, samples);
        std::fill(drop_.RawVolts.begin(), drop_.RawVolts.end(), 0.0F);
        std::copy(volts.begin(), volts.end(), drop_.RawVolts.begin());
        drop_.NumSamples = samples;
        AnalyzeLoadSamples(drop_, center_, true);
        return drop_.PeakEnglish;
    }

    /// Error of the mean of the trials' gains, as a share of the true gain.
    double GainError(const CenterOptions& options) {
        Random random(options.seed);
        Random fwdRandom(options.seed + 1'000'000);
        const VirtualFWD fwd = MakeFWD(options, fwdRandom);
        double sumOfGains = 0;
        for (int trial = 1; trial <= options.trials; ++trial) {
            std::vector<double> fwdPeaks;
            std::vector<double> referencePeaks;
            for (int height = 1; height <= options.heights; ++height) {
                for (int drop = 1; drop <= options.drops; ++drop) {
                    const DropNumber number{trial, height, drop};
                    PulseModel pulse = DrawPulse(options, number, random);
                    pulse.startSeconds -= earlierSeconds;
                    referencePeaks.push_back(PeakOf(pulse, random));
                    const double read = ReadDrop(fwd, number, pulse.peakPounds, fwdRandom).pounds;
                    fwdPeaks.push_back(ToResolution(read, fwd.loads.resolution));
                }
            }
            const int drops = static_cast<int>(fwdPeaks.size());
            sumOfGains += RegressThroughOrigin(fwdPeaks, referencePeaks, drops).slope * fwd.loadCell.initialGain;
        }
        return sumOfGains / options.trials / fwd.loadCell.trueGain - 1;
    }

  private:
    CenterConfig center_ = VirtualCenter(false, MakeDateTime(2012, 3, 9));
    LoadCellModel cell_ = VirtualLoadCell();
    DropRecord drop_;
};

struct Errors {
    double mean = 0;
    double worst = 0;
};

/// Over the seeds 1 to count; prints both in percent.
Errors ErrorsOf(CenterOptions options, int count, const char* what) {
    CalibrationBench bench;
    Errors errors;
    for (int seed = 1; seed <= count; ++seed) {
        options.seed = static_cast<std::uint64_t>(seed);
        const double error = bench.GainError(options);
        errors.mean += error / count;
        errors.worst = std::max(errors.worst, std::abs(error));
    }
    std::cout << what << ", " << count << " calibrations: mean error of the gain " << 100 * errors.mean << " %, worst "
              << 100 * errors.worst << " %\n";
    return errors;
}

TEST(GainAccuracy, ShortBlockGivesThePeakOfTheWholeSecond) {
    CalibrationBench bench;
    Random random(7);
    for (int height = 1; height <= 4; ++height) {
        PulseModel pulse = DrawPulse({}, {1, height, 1}, random);
        pulse.startSeconds -= earlierSeconds;
        Random noise(11), sameNoise(11);
        EXPECT_EQ(bench.PeakOf(pulse, noise), bench.PeakOf(pulse, sameNoise, samplesPerSecond));
    }
}

TEST(GainAccuracy, WithoutNoiseOnlyTheResolutionsAreInTheWay) {
    CenterOptions options;
    options.noisePounds = 0;
    options.fwd.scatter = 0;
    EXPECT_LE(ErrorsOf(options, 20, "no noise").worst, 0.0001);
}

// The peak is the largest of noisy samples: 6 pounds of noise raise it by some ten pounds, small loads relatively more.
// This is part of the procedure, and the mean error shows it.
TEST(GainAccuracy, WithNoiseTheGainIsFound) {
    const Errors errors = ErrorsOf({}, 200, "noise of 6 pounds, scatter of 0.1 %");
    EXPECT_LE(std::abs(errors.mean), 0.001);
    EXPECT_LE(errors.worst, 0.0025);
}

}  // namespace
}  // namespace bellmark::virtual_fwd
