#pragma once

#include <string>

#include "app/program.h"
#include "assembly/assembly.h"
#include "results/frm_results.h"
#include "tests/support/test_machine.h"

namespace bellmark {

/// A whole program in a run of a load cell, with trials of given gains and the files of their drops.
struct ResultsProgram {
    TestMachine machine;
    std::unique_ptr<Program> program = AssembleProgram(machine.machine);
    CalibrationRun& run = program->Run;
    CenterConfig& center = program->Center;
    frmResults& results = dynamic_cast<frmResults&>(program->The<ResultsDoor>());
    LoadCellTab& tab = results.LoadCell;

    ResultsProgram() {
        run.SetupComplete = true;
        run.CurrentProcedure = Procedure::LoadCell;
        run.CurrentProcStep = step::loadCellTrialStarts;
        run.InterimFileName = "InterimCal20120309.DDX";
        run.InterimFolderName = "InterimCal20120309";
        run.DeviceOwner = "County Roads";
        run.DeviceName = "Unit 7";
        run.DeviceFolder = machine.folder / "Bellmark/Calibrations/Owner/Unit 7";
        run.DeviceSerialNumber = "8002-123";
        run.LoadCellSerialNumber = "LC-9";
        run.LoadCellInitialGain = 1.0;
        run.NumberSensors = 0;
        center.CalibrationCenter = "Test Center";
        center.CalibrationCenterOperator = "A. Operator";
        center.ReferenceLoadCellName = "RLC-07";
        center.AccelerometerModelNumber = "2266";
        center.AccelerometerSerialNumber = "A-11";
    }

    void SetTrials(const std::vector<double>& gains, double initialGain = 1.0) {
        run.LoadCellInitialGain = initialGain;
        run.LoadCellRefTrials = static_cast<int>(gains.size());
        run.LCTrial = {};
        for (std::size_t t = 0; t < gains.size(); ++t) run.LCTrial[t].Gain = gains[t];
        results.OpenLoadCell();
        results.Recompute();
    }

    std::string Cell(int row, int column) const { return tab.grdLoadCell.Cell(row, column); }
    std::string Text(const Path& name) const { return machine.files.ReadBytes(machine.folder / name); }
    std::string Boxes() {
        std::string all;
        for (const auto& box : machine.dialogs.TakeBoxes()) all += box + '\n';
        return all;
    }
};

}  // namespace bellmark
