#include "setup/center_tab.h"

#include <gtest/gtest.h>

#include <functional>

#include "tests/setup/set_up_program.h"

namespace bellmark {
namespace {

struct CenterTabTest : ::testing::Test, SetUpProgram {};

TEST_F(CenterTabTest, FileKeepsThePairOfVoltagesThatItCameWith) {
    ReadCenter();
    EXPECT_EQ(tab.Label2[0].Caption.Get(), "+B Voltage:");
    EXPECT_EQ(Written("ReferenceLoadCell+BVoltage"), "3.742");
    EXPECT_EQ(Written("ReferenceLoadCell+AVoltage"), "(none)");
    Set("ReferenceLoadCell+BVoltage", "");
    Set("ReferenceLoadCell-BVoltage", "");
    Set("ReferenceLoadCell+AVoltage", "3.5");
    Set("ReferenceLoadCell-AVoltage", "-3.25");
    ReadCenter();
    EXPECT_EQ(tab.Label2[0].Caption.Get(), "+A Voltage:");
    EXPECT_EQ(tab.Label2[1].Caption.Get(), "-A Voltage:");
    EXPECT_EQ(tab.txtRefLoadCellBPlus.Text.Get(), "  3.5000");
    EXPECT_EQ(tab.txtRefLoadCellBMinus.Text.Get(), " -3.2500");
    EXPECT_EQ(Written("ReferenceLoadCell+AVoltage"), "3.5");
    EXPECT_EQ(Written("ReferenceLoadCell-AVoltage"), "-3.25");
    EXPECT_EQ(Written("ReferenceLoadCell+BVoltage"), "(none)");
}

TEST_F(CenterTabTest, EmptyValuesHaveTheirDefaults) {
    ReadCenter();
    EXPECT_EQ(center.ShuntCalibrationMultiplier, 1.0);
    EXPECT_TRUE(run.EnglishUnits);
    EXPECT_EQ(center.AccelReferenceCalibrationDate, ZeroDate());
    EXPECT_EQ(center.ReferenceLoadCellExcitationVolts, 0);
    EXPECT_EQ(center.FileName, PathText(Master()));
    configuration =
        ProfileStrings("[FWD Calibration Center]\r\nEnglishUnits=False\r\nShuntCalibrationMultiplier=0\r\n");
    ReadCenter();
    EXPECT_EQ(center.ShuntCalibrationMultiplier, 0);
    EXPECT_FALSE(run.EnglishUnits);
}

TEST_F(CenterTabTest, ElevenNotesAreReadAndTenWritten) {
    Set("Notes", "1,2,3,4,5,6,7,8,9,10,11,12");
    ReadCenter();
    EXPECT_EQ(center.Notes[10], "11");
    EXPECT_EQ(Written("Notes"), "1,2,3,4,5,6,7,8,9,10");
}

TEST_F(CenterTabTest, ReadingTheMasterLeavesTheWritersKeysAlone) {
    configuration.Set("Device Information", "DeviceOwner", "somebody");
    Set("UniversalTestMachineName", "machine");
    ReadCenter();
    EXPECT_EQ(MasterText().find("DeviceOwner"), std::string::npos);
    EXPECT_EQ(Written("UniversalTestMachineName"), "(none)");
    // All keys in the order of the writer; values as set above or missing. The version comes from the build.
    std::string text = MasterText();
    const auto version = text.find("VersionNumber=Version");
    text.erase(version, text.find("\r\n", version) - version);
    EXPECT_EQ(text,
              "[Pavement Deflection Data Exchange File]\r\nPDDXVersionNumber=\r\nDelimiterSymbol=\r\nDecimalSymbol=\r\n"
              "[Operations Information]\r\nFileName=" +
                  PathText(Master()) +
                  "\r\nEndTime=10:00\r\nEndDate=03-09-2012\r\n[FWD Calibration Center]\r\nCalibrationCenter=\r\n"
                  "CalCenterIDCode=7\r\n\r\nCalibrationCenterOperator=A. Operator\r\n"
                  "SignalConditionerSerialNumber=\r\nAtoDBoardSerialNumber=\r\nReferenceLoadCellName=RLC-07\r\n"
                  "ReferenceLoadCellCalibrationDate=01-02-2012\r\nReferenceLoadCellExcitationVolts=0\r\n"
                  "ReferenceLoadCellGain=\r\nReferenceLoadCell+BVoltage=3.742\r\nReferenceLoadCell-BVoltage=-3.738\r\n"
                  "ReferenceLoadCellUnbalancedZero=0\r\nReferenceLoadCellUnits=pound-force\r\n"
                  "ReferenceLoadCellSensitivity=1000\r\n"
                  "ReferenceLoadCellCalibrationCoefficients=4012.3712345,1.8312,0,-0.26471,1E-05\r\n"
                  "ShuntCalibrationMultiplier=1\r\nAccelerometerSerialNumber=\r\nAccelerometerModelNumber=\r\n"
                  "AccelReferenceCalibrationDate=12/30/1899\r\nAccelRef+1GDC=2.97134\r\nAccelRef-1GDC=0\r\n"
                  "AccelRefCalibrationCoefficients=0,0,0,0\r\nAccelDailyCalibrationDate=09-Mar-2012\r\n"
                  "AccelDailyCalibrationTime=09:00\r\nAccelDailyCalibrationTemperatureUnit=Celsius\r\n"
                  "AccelDailyCalibrationTemp=21.5\r\nAccelExcitationVolts=0\r\nAccelGain=\r\nAccelNewSlopeFactor=0\r\n"
                  "AccelDailyCalibration+1GVoltage=0\r\nAccelDailyCalibration-1GVoltage=0\r\n"
                  "AccelDailyCalibration+1GFlipVoltage=0\r\nAccelSensitivity=0\r\nAccelDailyCalibration+1GStdDev=0\r\n"
                  "AccelDailyCalibration-1GStdDev=0\r\nAccelDailyCalibration+1GFlipStdDev=0\r\n"
                  "LocationOfFWDDataTransfer=\r\nEnglishUnits=True\r\nNotes=,,,,,,,,,\r\n");
}

TEST_F(CenterTabTest, CellsShowTheRecord) {
    ReadCenter();
    EXPECT_EQ(tab.txtCenterID.Text.Get(), "07");
    EXPECT_EQ(tab.txtRefLoadCellID.Text.Get(), "RLC-07 ");
    EXPECT_EQ(tab.txtRefLoadCellExcitation.Text.Get(), " 00");
    EXPECT_EQ(tab.txtRefLoadCellCalDate.Text.Get(), " 02-Jan-2012");
    EXPECT_EQ(tab.txtRefLoadCellCalA[0].Text.Get(), "  4.01237E+03");
    EXPECT_EQ(tab.txtRefLoadCellCalA[2].Text.Get(), "  0");
    EXPECT_EQ(tab.txtRefLoadCellCalA[3].Text.Get(), " -2.64710E-01");
    EXPECT_EQ(tab.txtCertP1GDC.Text.Get(), "2,971  ");
    EXPECT_EQ(tab.txtCertM1GDC.Text.Get(), "000 ");
    EXPECT_EQ(tab.txtDailyTime.Text.Get(), "09:00:00");
    EXPECT_EQ(tab.txtDailyTempUnit.Text.Get(), "°C");
    EXPECT_EQ(tab.txtSerialEquipment.Text.Get(),
              "     Signal Conditioner: \r\n\t    KUSB DAQ Board: \r\n\t          Accelerometer: \r\n\t"
              " Reference Load Cell: RLC-07");
    center.AccelDailyCalibrationPlus1GVoltage = 0.98;
    center.AccelDailyCalibrationMinus1GVoltage = -1.5;
    tab.FrameCalCenterUpdate();
    EXPECT_EQ(tab.txtDailyM1GDC.Text.Get(), "-1,500.0") << "the +1 g value alone chooses the digits of both";
}

struct StateCase {
    const char* what;
    std::function<void(SetUpProgram&)> prepare;
    bool complete;
    bool accelerometerLate;
    bool loadCellLate;
};

void PrintTo(const StateCase& state, std::ostream* out) {
    *out << state.what;
}

class CenterState : public ::testing::TestWithParam<StateCase>, public SetUpProgram {};

TEST_P(CenterState, IsShownAndDecidesTheApproval) {
    GetParam().prepare(*this);
    ReadCenter();
    const auto [what, prepare, complete, accelerometerLate, loadCellLate] = GetParam();
    EXPECT_EQ(tab.cmdApproveBellmarkCenter.Enabled, complete);
    EXPECT_EQ(tab.optCalCenter.BackColor.Get(), complete ? colors::complete : colors::mustBeUpdated);
    EXPECT_EQ(tab.cmdApproveBellmarkCenter.ToolTip.Get(), complete
                                                              ? "Click to confirm FWD Calibration Center information."
                                                              : "All orange cells must be updated before continuing.");
    EXPECT_EQ(setup.Focus(), complete ? &tab.cmdApproveBellmarkCenter : &tab.cmdAccelCalButton[1]);
    EXPECT_EQ(tab.txtSlopeFactor.BackColor.Get(), accelerometerLate ? colors::mustBeUpdated : colors::window);
    EXPECT_EQ(tab.cmdAccelCalButton[0].ToolTip.Get(),
              accelerometerLate ? "Accelerometer must be calibrated before continuing." : "");
    EXPECT_EQ(tab.txtRefLoadCellCalDate.BackColor.Get(), loadCellLate ? colors::warning : colors::window);
    EXPECT_EQ(tab.cmdLoadCellOnly[1].BackColor.Get(), loadCellLate ? colors::warning : colors::window);
    const bool operatorMissing = center.CalibrationCenterOperator.empty();
    EXPECT_EQ(tab.txtCenterOperator.BackColor.Get(), operatorMissing ? colors::mustBeUpdated : colors::window);
    if (loadCellLate) machine.dialogs.QueueAnswer(Answer::OK);
    tab.txtRefLoadCellCalDate.UserClick();
    EXPECT_EQ(run.LastMessageCode == 112, loadCellLate);
}

INSTANTIATE_TEST_SUITE_P(
    CenterTab, CenterState,
    ::testing::Values(
        StateCase{"complete and current", [](SetUpProgram&) {}, true, false, false},
        StateCase{"no operator", [](SetUpProgram& p) { p.Set("CalibrationCenterOperator", ""); }, false, false, false},
        StateCase{"accelerometer of 480 minutes ago",
                  [](SetUpProgram& p) { p.machine.clock.Set(MakeDateTime(2012, 3, 9, 17, 0)); }, true, false, false},
        StateCase{"accelerometer of 481 minutes ago",
                  [](SetUpProgram& p) { p.machine.clock.Set(MakeDateTime(2012, 3, 9, 17, 1)); }, false, true, false},
        StateCase{"accelerometer of the evening before",
                  [](SetUpProgram& p) {
                      p.Set("AccelDailyCalibrationTime", "23:55");
                      p.machine.clock.Set(MakeDateTime(2012, 3, 10, 0, 5));
                  },
                  false, true, false},
        StateCase{"late accelerometer, load cell only",
                  [](SetUpProgram& p) {
                      p.Set("AccelDailyCalibrationDate", "08-Mar-2012");
                      p.run.LoadCellOnly = true;
                  },
                  true, true, false},
        // 2012 is a leap year: 366 days from 9 March to 9 March.
        StateCase{"load cell of 365 days ago",
                  [](SetUpProgram& p) { p.Set("ReferenceLoadCellCalibrationDate", "03-10-2011"); }, true, false, false},
        StateCase{"load cell of 366 days ago",
                  [](SetUpProgram& p) { p.Set("ReferenceLoadCellCalibrationDate", "03-09-2011"); }, true, false,
                  true}));

TEST_F(CenterTabTest, EditedCellsStayInTheRecordAndAreLostFromTheFile) {
    ReadCenter();
    EXPECT_THROW(tab.txtRefLoadCellGain.UserEnter("5.00"), UserError) << "locked while showing";
    machine.dialogs.QueueAnswer(Answer::OK);
    tab.cmdWriteCalCenter.UserClick();
    EXPECT_EQ(tab.cmdWriteCalCenter.Caption.Get(), "&Save Calibration Center Config");
    for (const Control* other : std::initializer_list<Control*>{
             &setup.FWD.optFWD, &setup.DataAcq.optDataAcq, &setup.General.optGeneral, &tab.cmdApproveBellmarkCenter}) {
        EXPECT_FALSE(other->Enabled) << other->Name();
    }
    tab.txtRefLoadCellGain.UserEnter("5.00");
    tab.txtRefLoadCellCalDate.UserEnter("3/1/2012");
    tab.txtCertM1GDC.UserEnter("2,128.7");
    tab.txtCenterOperator.UserEnter("B. Operator");
    EXPECT_EQ(tab.txtRefLoadCellGain.Text.Get(), "5.00") << "what was typed stands while the tab is judged again";
    tab.cmdWriteCalCenter.UserClick();
    EXPECT_EQ(tab.cmdWriteCalCenter.Caption.Get(), "&Change Calibration Center Config");
    EXPECT_TRUE(tab.txtRefLoadCellGain.Locked);
    EXPECT_TRUE(setup.DataAcq.optDataAcq.Enabled);
    EXPECT_EQ(center.ReferenceLoadCellGain, "5.00");
    EXPECT_EQ(center.ReferenceLoadCellCalibrationDate, MakeDateTime(2012, 3, 1));
    EXPECT_DOUBLE_EQ(center.AccelRefMinus1GDC, 2.1287);
    EXPECT_EQ(center.ReferenceLoadCellCalibrationCoefficients[0], 4012.3712345) << "untouched: all its digits";
    EXPECT_EQ(Written("ReferenceLoadCellGain"), "(none)") << "the document as read replaced the file";
    EXPECT_EQ(Written("CalibrationCenterOperator"), "B. Operator");
    tab.cmdApproveBellmarkCenter.UserClick();
    EXPECT_EQ(Written("ReferenceLoadCellGain"), "5.00");
}

TEST_F(CenterTabTest, CellThatIsNoNumberOrDateIsToldByItsNameAndTakesNothing) {
    ReadCenter();
    machine.dialogs.QueueAnswer(Answer::OK);
    tab.cmdWriteCalCenter.UserClick();
    tab.txtRefLoadCellGain.UserEnter("5.00");
    struct Refused {
        TextBox& cell;
        const char* typed;
        const char* told;
    };
    const Refused refused[] = {
        {tab.txtRefLoadCellBPlus, "three", "Reference load cell, positive voltage: \"three\" is not a number."},
        {tab.txtRefLoadCellBPlus, "3,742", "Reference load cell, positive voltage: \"3,742\" is not a number here."},
        {tab.txtRefLoadCellCalA[0], "3995,2", "Reference load cell, coefficient A1: \"3995,2\" is not a number here."},
        {tab.txtRefLoadCellCalA[0], "3.995,2", "coefficient A1: \"3.995,2\" is not a number."},
        {tab.txtCertP1GDC, "2971,3", "Accelerometer, +1 g DC: \"2971,3\" is not a number."},
        {tab.txtRefLoadCellCalDate, "13/05/2026", "Reference load cell, date of calibration: \"13/05/2026\" is not a"},
        {tab.txtCertDate, "03/05/26", "Accelerometer, date of calibration: \"03/05/26\" is not a date."},
    };
    machine.dialogs.TakeBoxes();
    for (const auto& [cell, typed, told] : refused) {
        const std::string shown = cell.Text;
        cell.UserEnter(typed);
        machine.dialogs.QueueAnswer(Answer::OK);
        tab.cmdWriteCalCenter.UserClick();
        const auto boxes = machine.dialogs.TakeBoxes();
        ASSERT_EQ(boxes.size(), 1U) << typed;
        EXPECT_NE(boxes[0].find(told), std::string::npos) << boxes[0];
        EXPECT_EQ(setup.Focus(), &cell);
        EXPECT_EQ(center.ReferenceLoadCellGain, "");
        EXPECT_EQ(tab.cmdWriteCalCenter.Caption.Get(), "&Save Calibration Center Config") << "still editing";
        cell.UserEnter(shown);
    }
    tab.txtRefLoadCellCalA[0].UserEnter("4,012.37");
    tab.txtCertP1GDC.UserEnter("2,971");
    tab.cmdWriteCalCenter.UserClick();
    EXPECT_EQ(center.ReferenceLoadCellCalibrationCoefficients[0], 4012.37);
    EXPECT_EQ(center.AccelRefPlus1GDC, 2.971);
}

TEST_F(CenterTabTest, CenterIsChosenFromTheTable) {
    machine.Write("BellmarkCenters.csv", "ID,Name\r\n3,North\r\n12,\"South, coast\"\r\n");
    ReadCenter();
    tab.cmdSelectCenter.UserClick();
    EXPECT_FALSE(tab.fraLoadCell.Visible);
    EXPECT_FALSE(tab.fraAccelerometer.Visible);
    tab.grdCalCenters.UserDoubleClickCell(2, 0);
    EXPECT_EQ(center.CalCenterIDCode, 12);
    EXPECT_EQ(tab.txtCenterID.Text.Get(), "12");
    EXPECT_EQ(tab.txtCalCenter.Text.Get(), "South, coast");
    tab.cmdShowLC.UserClick();
    EXPECT_TRUE(tab.fraLoadCell.Visible);
    EXPECT_FALSE(tab.fraCalCentersID.Visible);
}

}  // namespace
}  // namespace bellmark
