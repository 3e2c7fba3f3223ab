#pragma once

#include <gtest/gtest.h>

#include <filesystem>

#include "app/frm_master.h"
#include "app/program.h"
#include "fwd/frm_get_fwd_data.h"
#include "fwd/frm_regression_plot.h"
#include "platform/numbers.h"
#include "run/trial.h"
#include "tests/support/idle_doors.h"
#include "tests/support/test_machine.h"

/// The screens of a finished trial, with a fake converter, on files as an FWD might write them.
namespace bellmark {

struct RecordingMenu : FakeMainMenu {
    using FakeMainMenu::FakeMainMenu;
    int loadCellEntered = 0;
    int sensorsEntered = 0;
    void CalibrateLoadCell() override { ++loadCellEntered; }
    void CalibrateSensors() override { ++sensorsEntered; }
};

struct RecordingCollection : IdleCollection {
    int entered = 0;
    void Bellmark() override { ++entered; }
};

struct RecordingResults : IdleResults {
    int loadCellOpened = 0;
    int referenceOpened = 0;
    void OpenLoadCell() override { ++loadCellOpened; }
    void OpenReference() override { ++referenceOpened; }
};

struct RecordingReview : ReferenceReviewDoor {
    int started = 0;
    void Start() override { ++started; }
};

/// Two heights of two drops, captured a moment ago.
struct TrialScreens : testing::Test {
    TestMachine machine;
    Program program{machine.machine};
    CalibrationRun& run = program.Run;
    std::shared_ptr<RecordingMenu> menu = std::make_shared<RecordingMenu>(program);
    std::shared_ptr<RecordingCollection> collection = std::make_shared<RecordingCollection>();
    std::shared_ptr<RecordingResults> results = std::make_shared<RecordingResults>();
    std::shared_ptr<RecordingReview> review = std::make_shared<RecordingReview>();
    std::shared_ptr<frmGetFWDData> data = std::make_shared<frmGetFWDData>(program);
    std::shared_ptr<frmRegressionPlot> plot = std::make_shared<frmRegressionPlot>(program);

    TrialScreens() {
        machine.LetProgramsRun();
        program.Register<MainFrameDoor>([](Program& owner) { return std::make_shared<frmMaster>(owner); });
        program.Register<SetupDoor>([](Program&) { return std::make_shared<FakeSetup>(); });
        program.Register<AcquisitionDoor>([](Program&) { return std::make_shared<FakeAcquisition>(); });
        program.Register<MainMenuDoor>([this](Program&) { return menu; });
        program.Register<CollectionDoor>([this](Program&) { return collection; });
        program.Register<ResultsDoor>([this](Program&) { return results; });
        program.Register<ReferenceReviewDoor>([this](Program&) { return review; });
        program.Register<FWDDataDoor>([this](Program&) { return data; });
        program.Register<RegressionPlotDoor>([this](Program&) { return plot; });
        std::filesystem::copy(Path(BELLMARK_SOURCE_FOLDER) / "sample/Ferrylink.exe", machine.folder.Folder());
        run.ReviewMode = true;
        run.InterimFileName = "InterimCal20120309.DDX";
        run.InterimFolderName = "InterimCal20120309";
        run.CurrentProcedure = Procedure::LoadCell;
        run.CurrentProcStep = step::loadCellTrial;
        run.NumberLoadLevels = 2;
        run.NumberDropsPerLoadLevel = 2;
        run.NumberSensors = 3;
        run.DeviceSerialNumber = "8002/101";
        run.LoadCellSerialNumber = "LC-1";
        run.LoadCellInitialGain = 1;
        BeginTrial(run);
        run.Trial.DropSequenceIndex = 4;
        run.Trial.DropResults = {9000, 9040, 12000, 12040};
    }

    /// The FWD's file: one line of fields per drop.
    void WriteFile(const std::vector<std::string>& drops, const std::string& units = "pound-force",
                   const std::string& more = "") {
        std::string text = "[Units]\r\nLoadUnits=" + units + "\r\nDeflectionUnits=mils\r\n" + more +
                           "[Deflection Data]\r\nNumberOfTestLocations=1\r\n[Test Location 1]\r\nNumberOfDrops=" +
                           NumberText(drops.size()) + "\r\n";
        for (std::size_t i = 0; i < drops.size(); ++i) {
            text += "DropData_" + NumberText(i + 1) + '=' + drops[i] + "\r\n";
        }
        machine.Write("transfer/Trial.ddx", text);
    }
    /// Each file is converted again: the former document is replaced. answers: to the boxes after that.
    void Browse(const std::vector<Answer>& answers = {}) {
        machine.files.RemoveFile(machine.folder / "InterimCal20120309/Trial.ddx");
        if (machine.Has("InterimCal20120309/Trialcvt.ddx")) machine.dialogs.QueueAnswer(Answer::Yes);
        for (const Answer answer : answers) machine.dialogs.QueueAnswer(answer);
        machine.dialogs.QueueFile(machine.folder / "transfer/Trial.ddx");
        data->cmdBrowse.UserClick();
    }
    /// Titles of the boxes, or their texts when there is no title, without the question about the former document.
    std::vector<std::string> Boxes() {
        std::vector<std::string> told;
        for (const std::string& box : machine.dialogs.TakeBoxes()) {
            const std::string text = box.front() == '\t' ? box.substr(1) : box;
            if (text.find("already exist") == std::string::npos) told.push_back(text.substr(0, text.find('\t')));
        }
        return told;
    }
    void AcceptByPlot() {
        data->cmdGraph.UserClick();
        plot->cmdNext.UserClick();
    }
};

}  // namespace bellmark
