#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "app/app_main.h"
#include "app/frm_about.h"
#include "app/frm_main_menu.h"
#include "app/program.h"
#include "assembly/assembly.h"
#include "monthly/frm_rel_results.h"
#include "monthly/frm_relative.h"
#include "relative/frm_center_rel_plot.h"
#include "tests/monthly/monthly_files.h"
#include "tests/support/test_machine.h"

namespace bellmark {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

/// The assembled program on its start form, with a hand on each screen of a monthly calibration.
struct MonthlyScreens : testing::Test {
    TestMachine machine;
    std::unique_ptr<Program> program = AssembleProgram(machine.machine);
    CalibrationRun& run = program->Run;
    frmAbout* start = nullptr;
    frmMainMenu* menu = nullptr;
    frmRelative* relative = nullptr;
    frmRelResults* results = nullptr;
    frmCenterRelPlot* plot = nullptr;

    MonthlyScreens() {
        machine.Write("Ferrylink.exe", "");
        machine.Write("BellmarkCenterConfig.ini", "[FWD Calibration Center]\r\nCalibrationCenter=Sample\r\n");
        Main(*program);
        start = &ScreenOf<StartFormDoor, frmAbout>();
        menu = &ScreenOf<MainMenuDoor, frmMainMenu>();
        relative = &ScreenOf<RelativeDoor, frmRelative>();
        results = &ScreenOf<RelativeResultsDoor, frmRelResults>();
        plot = &ScreenOf<CenterRelPlotDoor, frmCenterRelPlot>();
    }

    template <class Door, class ScreenType>
    ScreenType& ScreenOf() {
        return dynamic_cast<ScreenType&>(program->The<Door>());
    }

    std::string Front() const { return program->Screens.Front()->Name(); }
    std::vector<std::string> Boxes() { return machine.dialogs.TakeBoxes(); }
    void QueueAnswer(Answer answer) { machine.dialogs.QueueAnswer(answer); }

    void BeginMonthly() {
        start->cmdRelativeCal.UserClick();
        relative->optMonthlyRelative.UserClick();
    }
    void BeginReplacement(int sensor) {
        start->cmdRelativeCal.UserClick();
        relative->optMonthlyReplace.UserClick();
        relative->grdSerialNum.UserClickCell(sensor, 1);
    }

    void Browse(const MonthlyFile& file, const Path& name = "FWD/Monthly1.ddx") {
        machine.dialogs.QueueFile(machine.Write(name, file.Text()));
        relative->cmdBrowse.UserClick();
    }
    void LookAtPlot() {
        results->cmdShowPlot.UserClick();
        plot->cmdNext.UserClick();
    }
    /// Reads a trial, looks at it and accepts it; boxes on the way are answered with OK.
    void AcceptTrial(const MonthlyFile& file) {
        Browse(file);
        relative->cmdNext.UserClick();
        LookAtPlot();
        results->cmdNext.UserClick();
    }

    /// Files of the program folder whose names begin so, with their bytes.
    std::map<std::string, std::string> FilesOf(const std::string& prefix) {
        std::map<std::string, std::string> found;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(machine.folder.Folder())) {
            const std::string name = std::filesystem::relative(entry.path(), machine.folder.Folder()).generic_string();
            if (entry.is_regular_file() && name.starts_with(prefix))
                found[name] = machine.files.ReadBytes(entry.path());
        }
        return found;
    }
};

inline MonthlyFile FileOff(std::vector<double> ratios, int seed = 0) {
    MonthlyFile file;
    file.ratios = std::move(ratios);
    file.seed = seed;
    return file;
}

/// Sensor 3 reads half a percent too little: its gain must rise.
inline const std::vector<double> thirdIsLow{1, 1, 1.005};

}  // namespace bellmark
