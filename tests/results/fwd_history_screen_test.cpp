// The FWD's earlier calibrations on the summary tab, with files on disk.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/profile_strings.h"
#include "tests/results/calibrated_sensors.h"
#include "tests/results/results_program.h"

namespace bellmark {
namespace {

using testing::HasSubstr;
using testing::Not;

struct FWDHistoryTest : testing::Test, ResultsProgram {
    SummaryTab& summary = results.Summary;
    Grid& grid = summary.grdFWDHistory;

    FWDHistoryTest() {
        run.DeviceDesignationName = "Unit 7";
        run.DeviceModelNumber = "8002";
        machine.Write("CertificateTemplate.rtf", "{\\rtf1 LCFin}");
        machine.Write("InterimCal20120309/LoadCell1-H1D1.txt", "of the trial");
        machine.Write("Transfer/Old.ddx", FileOf("8002-123", 2));
        center.LocationOfFWDDataTransfer = PathText(machine.folder / "Transfer");
        SetTrials({1.001, 1.0025});
    }

    static std::string FileOf(const std::string& serial, int count) {
        std::string text = "[Device Information]\r\nDeviceDesignationName = Unit 7\r\nDeviceModelNumber = 8002\r\n";
        text += "DeviceSerialNumber = " + serial + "\r\n[Device Calibration]\r\n";
        text += "NumberCalibrations = " + NumberText(count) + "\r\n";
        for (int n = 1; n <= count; ++n) {
            text += "[Device Calibration_" + NumberText(n) + "]\r\nLoadCellSerialNumber = LC-9\r\n";
            text += "LoadCellCalibrationCenterDate = 09-Mar-" + NumberText(2011 - count + n) + "\r\n";
            text += "LoadCellCalibrationCenterGain = 1.00" + NumberText(n % 10) + "\r\nForeign = kept\r\n";
        }
        return text;
    }
    /// The operator chooses a file of the transfer folder.
    void Read(const char* name = "Old.ddx") {
        machine.dialogs.QueueFile(machine.folder / "Transfer" / name);
        summary.optSummary.UserClick();
        summary.cmdReadHistory.UserClick();
    }
    /// The load cell is accepted and the outputs are written, the FWD's document as Transfer/New.ddx.
    void Produce() {
        results.OpenLoadCell();
        if (!run.LoadCellCalComplete) tab.cmdAcceptLC.UserClick();
        machine.dialogs.QueueFile({});
        machine.dialogs.QueueFile(machine.folder / "Transfer/New.ddx");
        machine.dialogs.QueueAnswer(Answer::OK);
        summary.optSummary.UserClick();
        results.cmdPrintPDDX[0].UserClick();
        results.OpenLoadCell();
        summary.optSummary.UserClick();
        Boxes();
    }
    ProfileStrings Document() const { return OpenProfileStrings(machine.files, machine.folder / "Transfer/New.ddx"); }
};

TEST_F(FWDHistoryTest, IsReadAndTheRunIsAdded) {
    summary.optSummary.UserClick();
    EXPECT_THAT(summary.lblHistoryStep.Caption.Get(), HasSubstr("READ"));
    EXPECT_FALSE(summary.cmdUpdateHistory.Enabled);
    Read();
    EXPECT_EQ(Boxes(), "");
    EXPECT_EQ(run.NumberCalibrations, 2);
    EXPECT_EQ(center.LocationOfFWDDataTransfer, PathText(machine.folder / "Transfer/"));
    EXPECT_EQ(grid.DisplayText(),
              "Date\tCalibration Center\tLoad Cell Center Gain\n09-Mar-2011\t\t1.002\n09-Mar-2010\t\t1.001");
    EXPECT_EQ(grid.CellColor(1, 2), colors::window);
    EXPECT_EQ(summary.cmdUpdateHistory.ToolTip.Get(), "Write the Final Outputs first.");

    Produce();
    EXPECT_EQ(results.DefaultButton(), &summary.cmdUpdateHistory);
    summary.cmdUpdateHistory.UserClick();
    EXPECT_NE(results.DefaultButton(), &summary.cmdUpdateHistory);
    EXPECT_EQ(grid.Cell(1, 0), "09-Mar-2012");
    EXPECT_EQ(grid.Cell(1, 2), "1.002");
    EXPECT_EQ(grid.Rows(), 4);
    EXPECT_EQ(run.NumberCalibrations, 3);
    EXPECT_EQ(Document().Get("Device Calibration_3", "LoadCellCalibrationCenterGain"), "1.00175");
    EXPECT_EQ(Document().Get("Device Calibration_2", "Foreign"), "kept");
    EXPECT_EQ(Document().Get("Operations Information", "FileName"), PathText(machine.folder / "Transfer/New.ddx"));
    EXPECT_THAT(summary.lblHistoryStep.Caption.Get(), HasSubstr("This calibration is in the document"));
    EXPECT_EQ(machine.Has("Transfer/Old.ddx"), true);
    EXPECT_EQ(Text("Transfer/Old.ddx"), FileOf("8002-123", 2));

    // The same day again is one more; only the very midnight stops it.
    summary.cmdUpdateHistory.UserClick();
    EXPECT_EQ(run.NumberCalibrations, 4);
    machine.clock.Set(MakeDateTime(2012, 3, 9));
    summary.cmdUpdateHistory.UserClick();
    EXPECT_EQ(run.NumberCalibrations, 4);
    EXPECT_EQ(Boxes(), "");

    // Final outputs that are repeated keep what was added; a file of another FWD leaves nothing.
    const std::string added = Document().SectionText("Device Calibration_4");
    Produce();
    EXPECT_EQ(Document().Get("Device Calibration", "NumberCalibrations"), "4");
    EXPECT_EQ(Document().Get("Device Calibration_1", "Foreign"), "kept");
    EXPECT_EQ(Document().SectionText("Device Calibration_4"), added);
    EXPECT_EQ(summary.cmdUpdateHistory.BackColor.Get(), colors::buttonFace);
    machine.Write("Transfer/New.ddx", FileOf("8002-999", 2));
    Produce();
    EXPECT_FALSE(Document().HasSection("Device Calibration_1"));

    // Another run begins without a history.
    run.InterimFileName = "InterimCal20120310.DDX";
    results.Recompute();
    EXPECT_EQ(grid.Rows(), 2);
    EXPECT_EQ(grid.Cell(1, 0), "");
    EXPECT_FALSE(summary.cmdUpdateHistory.Enabled);
}

TEST_F(FWDHistoryTest, TheRunStandsInADocumentOnceAndWholly) {
    Read();
    Produce();
    summary.cmdUpdateHistory.UserClick();
    // Other gains were accepted: the document does not hold all of the run yet.
    run.SensorRefCalComplete = true;
    run.SensorRelCalComplete = true;
    results.Recompute();
    EXPECT_EQ(results.DefaultButton(), &summary.cmdUpdateHistory);
    // A document that does not hold the run gets it once, behind the earlier ones.
    std::filesystem::remove(machine.folder / "Transfer/New.ddx");
    Produce();
    summary.cmdUpdateHistory.UserClick();
    EXPECT_EQ(Boxes(), "");
    EXPECT_EQ(Document().Get("Device Calibration", "NumberCalibrations"), "3");
    EXPECT_EQ(Document().Get("Device Calibration_3", "SensorCalibrationCenterDate"), "09-Mar-2012");

    // The same run opened again is a fresh record.
    run.NumberCalibrations = 0;
    results.Recompute();
    EXPECT_FALSE(summary.cmdUpdateHistory.Enabled) << "its history must be read again";
}

TEST_F(FWDHistoryTest, AFileOfAnotherFWDIsToldAndShown) {
    machine.Write("Transfer/Other.ddx", FileOf("8002-999", 1));
    run.LoadCellSerialNumber = "LC-10";
    machine.dialogs.QueueAnswer(Answer::OK);
    Read("Other.ddx");
    std::string boxes = Boxes();
    EXPECT_THAT(boxes,
                HasSubstr("Error reading the FWD History (150)\tThe FWD Serial Number does not match the FWD Serial "
                          "Number in the file"));
    EXPECT_EQ(grid.Rows(), 2);
    EXPECT_EQ(grid.Cell(1, 0), "09-Mar-2011");
    EXPECT_EQ(grid.CellColor(1, 2), colors::warning);
    EXPECT_EQ(grid.CellToolTip(1, 2), "Of the load cell LC-9.");

    run.DeviceDesignationName = run.DeviceModelNumber = "x";
    for (int box = 0; box < 3; ++box) machine.dialogs.QueueAnswer(Answer::OK);
    Read("Other.ddx");
    boxes = Boxes();
    EXPECT_LT(boxes.find("The FWD name"), boxes.find("The FWD model number"));
    EXPECT_LT(boxes.find("The FWD model number"), boxes.find("The FWD Serial Number"));

    // Its calibrations are not mixed with the FWD's own unless the operator wants it.
    Produce();
    const std::string before = Text("Transfer/New.ddx");
    machine.dialogs.QueueAnswer(Answer::No);
    summary.cmdUpdateHistory.UserClick();
    EXPECT_THAT(Boxes(), HasSubstr("of another FWD"));
    EXPECT_EQ(Text("Transfer/New.ddx"), before);
    machine.dialogs.QueueAnswer(Answer::Yes);
    summary.cmdUpdateHistory.UserClick();
    EXPECT_EQ(run.NumberCalibrations, 2);
}

TEST_F(FWDHistoryTest, WhatCannotBeReadLeavesWhatIsShown) {
    Read();
    const std::string shown = grid.DisplayText();
    machine.Write("Transfer/Damaged.ddx", "[Device Calibration]\r\nNumberCalibrations = 40000\r\n");
    machine.Write("Transfer/Trial.F25", "a drop");
    const struct {
        const char* file;
        const char* box;
    } cases[] = {{"Damaged.ddx", "There was a problem reading the PDDX file."},
                 {"Missing.ddx", "(106)"},
                 {"Trial.F25", "could not be converted"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        machine.dialogs.QueueAnswer(Answer::OK);
        Read(c.file);
        EXPECT_THAT(Boxes(), HasSubstr(c.box));
        EXPECT_EQ(grid.DisplayText(), shown);
        EXPECT_EQ(run.NumberCalibrations, 2);
    }
    machine.Write("Transfer/First.ddx", FileOf("8002-123", 0));
    Read("First.ddx");
    EXPECT_EQ(summary.lblHistory.Caption.Get(), "0 calibrations in First.ddx.");
    EXPECT_EQ(grid.Rows(), 2);
    EXPECT_EQ(grid.Cell(1, 0), "");
    machine.Write("Transfer/More.ddx", FileOf("8002-123", 2) + "[Device Calibration_7]\r\nCalCenterIDCode = 4\r\n");
    Read("More.ddx");
    EXPECT_EQ(summary.lblHistory.Caption.Get(),
              "2 calibrations in More.ddx, which holds more than it counts, up to number 7.");
    Read();
    // An existing conversion that is not to be replaced.
    machine.Write("InterimCal20120309/Trialcvt.ddx", FileOf("8002-123", 1));
    machine.dialogs.QueueAnswer(Answer::No);
    machine.dialogs.QueueAnswer(Answer::OK);
    Read("Trial.F25");
    EXPECT_THAT(Boxes(), HasSubstr("There was a problem reading the PDDX file."));
    machine.dialogs.QueueFile({});
    summary.cmdReadHistory.UserClick();
    EXPECT_EQ(grid.DisplayText(), shown);
}

TEST_F(FWDHistoryTest, ADocumentThatCannotBeWrittenStaysAsItIs) {
    Read();
    Produce();
    const Path document = machine.folder / "Transfer/New.ddx";
    const std::string before = Text("Transfer/New.ddx");
    const auto expectTold = [&](const char* why) {
        SCOPED_TRACE(why);
        machine.dialogs.QueueAnswer(Answer::OK);
        summary.cmdUpdateHistory.UserClick();
        EXPECT_THAT(Boxes(), HasSubstr("The calibration could not be added to the history."));
        EXPECT_EQ(run.NumberCalibrations, 2);
        EXPECT_EQ(grid.Rows(), 3);
    };
    machine.files.FailFromWrite(1);
    expectTold("full disk");
    machine.files.FailFromWrite(0);
    std::filesystem::permissions(document, std::filesystem::perms::owner_read);
    expectTold("write-protected");
    std::filesystem::permissions(document, std::filesystem::perms::owner_all);
    EXPECT_EQ(Text("Transfer/New.ddx"), before);
    machine.Write("Transfer/New.ddx", std::string("\xFF\xFE[\0a\0", 6));
    expectTold("UTF-16");
    EXPECT_EQ(Text("Transfer/New.ddx").size(), 6u);
    machine.files.RemoveFile(document);
    expectTold("vanished");
    EXPECT_FALSE(machine.Has("Transfer/New.ddx"));
    machine.Write("Transfer/New.ddx", before);

    // The history vanishes between reading and updating: what was read is in the document all the same.
    machine.files.RemoveFile(machine.folder / "Transfer/Old.ddx");
    summary.cmdUpdateHistory.UserClick();
    EXPECT_EQ(Boxes(), "");
    EXPECT_EQ(Document().Get("Device Calibration_1", "Foreign"), "kept");
    EXPECT_EQ(run.NumberCalibrations, 3);
}

TEST_F(FWDHistoryTest, GainsThatAreNotAcceptedAreAddedOnlyWhenWanted) {
    Read();
    CalibrateTwelveSensors(run, 2);
    SetTrials({1.001, 1.0025});
    run.SensorRefCalComplete = true;
    Produce();
    machine.dialogs.QueueAnswer(Answer::No);
    summary.cmdUpdateHistory.UserClick();
    EXPECT_THAT(Boxes(), HasSubstr("not accepted yet"));
    EXPECT_EQ(run.NumberCalibrations, 2);
    EXPECT_EQ(grid.Columns(), 15);

    // The gains of the run are in the plot before they are accepted: the third criterion is judged then.
    EXPECT_EQ(summary.cboHistoryGain.Items.Get().size(), 14u);
    summary.cboHistoryGain.UserChoose("All sensors");
    EXPECT_EQ(summary.pctHistory.Drawn().series.size(), 14u);
    summary.cboHistoryGain.UserChoose("Load cell LC-9");
    ASSERT_EQ(summary.pctHistory.Drawn().series.size(), 3u);
    EXPECT_EQ(summary.pctHistory.Drawn().series[0].y.size(), 3u);
    EXPECT_THAT(summary.lblTrend.Caption.Get(), HasSubstr("3 calibrations, 2010 to 2012"));
    std::string printed;
    machine.machine.printScreen = [&](const std::string& screen) { printed = screen; };
    summary.cmdPrintHistory.UserClick();
    EXPECT_EQ(printed, "frmResults");
}

}  // namespace
}  // namespace bellmark
