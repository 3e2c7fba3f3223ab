#include "relative/relative_trial.h"

#include <algorithm>

#include "platform/numbers.h"
#include "relative/relative_analysis.h"

namespace bellmark {

namespace {

const RelativeTrialRecord& TrialOfSensor(const CalibrationRun& run, std::size_t sensor) {
    return run.Sensor.at(sensor).RelTrial.at(static_cast<std::size_t>(run.RelTrials));
}

void AddDoubtsAboutPositions(const CalibrationRun& run, std::vector<std::string>& doubts) {
    for (std::size_t s = 0; s < SensorCount(run); ++s) {
        const int position = TrialOfSensor(run, s).Position;
        if (position == 0) doubts.push_back("The stand position of " + SensorWords(run, s) + " is empty.");
        for (std::size_t other = s + 1; position != 0 && other < SensorCount(run); ++other) {
            if (TrialOfSensor(run, other).Position != position) continue;
            doubts.push_back("Stand position " + NumberText(position) + " is given to " + SensorWords(run, s) +
                             " and to " + SensorWords(run, other) + '.');
        }
    }
}

}  // namespace

std::string SensorWords(const CalibrationRun& run, std::size_t sensor) {
    return "sensor " + NumberText(ShownSensorNumber(run, static_cast<int>(sensor)));
}

void BeginRelativeTrial(CalibrationRun& run) {
    run.RelTrialInHand.reset();
    if (!HasRoomForRelativeTrial(run)) return;
    const auto trial = static_cast<std::size_t>(run.RelTrials);
    run.RelTrial.at(trial) = {};
    const std::size_t sensors = SensorCount(run);
    for (std::size_t s = 0; s < sensors; ++s) {
        const bool isOdd = trial % 2 == 0;
        run.Sensor[s].RelTrial[trial] = {};
        run.Sensor[s].RelTrial[trial].Position = static_cast<int>(isOdd ? s + 1 : sensors - s);
    }
}

void CountRelativeTrial(CalibrationRun& run) {
    run.RelTrialInHand.reset();
    run.RelTrials = std::min(run.RelTrials + 1, static_cast<int>(maxTrials));
    SetFinalGains(run);
}

void AddDoubtsAboutReadings(const CalibrationRun& run, std::vector<std::string>& doubts) {
    if (run.RelTrialInHand) {
        const RelativeTrialInHand& file = *run.RelTrialInHand;
        doubts.insert(doubts.end(), file.unreadable.begin(), file.unreadable.end());
        doubts.insert(doubts.end(), file.unitDoubts.begin(), file.unitDoubts.end());
    }
    for (std::size_t t = 0; t < static_cast<std::size_t>(run.RelTrials); ++t) {
        bool same = SensorCount(run) > 0;
        for (std::size_t s = 0; same && s < SensorCount(run); ++s)
            same = run.Sensor[s].RelTrial[t].DropData == TrialOfSensor(run, s).DropData;
        if (same) doubts.push_back("The readings are those of trial " + NumberText(t + 1) + ", to the last digit.");
    }
}

std::vector<std::string> SensorsWithoutResult(const CalibrationRun& run) {
    std::vector<std::string> lines;
    for (std::size_t s = 0; s < SensorCount(run); ++s) {
        const SensorCalRecord& sensor = run.Sensor[s];
        if (sensor.InterimGain == 0) {
            lines.push_back("There is no interim gain of " + SensorWords(run, s) + ": its relative gain is 0.");
        } else if (sensor.InitialGain == 0) {
            lines.push_back("There is no initial gain of " + SensorWords(run, s) + ": its relative gain is 0.");
        } else if (TrialOfSensor(run, s).AdjFactor == 0) {
            lines.push_back("There is no deflection of " + SensorWords(run, s) + ": its relative gain is 0.");
        }
    }
    return lines;
}

std::vector<std::string> DoubtsAboutTrial(const CalibrationRun& run) {
    if (!run.RelTrialInHand) return {};
    std::vector<std::string> doubts = SensorsWithoutResult(run);
    if (run.RelTrialInHand->dropsInFile != relativeDrops) {
        doubts.insert(doubts.begin(), "The file holds " + NumberText(run.RelTrialInHand->dropsInFile) +
                                          " drops in place of " + NumberText(relativeDrops) + '.');
    }
    AddDoubtsAboutReadings(run, doubts);
    AddDoubtsAboutPositions(run, doubts);
    return doubts;
}

bool IsPositionDoubtful(const CalibrationRun& run, std::size_t sensor) {
    const int position = TrialOfSensor(run, sensor).Position;
    if (position == 0) return true;
    for (std::size_t other = 0; other < SensorCount(run); ++other) {
        if (other != sensor && TrialOfSensor(run, other).Position == position) return true;
    }
    return false;
}

}  // namespace bellmark
