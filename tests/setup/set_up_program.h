#pragma once

#include "app/center_file.h"
#include "app/frm_about.h"
#include "app/program.h"
#include "assembly/assembly.h"
#include "platform/numbers.h"
#include "platform/profile_strings.h"
#include "run/paths.h"
#include "setup/frm_setup.h"
#include "tests/support/test_machine.h"

namespace bellmark {

/// A whole program on a folder that holds only a center's configuration, which a test may change before it is read.
struct SetUpProgram {
    TestMachine machine;
    std::unique_ptr<Program> program = AssembleProgram(machine.machine);
    CalibrationRun& run = program->Run;
    CenterConfig& center = program->Center;
    frmSetup& setup = dynamic_cast<frmSetup&>(program->The<SetupDoor>());
    CenterTab& tab = setup.Center;
    ProfileStrings configuration;

    SetUpProgram() {
        // Without a board the temperature is assumed to be near that of the calibration.
        run.ReviewMode = true;
        machine.Write("Ferrylink.exe", "");
        Set("CalibrationCenterOperator", "A. Operator");
        Set("ReferenceLoadCellName", "RLC-07");
        Set("ReferenceLoadCellUnits", "pound-force");
        Set("ReferenceLoadCellSensitivity", "1000");
        Set("ReferenceLoadCell+BVoltage", "3.742");
        Set("ReferenceLoadCell-BVoltage", "-3.738");
        Set("ReferenceLoadCellCalibrationDate", "01-02-2012");
        Set("ReferenceLoadCellCalibrationCoefficients", "4012.3712345,1.8312,0,-0.26471,1E-05");
        Set("AccelRef+1GDC", "2.97134");
        Set("AccelDailyCalibrationDate", "09-Mar-2012");
        Set("AccelDailyCalibrationTime", "09:00");
        Set("AccelDailyCalibrationTemp", "21.5");
        Set("AccelDailyCalibrationTemperatureUnit", "Celsius");
        Set("CalCenterIDCode", "7");
    }

    void Set(const char* key, const std::string& value) { configuration.Set("FWD Calibration Center", key, value); }

    Path Master() const { return machine.folder / "BellmarkCenterConfig.ini"; }
    void ReadCenter() {
        machine.Write("BellmarkCenterConfig.ini", configuration.Text());
        ReadCenterConfiguration(*program, Master());
        setup.ShowCenter();
        setup.OpenCenterPage();
    }
    /// An FWD with everything that the set-up requires.
    void CompleteFWD() {
        run.DeviceOwner = "Agency";
        run.OwnerFolder = CalibrationsFolder(machine.folder.Folder()) / "Agency";
        run.DeviceFolder = run.OwnerFolder / "8002-101";
        machine.files.CreateFolder(run.DeviceFolder);
        run.LoadCellInitialGain = 1.01;
        run.NumberSensors = 6;
        for (int s = 0; s < run.NumberSensors; ++s) {
            SensorCalRecord& sensor = run.Sensor[static_cast<std::size_t>(s)];
            sensor.SerialNumber = 'D' + NumberText(s);
            sensor.InitialGain = 1;
        }
        setup.FWD.optFWDClick();
    }
    std::string Written(const char* key) const {
        return OpenProfileStrings(machine.files, Master()).Get("FWD Calibration Center", key, "(none)");
    }
    std::string MasterText() const { return ReadTextFile(machine.files, Master()); }
};

}  // namespace bellmark
