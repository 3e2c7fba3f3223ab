#pragma once

#include <algorithm>

#include "app/doors.h"
#include "app/program.h"
#include "pddx/mod_pddx_read.h"
#include "platform/machine.h"
#include "run/run_document.h"

namespace bellmark {

/// Four trials of each kind over twelve sensors: the most that a run can hold, each value different and with all its
/// digits.
inline CalibrationRun FullRun(std::uint64_t seed) {
    Random random(seed);
    const auto any = [&] { return random.Next() * 100 + 0.01; };
    const auto fill = [&](auto& values, std::size_t count) { std::generate_n(values.begin(), count, any); };
    CalibrationRun run;
    run.InterimFileName = "InterimCal20120309.DDX";
    run.InterimFolderName = "InterimCal20120309";
    run.NumberLoadLevels = 4;
    run.NumberDropsPerLoadLevel = 10;
    run.NumberSensors = 12;
    run.SensorStand = 2;
    run.EnglishUnits = false;
    run.Manufacturer = Make::Kuab;
    run.DeviceOwner = "Straßenbau Süd";
    run.DeviceSerialNumber = "8002-123";
    run.DeviceDesignationName = "KUAB 150";
    run.OwnerFolder = "/tree/Calibrations/Owner";
    run.DeviceFolder = "/tree/Calibrations/Owner/8002-123";
    run.OutputFolder = "/tree/Calibrations/Owner/8002-123/2012Mar09";
    run.CurrentProcedure = Procedure::Sensors;
    run.CurrentProcStep = step::sensorsRelative;
    run.FlagUnacceptedTrial = true;  // of the load cell
    run.Trial.procedure = Procedure::LoadCell;
    run.SensorRefCalComplete = true;
    run.LoadCellSerialNumber = "LC-9";
    // The file holds initial gains with four decimals and the load cell's new one with eight.
    run.LoadCellInitialGain = 1.0123;
    run.NewLoadCellCalibrationCenterGain = 1.00345678;
    run.LoadCellRefTrials = run.RefTrials = run.RelTrials = static_cast<int>(maxTrials);
    run.RefCalAvg = any();
    run.RefCalStdDev = any();
    run.RefCalChange = any();
    for (std::size_t t = 0; t < maxTrials; ++t) {
        run.LCTrialShape[t] = run.RefTrialShape[t] = {4, 10, false};
        fill(run.LCTrial[t].RefDropData, 40);
        fill(run.LCTrial[t].DropData, 40);
        run.LCTrial[t].AdjFactor = any();
        run.LCTrial[t].Gain = any();
        run.RefTrial[t] = {any(), any(), any()};
        run.RelTrial[t].Avg = any();
        run.RelTrial[t].StdDev = any();
        run.RelTrial[t].ChiSq = any();
        fill(run.RelTrial[t].SetAvg, maxSets);
        fill(run.RelTrial[t].SetStdDev, maxSets);
    }
    for (std::size_t s = 0; s < maxSensors; ++s) {
        SensorCalRecord& sensor = run.Sensor[s];
        sensor.SerialNumber = "S-" + std::string(1, static_cast<char>('A' + s));
        sensor.InitialGain = 1 + static_cast<double>(s) / 1000;
        sensor.InterimGain = any();
        sensor.FinalGain = any();
        for (std::size_t t = 0; t < maxTrials; ++t) {
            sensor.RefTrial[t].AdjFactor = any();
            sensor.RefTrial[t].Gain = any();
            fill(sensor.RefTrial[t].DropData, 40);
            RelativeTrialRecord& relative = sensor.RelTrial[t];
            fill(relative.DropData, 40);
            relative.AdjFactor = any();
            relative.Gain = any();
            relative.Average = any();
            relative.StdDev = any();
            relative.Position = static_cast<int>(t % 2 == 0 ? s + 1 : maxSensors - s);
        }
    }
    // One accelerometer is the reference of all sensors.
    for (std::size_t t = 0; t < maxTrials; ++t) {
        fill(run.Sensor[0].RefTrial[t].RefDropData, 40);
        for (SensorCalRecord& sensor : run.Sensor) {
            sensor.RefTrial[t].RefDropData = run.Sensor[0].RefTrial[t].RefDropData;
        }
    }
    return run;
}

}  // namespace bellmark
