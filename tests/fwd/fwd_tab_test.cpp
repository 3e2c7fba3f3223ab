// The FWD's tab: what it accepts in the folder tree and in its cells.
#include <gtest/gtest.h>

#include <filesystem>

#include "app/frm_main_menu.h"
#include "app/frm_master.h"
#include "app/program.h"
#include "pddx/pddx_file.h"
#include "run/paths.h"
#include "run/run_document.h"
#include "setup/folder_tree.h"
#include "setup/frm_setup.h"
#include "setup/sensor_checks.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

TEST(FolderTree, LevelsAreToldByTheNamesAround) {
    const Path root = "/drive";
    const std::pair<const char*, FolderLevel> cases[] = {
        {"/drive", FolderLevel::Improper},
        {"/drive/Bellmark", FolderLevel::Improper},
        {"/drive/Bellmark/Calibrations", FolderLevel::Other},
        {"/drive/Bellmark/Calibrations/Agency", FolderLevel::Owner},
        {"/drive/Bellmark/Calibrations/Agency/8002-101", FolderLevel::FWD},
        {"/drive/bellmark/CALIBRATIONS/Agency/8002-101", FolderLevel::FWD},
        {"/drive/Bellmark/Calibrations/Agency/8002-101/20120309", FolderLevel::Other},
        {"/drive/Bellmark/Elsewhere/Agency", FolderLevel::Owner},
        {"/drive/Other/Folder", FolderLevel::Other},
    };
    for (const auto& [folder, level] : cases) EXPECT_EQ(LevelOf(root, folder), level) << folder;
}

TEST(FolderTree, NamesThatNoFolderCanHave) {
    for (const auto& bad :
         {std::string(), std::string(".."), std::string(" Agency"), std::string("Agency "), std::string("a/b"),
          std::string("a\\b"), std::string("what?"), std::string("C:"), std::string("con"), std::string("LPT1.txt"),
          std::string("end."), std::string("tab\there"), std::string(300, 'x')}) {
        EXPECT_NE(FolderNameProblem(bad), "") << bad;
    }
    for (const auto& good : {"Agency", "8002-101", "St. Gallen & Co",
                             "Stra\xC3\x9F"
                             "e",
                             "console", "LPT", "a.b"}) {
        EXPECT_EQ(FolderNameProblem(good), "") << good;
    }
}

TEST(SensorChecks, FindWhatIsWrongWithEach) {
    const std::vector<std::string> serials{"D1", "D2", "D1", "D4-", "D5\xE2\x80\x93", "", "", "D8-A"};
    const std::vector<double> gains{1, 0, 1, 1, 1, 1, 1, 1};
    std::string found;
    for (const auto& fault : CheckSensors(serials, gains)) {
        found += fault.sameName ? 's' : '.';
        found += fault.endsInHyphen ? 'h' : '.';
        found += fault.zeroGain ? '0' : '.';
        found += ' ';
    }
    EXPECT_EQ(found, "s.. ..0 s.. .h. .h. s.. s.. ... ");
    EXPECT_EQ(CheckGain("1.02"), GainFault::None);
    EXPECT_EQ(CheckGain("0.000"), GainFault::Zero);
    EXPECT_EQ(CheckGain("1,02"), GainFault::NotANumber);
    EXPECT_EQ(CheckGain(""), GainFault::NotANumber);
}

TEST(FWDKeys, TheMakeFollowsTheLastMakerInTheName) {
    const std::pair<const char*, Make> cases[] = {{"Dynatest 8002", Make::Dynatest},
                                                  {"PRI Carl Bro", Make::CarlBro},
                                                  {"Carlson's JILS", Make::Jils},
                                                  {"KUAB 150", Make::Kuab},
                                                  {"Nobody's", Make::Jils}};  // stays unchanged
    for (const auto& [name, make] : cases) {
        PDDXFile document;
        document.Sections("Device Information").Elements("DeviceDesignationName").SetValue(name);
        CalibrationRun run;
        run.Manufacturer = Make::Jils;
        ReadFWDKeys(document, run);
        EXPECT_EQ(run.Manufacturer, make) << name;
    }
}

class FWDTabs : public testing::Test {
  protected:
    FWDTabs() {
        program.Register<MainFrameDoor>([](Program& owner) { return std::make_shared<frmMaster>(owner); });
        program.Register<MainMenuDoor>([](Program& owner) { return std::make_shared<frmMainMenu>(owner); });
        program.Run.ReviewMode = true;
        program.Run.InterimFolderName = "InterimCal20120309";
        machine.Write("InterimCal20120309/BellmarkCenterConfig.ini", "");
        setup.Show();
        tab.fraFWD.Visible = true;
        tab.optFWDClick();
    }

    /// The path that the list shows for an entry.
    void ClickFolder(const std::string& name) {
        for (int row = 0; row < tab.DirFWDOwner.Rows(); ++row) {
            const std::string& text = tab.DirFWDOwner.Cell(row, 0);
            if (text == name || text == "    " + name) return tab.DirFWDOwner.UserClickCell(row, 0);
        }
        FAIL() << "no folder " << name;
    }

    void CreateOwnerAndFWD() {
        machine.dialogs.QueueInput("Agency");
        tab.cmdNewOwner.UserClick();
        machine.dialogs.QueueInput("8002-101");
        machine.dialogs.QueueAnswer(Answer::OK);
        tab.cmdNewFWD.UserClick();
    }

    std::string AllFolders() const {
        std::string names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(machine.folder.Folder())) {
            if (entry.is_directory()) names += entry.path().string() + '\n';
        }
        return names;
    }

    std::string OnlyBox() {
        const auto boxes = machine.dialogs.TakeBoxes();
        return boxes.size() == 1 ? boxes.front() : "boxes: " + std::to_string(boxes.size());
    }

    TestMachine machine;
    Program program{machine.machine};
    frmSetup setup{program};
    FWDTab& tab = setup.FWD;
    const Path tree = machine.folder / "Bellmark/Calibrations";
};

TEST_F(FWDTabs, OwnerAndFWDAreCreatedInTheTree) {
    EXPECT_TRUE(std::filesystem::is_directory(tree));
    tab.txtFWDModel.Text = "8002";
    tab.txtFWDSerial.Text = "101";
    CreateOwnerAndFWD();
    EXPECT_TRUE(std::filesystem::is_directory(tree / "Agency/8002-101"));
    EXPECT_EQ(program.Run.DeviceOwner, "Agency");
    EXPECT_EQ(program.Run.DeviceName, "8002-101");
    EXPECT_EQ(program.Run.DeviceFolder, tree / "Agency/8002-101");
    const std::string copy = machine.files.ReadBytes(machine.folder / "InterimCal20120309/BellmarkCenterConfig.ini");
    EXPECT_NE(copy.find("DeviceOwner=Agency\r\n"), std::string::npos) << copy;
    EXPECT_NE(copy.find("DeviceOwnerSNFolder=" + PathText(tree / "Agency/8002-101") + "\r\n"), std::string::npos)
        << copy;
    EXPECT_TRUE(program.Run.InterimCalOpen);
}

struct NameCase {
    const char* name;
    const char* told;
};

TEST_F(FWDTabs, BadNamesChangeNothing) {
    std::filesystem::create_directories(tree / "Agency/8002-101");
    tab.optFWDClick();
    const std::string tooLong(300, 'x');
    const std::string before = AllFolders();
    for (const bool fwd : {false, true}) {
        if (fwd) ClickFolder("Agency");
        const std::string chosen = program.Run.DeviceOwner;
        for (const NameCase& c :
             {NameCase{"", fwd ? "No FWD name was supplied.  Please try again."
                               : "No owner name was supplied.  Please try again."},
              fwd ? NameCase{"8002-101", "FWD Name already exists.  Select exisitng FWD or type in a new name."}
                  : NameCase{"AGENCY", "Owner already exists.  Select exisitng owner or type in a new name."},
              NameCase{"..", "it is not a name"}, NameCase{"../../outside", "it holds the character /"},
              NameCase{"C:\\outside", "it holds the character"}, NameCase{" Agency", "begins or ends with a blank"},
              NameCase{"Agency ", "begins or ends with a blank"}, NameCase{"aux", "it is the name of a device"},
              NameCase{tooLong.c_str(), "longer than 120 characters"},
              NameCase{"\xD0\x96", "a character that the program's files cannot hold"}}) {
            machine.dialogs.QueueInput(c.name);
            machine.dialogs.QueueAnswer(Answer::OK);
            (fwd ? tab.cmdNewFWD : tab.cmdNewOwner).UserClick();
            EXPECT_NE(OnlyBox().find(c.told), std::string::npos) << c.name;
        }
        EXPECT_EQ(program.Run.DeviceOwner, chosen);
        EXPECT_TRUE(program.Run.DeviceFolder.empty());
    }
    EXPECT_EQ(AllFolders(), before);
}

TEST_F(FWDTabs, WithoutTheFolderOfAnOwnerNoFWDIsCreated) {
    std::filesystem::create_directories(tree / "Agency");
    tab.optFWDClick();
    const auto told = [&] {
        machine.dialogs.QueueAnswer(Answer::OK);
        tab.cmdNewFWD.UserClick();
        return OnlyBox().find("Please select or create an owner before creating an FWD folder.") != std::string::npos;
    };
    EXPECT_TRUE(told());
    program.Run.DeviceOwner = "of a review, which knows no folder";
    EXPECT_TRUE(told());
    ClickFolder("Agency");
    std::filesystem::remove(tree / "Agency");
    const std::string before = AllFolders();
    EXPECT_TRUE(told());
    EXPECT_EQ(AllFolders(), before);
}

TEST_F(FWDTabs, AFolderThatCannotBeMadeIsTold) {
    machine.files.FailFromWrite(1);
    machine.dialogs.QueueInput("Agency");
    machine.dialogs.QueueAnswer(Answer::OK);
    tab.cmdNewOwner.UserClick();
    EXPECT_NE(OnlyBox().find("The folder could not be created."), std::string::npos);
    EXPECT_EQ(program.Run.DeviceOwner, "");
}

TEST_F(FWDTabs, AnotherOwnerDoesNotTakeOverTheFWD) {
    std::filesystem::create_directories(tree / "Agency/8002-101");
    std::filesystem::create_directories(tree / "Other");
    tab.optFWDClick();
    auto& menu = dynamic_cast<frmMainMenu&>(program.The<MainMenuDoor>());
    for (const char* name : {"Agency", "8002-101"}) ClickFolder(name);
    program.Run.SetupComplete = true;
    setup.AllowCalibration();
    EXPECT_TRUE(menu.cmdCalLoadCell.Enabled);
    for (const char* name : {"..", "..", "Other"}) ClickFolder(name);
    EXPECT_FALSE(program.Run.SetupComplete);
    setup.cmdMainMenu.UserClick();
    EXPECT_FALSE(menu.cmdCalLoadCell.Enabled) << "the results would have no place";
    EXPECT_EQ(program.Run.DeviceOwner, "Other");
    EXPECT_TRUE(program.Run.DeviceFolder.empty());
    EXPECT_EQ(program.Run.DeviceName, "");
    EXPECT_EQ(tab.txtFWDUnitFolder.Text.Get(), "(Create using directory structure)");
    EXPECT_NE(tab.lblMissing.Caption.Get().find("the FWD's folder"), std::string::npos);
}

TEST_F(FWDTabs, FoldersAreChosenByTheirLevel) {
    std::filesystem::create_directories(tree / "Agency/8002-101");
    tab.optFWDClick();
    ClickFolder("Agency");
    EXPECT_EQ(program.Run.DeviceOwner, "Agency");
    EXPECT_EQ(tab.txtFWDUnitFolder.Text.Get(), "(Create using directory structure)");
    ClickFolder("8002-101");
    EXPECT_EQ(tab.txtFWDUnitFolder.Text.Get(), "8002-101");
    machine.dialogs.QueueAnswer(Answer::OK);
    for (int up = 0; up < 3; ++up) ClickFolder("..");  // the third click is at the tree's first folder
    EXPECT_NE(OnlyBox().find("You have selected an improper directory!"), std::string::npos);
    EXPECT_EQ(tab.txtCalibrationFolder.Text.Get(), PathText(tree / "Agency/8002-101"));
}

TEST_F(FWDTabs, AFolderThatVanishedIsTold) {
    std::filesystem::create_directories(tree / "Agency");
    tab.optFWDClick();
    std::filesystem::remove_all(tree / "Agency");
    machine.dialogs.QueueAnswer(Answer::OK);
    ClickFolder("Agency");
    EXPECT_NE(OnlyBox().find("The folder is no longer there"), std::string::npos);
    EXPECT_EQ(program.Run.DeviceOwner, "");
}

constexpr const char* configuration =
    "[Device Information]\r\nDeviceDesignationName = Dynatest\r\nLoadCellSerialNumber = LC1\r\n"
    "SensorSerialNumbers = D1, D2, D3, D4, D5, D6\r\n"
    "[Device Configuration]\r\nNumberOfDeflectionSensors = 6\r\n"
    "[Device Calibration]\r\nLoadCellCalibrationCenterGain = 1.01\r\n"
    "SensorCalibrationCenterGain = 1.001, 1.002, 1.003, 1.004, 1.005, 1.006\r\n";

TEST_F(FWDTabs, ACompleteTabLetsTheOperatorGoOn) {
    CreateOwnerAndFWD();
    EXPECT_FALSE(setup.cmdNext.Enabled);
    machine.dialogs.QueueFile(machine.Write("transfer/fwd.ddx", configuration));
    tab.cmdReadFWDConfig.UserClick();
    EXPECT_EQ(tab.lblMissing.Caption.Get(), "");
    EXPECT_TRUE(setup.cmdNext.Enabled);
    EXPECT_EQ(tab.optFWD.BackColor.Get(), colors::complete);
    EXPECT_EQ(program.Run.Sensor[5].InitialGain, 1.006);
    EXPECT_EQ(tab.grdSensor.Cell(6, 2), "1.0060");

    tab.grdSensor.UserEditCell(2, 1, "D1");
    EXPECT_FALSE(setup.cmdNext.Enabled);
    EXPECT_EQ(tab.grdSensor.CellColor(1, 1), colors::mustBeUpdated);
    EXPECT_EQ(tab.grdSensor.CellColor(2, 1), colors::mustBeUpdated);
    EXPECT_TRUE(tab.lblSameName.Visible);
    tab.grdSensor.UserEditCell(2, 1, "D2");
    EXPECT_TRUE(setup.cmdNext.Enabled);

    machine.dialogs.QueueAnswer(Answer::OK);
    tab.grdSensor.UserEditCell(3, 2, "zero");
    machine.dialogs.QueueAnswer(Answer::OK);
    tab.grdSensor.UserEditCell(3, 2, "0.000");
    EXPECT_EQ(tab.grdSensor.Cell(3, 2), "1.0030");
}

TEST_F(FWDTabs, NoSerialNumberHoldsAComma) {
    CreateOwnerAndFWD();
    machine.dialogs.QueueFile(machine.Write("transfer/fwd.ddx", configuration));
    tab.cmdReadFWDConfig.UserClick();
    machine.dialogs.TakeBoxes();
    machine.dialogs.QueueAnswer(Answer::OK);
    tab.grdSensor.UserEditCell(2, 1, "D,2");
    EXPECT_NE(OnlyBox().find("cannot hold a comma"), std::string::npos);
    EXPECT_EQ(tab.grdSensor.Cell(2, 1), "D2");
    EXPECT_EQ(program.Run.Sensor[1].SerialNumber, "D2");
    for (const auto& [box, kept] : {std::pair(&tab.txtFWDLCSerial, "LC1"), {&tab.txtFWDSerial, ""}}) {
        machine.dialogs.QueueAnswer(Answer::OK);
        box->UserEnter("8,1");
        EXPECT_NE(OnlyBox().find("cannot hold a comma"), std::string::npos);
        EXPECT_EQ(box->Text.Get(), kept);
    }
    EXPECT_EQ(program.Run.LoadCellSerialNumber, "LC1");
}

struct FileCase {
    const char* what;
    const char* line;  ///< of the good file
    const char* becomes;
    const char* told;  ///< reported as missing, or in a box
    int sensors;
    double lastGain;
};

TEST_F(FWDTabs, WhatAFileLacksOrHasWrongIsTold) {
    CreateOwnerAndFWD();
    machine.dialogs.TakeBoxes();
    const FileCase cases[] = {
        {"no sensors", "Sensors = 6", "Sensors = 0", "Still missing: the number of sensors", 0, 0},
        {"three sensors", "Sensors = 6", "Sensors = 3", "The file lists 6 serial numbers for 3 sensors", 3, 0},
        {"a sensor too many", "Sensors = 6", "Sensors = 13", "tells of 13 deflection sensors", 6, 1.006},
        {"a hundred sensors", "Sensors = 6", "Sensors = 100", "tells of 100 deflection sensors", 6, 1.006},
        {"a number in words", "Sensors = 6", "Sensors = six", "Still missing: the number of sensors", 0, 0},
        {"fewer serial numbers", "D4, D5, D6", "D4", "a serial number of its own for each sensor", 6, 1.006},
        {"a comma in a serial number", "D4, D5, D6", "D4, D5, D,6", "The file lists 7 serial numbers for 6 sensors", 6,
         1.006},
        {"a comma in the load cell's", "Number = LC1", "Number = LC,1", "A blank stands in its place", 6, 1.006},
        {"a gain in words", "1.005, 1.006", "1.005, good", "Still missing: the gain of each sensor", 6, 0},
        {"decimal commas", "1.001, 1.002, 1.003, 1.004, 1.005, 1.006", "1,001, 1,002, 1,003, 0,004, 0,005, 0,006",
         "The file lists 12 gains for 6 sensors", 6, 3},
        {"no gain of the load cell", "Gain = 1.01", "Gain = none", "Still missing: the gain of the load cell", 6,
         1.006},
        {"a date that is none", "[Device Calibration]",
         "[Device Calibration]\r\nLoadCellCalibrationCenterDate = 31-Feb-2012", "", 6, 1.006}};
    for (const FileCase& c : cases) {
        SCOPED_TRACE(c.what);
        std::string file = configuration;
        machine.dialogs.QueueFile(machine.Write("transfer/good.ddx", file));
        tab.cmdReadFWDConfig.UserClick();
        ASSERT_EQ(tab.lblMissing.Caption.Get(), "");
        file.replace(file.find(c.line), std::string(c.line).size(), c.becomes);
        machine.dialogs.QueueFile(machine.Write("transfer/bad.ddx", file));
        machine.dialogs.QueueAnswer(Answer::OK);
        tab.cmdReadFWDConfig.UserClick();
        std::string told = tab.lblMissing.Caption.Get();
        for (const auto& box : machine.dialogs.TakeBoxes()) told += box;
        EXPECT_NE(told.find(c.told), std::string::npos) << told;
        EXPECT_EQ(program.Run.NumberSensors, c.sensors);
        EXPECT_EQ(tab.grdSensor.Rows(), c.sensors + 1);
        EXPECT_EQ(c.sensors == 6 ? program.Run.Sensor[5].InitialGain : 0, c.lastGain);
        EXPECT_EQ(program.Run.LoadCellCalibrationDate, ZeroDate());
    }
}

TEST_F(FWDTabs, OnlyAKuabAsksForItsKindOfSensors) {
    program.Run.NumberSensors = 6;
    tab.optFWDClick();
    EXPECT_EQ(tab.grdSensor.Cell(1, 0), "1");
    machine.dialogs.QueueAnswer(Answer::OK);
    tab.cboFWDMfg.UserChoose("KUAB");
    EXPECT_EQ(tab.grdSensor.Cell(1, 0), "0");
    EXPECT_EQ(tab.grdSensor.Cell(6, 0), "5");
    EXPECT_EQ(OnlyBox(), "boxes: 0") << "not before the list is left";
    tab.cboFWDMfg.UserLeave();
    EXPECT_NE(OnlyBox().find("Please choose the sensor type for the FWD"), std::string::npos);
    EXPECT_EQ(setup.Focus(), &tab.cboSensorType);
    EXPECT_FALSE(tab.cmdReadFWDConfig.Enabled);
    tab.cboFWDMfg.UserLeave();
    EXPECT_EQ(OnlyBox(), "boxes: 0") << "left without a new choice";
    tab.cboSensorType.UserChoose("Seismometer");
    EXPECT_TRUE(tab.cmdReadFWDConfig.Enabled);
    tab.cboFWDMfg.UserChoose("JILS");
    EXPECT_FALSE(tab.cboSensorType.Visible);
    EXPECT_TRUE(tab.fraSetupHelp.Visible);
    EXPECT_EQ(program.Run.NumberDropsPerLoadLevel, 8);
}

}  // namespace
}  // namespace bellmark
