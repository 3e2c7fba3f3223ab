#pragma once

#include "analysis/analysis.h"
#include "platform/machine.h"
#include "platform/numbers.h"
#include "relative/relative_analysis.h"
#include "run/reference_trials.h"

namespace bellmark {

/// Peaks of a trial of four heights with six drops and their regression: what the reference measured, and an FWD that
/// reads it too small by the factor, with a scatter of a part in a thousand.
inline void FillTrial(TrialRecord& trial, double initialGain, double factor, double smallest, Random& random) {
    constexpr int drops = 24;
    for (std::size_t d = 0; d < drops; ++d) {
        trial.RefDropData[d] = smallest * (1 + static_cast<double>(d / 6) * 0.75) + static_cast<double>(d % 6);
        trial.DropData[d] = Round(trial.RefDropData[d] / factor * (1 + 0.001 * (random.Next() - 0.5)), 3);
    }
    const OriginRegression line = RegressThroughOrigin(trial.DropData, trial.RefDropData, drops);
    trial.AdjFactor = line.slope;
    trial.Gain = initialGain * line.slope;
    trial.StdErrAdjFactor = line.stdErrSlope;
}

/// A load cell with two trials and twelve sensors with all their trials, out of readings in kN and microns. Nothing is
/// accepted. trials: of each kind, 2 or 4.
inline void CalibrateTwelveSensors(CalibrationRun& run, int trials) {
    Random random(7);
    run.EnglishUnits = false;
    run.LoadCellRefTrials = 2;
    for (std::size_t t = 0; t < 2; ++t) {
        run.LCTrialShape[t] = {4, 6, false};
        FillTrial(run.LCTrial[t], run.LoadCellInitialGain, 1.004, 27, random);
    }
    run.NumberSensors = static_cast<int>(maxSensors);
    run.RefTrials = trials;
    for (std::size_t t = 0; t < static_cast<std::size_t>(trials); ++t) {
        run.RefTrialShape[t] = {4, 6, false};
        for (std::size_t s = 0; s < maxSensors; ++s) {
            SensorCalRecord& sensor = run.Sensor[s];
            sensor.SerialNumber = "D-" + NumberText(101 + s);
            sensor.InitialGain = 1.002 + 0.001 * static_cast<double>(s);
            FillTrial(sensor.RefTrial[t], sensor.InitialGain, 0.998 + 0.0005 * static_cast<double>(s), 210, random);
        }
    }
    JudgeReferenceTrials(run, trials);
    for (run.RelTrials = 0; run.RelTrials < trials; ++run.RelTrials) {
        const auto t = static_cast<std::size_t>(run.RelTrials);
        for (std::size_t s = 0; s < maxSensors; ++s) {
            RelativeTrialRecord& record = run.Sensor[s].RelTrial[t];
            record.Position = static_cast<int>(t % 2 == 0 ? s + 1 : maxSensors - s);
            for (std::size_t d = 0; d < relativeDrops; ++d) {
                record.DropData[d] = Round(480 + static_cast<double>(d / 5) + 2 * (random.Next() - 0.5), 2);
            }
        }
        DoRelativeDataAnalysis(run);
    }
    SetFinalGains(run);
}

}  // namespace bellmark
