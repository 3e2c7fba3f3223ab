#include "setup/frm_setup.h"

#include <gtest/gtest.h>

#include "app/app_main.h"
#include "app/frm_main_menu.h"
#include "app/frm_master.h"
#include "app/interim_store.h"
#include "pddx/pddx_file.h"
#include "platform/text.h"
#include "run/trial.h"
#include "tests/setup/set_up_program.h"
#include "tests/support/idle_doors.h"

namespace bellmark {
namespace {

struct FrmSetupTest : ::testing::Test, SetUpProgram {};

TEST_F(FrmSetupTest, CancelOfTheNoticeStillAsksForAFileWithABoard) {
    run.ReviewMode = false;
    const Path other = machine.Write("other/BellmarkCenterConfig.ini", configuration.Text());
    machine.dialogs.QueueAnswer(Answer::Cancel);
    machine.dialogs.QueueFile(std::nullopt);
    tab.cmdReadCalCenter.UserClick();
    EXPECT_EQ(run.LastMessageCode, 101);
    EXPECT_EQ(center.ReferenceLoadCellName, "") << "a cancelled dialog changes nothing";
    machine.dialogs.QueueAnswer(Answer::Cancel);
    machine.dialogs.QueueFile(other);
    tab.cmdReadCalCenter.UserClick();
    EXPECT_EQ(center.ReferenceLoadCellName, "RLC-07");
    const std::string folder = PathText(machine.folder / "other/");
    EXPECT_EQ(setup.DataAcq.txtFWDDataFolder.Text.Get(), folder);
    EXPECT_EQ(setup.DataAcq.txtSimDataLocation.Text.Get(), folder);
}

TEST_F(FrmSetupTest, AFileThatIsNoConfigurationIsRefusedAndLeavesTheRunsCopy) {
    ReadCenter();
    const std::string before = MasterText();
    const Path foreign = machine.Write("foreign.ini", "[Settings]\r\nReferenceLoadCellName=other\r\n");
    const Path letters = machine.Write("letters.ini", std::string("\xFF\xFE\x41\x01", 4));
    Set("ReferenceLoadCellCalibrationDate", "13/05/2026");
    const Path date = machine.Write("date.ini", configuration.Text());
    Set("ReferenceLoadCellCalibrationDate", "05/13/26");
    const Path shortYear = machine.Write("year.ini", configuration.Text());
    for (const Path& file : {machine.folder / "missing.ini", foreign, letters, date, shortYear}) {
        machine.dialogs.QueueAnswer(Answer::OK);
        EXPECT_FALSE(ReadCenterConfiguration(*program, file));
        const auto boxes = machine.dialogs.TakeBoxes();
        ASSERT_EQ(boxes.size(), 1U) << file;
        const bool namesKey = boxes[0].find("ReferenceLoadCellCalibrationDate is") != std::string::npos;
        EXPECT_EQ(namesKey, file == date || file == shortYear) << boxes[0];
        EXPECT_EQ(MasterText(), before);
        EXPECT_EQ(center.ReferenceLoadCellName, "RLC-07");
        EXPECT_EQ(program->CenterDocument->Sections("FWD Calibration Center").Elements("ReferenceLoadCellName").Value(),
                  "RLC-07")
            << "what is saved from the document later is still the center's";
    }
}

TEST_F(FrmSetupTest, ConfigurationOfWideCharactersIsRead) {
    Set("CalibrationCenterOperator", "M. Müller");
    std::string wide = "\xFF\xFE";
    for (const char byte : ToWindows1252(configuration.Text())) wide += {byte, '\0'};
    machine.Write("BellmarkCenterConfig.ini", wide);
    EXPECT_TRUE(ReadCenterConfiguration(*program, Master()));
    EXPECT_EQ(center.CalibrationCenterOperator, "M. Müller");
    EXPECT_EQ(center.ReferenceLoadCellPlusVoltage, 3.742);
    EXPECT_EQ(Written("ReferenceLoadCellName"), "RLC-07");
}

struct TriggerCase {
    bool english;
    const char* fileUnits;
    const char* typed;
    const char* shown;
    double stored;
    const char* inOtherUnits;
};

TEST_F(FrmSetupTest, LoadTriggerIsStoredInTheUnitsOfTheFile) {
    // 100 / 0.0044482 = 22481.0; 800 x 0.0044482 = 3.5586, which the file keeps with one decimal.
    const TriggerCase cases[] = {{true, "pound-force", "1234", "1,234", 1234, "5.5"},
                                 {true, "kN", "800", "800", 3.6, "3.6"},
                                 {false, "pound-force", "100", "100.0", 22481, "22,481"},
                                 {false, "kN", "3.56", "3.6", 3.6, "809"}};
    for (const auto& [english, fileUnits, typed, shown, stored, inOtherUnits] : cases) {
        SCOPED_TRACE(std::string(fileUnits) + (english ? " English" : " metric"));
        center.ReferenceLoadCellUnits = fileUnits;
        setup.General.fraGeneral.Visible = true;
        (english ? setup.General.optEnglish : setup.General.optMetric).UserClick();
        EXPECT_EQ(setup.General.txtTriggerUnits.Caption.Get(), english ? "pound-force" : "kN");
        setup.General.loadCellTrigger.UserEnter(typed);
        EXPECT_EQ(setup.General.loadCellTrigger.Text.Get(), shown);
        EXPECT_DOUBLE_EQ(center.ReferenceLoadCellSensitivity, stored);
        (english ? setup.General.optMetric : setup.General.optEnglish).UserClick();
        EXPECT_EQ(setup.General.loadCellTrigger.Text.Get(), inOtherUnits);
    }
    Set("EnglishUnits", "False");
    ReadCenter();
    EXPECT_EQ(setup.General.loadCellTrigger.Text.Get(), "4.4482") << "1000 pounds as read, unrounded";
}

TEST_F(FrmSetupTest, CalibrationsAreAllowedByWhatIsSetUpAndCurrent) {
    auto& menu = dynamic_cast<frmMainMenu&>(program->The<MainMenuDoor>());
    auto& frame = dynamic_cast<frmMaster&>(program->The<MainFrameDoor>());
    ReadCenter();
    for (int inputs = 0; inputs < 8; ++inputs) {
        SCOPED_TRACE(inputs);
        run.SetupComplete = (inputs & 1) != 0;
        run.LoadCellOnly = (inputs & 2) != 0;
        const bool isCurrent = (inputs & 4) != 0;
        machine.clock.Set(MakeDateTime(2012, 3, isCurrent ? 9 : 10, 10));
        setup.AllowCalibration();
        const bool sensors = run.SetupComplete && !run.LoadCellOnly && isCurrent;
        EXPECT_EQ(menu.cmdCalLoadCell.Enabled, run.SetupComplete);
        EXPECT_EQ(frame.mnuLoadCell.Enabled, run.SetupComplete);
        EXPECT_EQ(menu.cmdRefCalDefAccel.Enabled, sensors);
        EXPECT_EQ(frame.mnuDeflectionSensors.Enabled, sensors);
        frame.SetMeasuring(true);
        frame.AllowWhatNeedsARun(true);
        EXPECT_FALSE(frame.mnuSetup.Enabled || frame.mnuLoadCell.Enabled || frame.mnuDeflectionSensors.Enabled);
        frame.SetMeasuring(false);
        EXPECT_TRUE(frame.mnuSetup.Enabled);
        EXPECT_EQ(frame.mnuDeflectionSensors.Enabled, sensors);
    }
}

struct NextCase {
    const char* what;
    bool started, triggerSet, dropsSet, loadCellOnly;
    Procedure procedure;
    int step;
    const char* header;
    Control* focus;  ///< while the set-up continues; nullptr after its end
};

TEST_F(FrmSetupTest, NextGoesOnByWhatWasMeasured) {
    GeneralTab& general = setup.General;
    constexpr const char* sensors = "FWD Deflection Sensor Calibration";
    constexpr const char* loadCell = "FWD Load Cell Calibration";
    const NextCase cases[] = {
        {"both measured", true, true, true, false, Procedure::Sensors, 41, sensors, nullptr},
        {"trigger measured", true, true, false, false, Procedure::Setup, 15, "", &general.cmdNumberDrops},
        {"drops approved for the load cell", true, false, true, true, Procedure::LoadCell, 51, loadCell, nullptr},
        {"nothing measured", true, false, false, false, Procedure::Setup, 15, "", &general.cmdTriggerLevel},
        {"nothing measured, load cell only", true, false, false, true, Procedure::Setup, 15, "",
         &general.cmdApproveCalSeq},
        {"edit of a run", false, false, false, false, Procedure::None, 0, "", nullptr},
        {"edit of a run, both measured", false, true, true, false, Procedure::None, 0, "", nullptr}};
    program->Register<ReferenceReviewDoor>([](Program&) { return std::make_shared<IdleReferenceReview>(); });
    program->Register<CenterRelativeDoor>([](Program&) { return std::make_shared<IdleCenterRelative>(); });
    for (const NextCase& c : cases) {
        SCOPED_TRACE(c.what);
        ReadCenter();
        BeginFreshRun(*program);
        NameInterimStore(*program);
        CompleteFWD();
        setup.Show();
        tab.cmdApproveBellmarkCenter.UserClick();
        run.CurrentProcedure = Procedure::Setup;
        run.ProgramStarted = c.started;
        run.TriggerLevelSet = c.triggerSet;
        run.NumberDropsSet = c.dropsSet;
        run.LoadCellOnly = c.loadCellOnly;
        program->Header.SetProcedureName("");
        setup.cmdNext.Enabled = true;
        setup.cmdNext.UserClick();
        EXPECT_EQ(run.CurrentProcedure, c.procedure);
        EXPECT_EQ(run.CurrentProcStep, c.step);
        EXPECT_EQ(program->Header.ProcedureName(), c.header);
        const bool ended = c.focus == nullptr;
        EXPECT_EQ(run.SetupComplete, ended);
        EXPECT_EQ(run.ProgramStarted, !ended);
        EXPECT_EQ(program->Screens.Front()->Name(), ended ? "frmMainMenu" : "frmSetup");
        EXPECT_TRUE(machine.Has(PathFromText(run.InterimFileName)));
        if (ended) continue;
        EXPECT_EQ(setup.Focus(), c.focus);
        EXPECT_FALSE(setup.cmdNext.Enabled);
        EXPECT_TRUE(general.fraGeneral.Visible && general.fraTestSequence.Visible);
    }
}

TEST_F(FrmSetupTest, TheWayOnOpensWhenTriggerLevelAndNumberOfDropsAreMeasured) {
    GeneralTab& general = setup.General;
    for (const bool triggerFirst : {true, false}) {
        SCOPED_TRACE(triggerFirst);
        ReadCenter();
        BeginFreshRun(*program);
        NameInterimStore(*program);
        setup.BeginRun();
        CompleteFWD();
        setup.cmdNext.Enabled = false;
        run.CurrentProcedure = Procedure::Setup;
        run.ProgramStarted = true;
        run.CenterApproved = true;
        EXPECT_EQ(general.cboNumDrops.Items.Get().size(), 6U);
        EXPECT_EQ(general.cmdTriggerLevel.BackColor.Get(), colors::buttonFace);
        setup.Show();
        setup.ReturnFromMeasurement();
        EXPECT_FALSE(run.TriggerLevelSet || run.NumberDropsSet || setup.cmdNext.Enabled);
        for (const bool trigger : {triggerFirst, !triggerFirst}) {
            if (trigger) {
                center.AccelSensitivity = 0.175;
                setup.TriggerLevelMeasured();
                EXPECT_EQ(general.AccelTrigger.Text.Get(), "0.18");
                EXPECT_EQ(general.cmdTriggerLevel.BackColor.Get(), colors::complete);
                general.AccelTrigger.UserEnter("0.180");
                EXPECT_EQ(general.AccelTrigger.BackColor.Get(), colors::complete) << "the same level";
                // NEXT points to what is still missing.
                setup.cmdNext.UserClick();
                EXPECT_FALSE(triggerFirst && setup.cmdNext.Enabled);
            } else {
                run.LoadCellOnly = true;
                run.NumberDropsPerLoadLevel = 8;
                setup.NumberOfDropsMeasured();
                EXPECT_EQ(setup.cmdNext.Enabled, triggerFirst);
                EXPECT_EQ(general.cboNumDrops.Items.Get(), (std::vector<std::string>{"8", "9", "10"}));
                EXPECT_EQ(general.cboNumDrops.DisplayText(), "8");
                EXPECT_EQ(general.cboNumDrops.BackColor.Get(), colors::complete);
                EXPECT_FALSE(run.LoadCellOnly);
                general.cboNumDrops.UserChoose("10");
                EXPECT_EQ(run.NumberDropsPerLoadLevel, 10) << "by its text, not by its place";
            }
        }
        if (setup.cmdNext.Enabled && run.ProgramStarted) setup.cmdNext.UserClick();
        EXPECT_EQ(run.CurrentProcedure, Procedure::Sensors);
        EXPECT_EQ(run.CurrentProcStep, step::sensorsTrialStarts);
    }
}

TEST_F(FrmSetupTest, OtherHeightsNeedTheirOwnNumberOfDrops) {
    ReadCenter();
    run.NumberDropsPerLoadLevel = 8;
    run.NumberLoadLevels = 4;
    setup.NumberOfDropsMeasured();
    setup.General.cboNumHeights.UserChoose("4");
    EXPECT_TRUE(run.NumberDropsSet);
    setup.General.cboNumHeights.UserChoose("3");
    EXPECT_FALSE(run.NumberDropsSet);
    EXPECT_EQ(setup.General.cboNumDrops.BackColor.Get(), colors::mustBeUpdated);
    EXPECT_EQ(setup.General.cboNumDrops.DisplayText(), "8");
    EXPECT_EQ(setup.General.cboNumDrops.Items.Get().size(), 6U);
}

TEST_F(FrmSetupTest, NothingLeadsPastACenterThatWasNotApproved) {
    ReadCenter();
    BeginFreshRun(*program);
    run.CurrentProcedure = Procedure::Setup;
    EXPECT_FALSE(setup.cmdNext.Enabled);
    // Saving changes of the center opens the tabs.
    machine.dialogs.QueueAnswer(Answer::OK);
    tab.cmdWriteCalCenter.UserClick();
    tab.cmdWriteCalCenter.UserClick();
    EXPECT_FALSE(setup.cmdNext.Enabled);
    setup.cmdNext.Enabled = true;
    setup.General.optGeneral.UserClick();
    setup.cmdNext.UserClick();
    EXPECT_TRUE(tab.fraCalCenter.Visible);
    EXPECT_EQ(run.CurrentProcStep, step::none);
    tab.cmdApproveBellmarkCenter.UserClick();
    EXPECT_TRUE(setup.FWD.fraFWD.Visible) << "the first approval leads to the FWD";
    EXPECT_FALSE(setup.FWD.fraFWDData.Visible);
}

TEST_F(FrmSetupTest, LoadCellOnlySequenceEntersTheLoadCellProcedure) {
    ReadCenter();
    machine.Write("Review/BellmarkCenterConfig.ini", configuration.Text());
    machine.dialogs.QueueFile(machine.folder / "Review/BellmarkCenterConfig.ini");
    setup.ReadCalCenter();
    ASSERT_TRUE(run.ProgramStarted);
    EXPECT_FALSE(setup.General.optGeneral.Enabled);
    CompleteFWD();
    tab.cmdApproveBellmarkCenter.UserClick();
    EXPECT_TRUE(setup.General.optGeneral.Enabled);
    setup.General.optGeneral.UserClick();
    machine.dialogs.QueueAnswer(Answer::Yes);
    setup.General.cmdApproveCalSeq.UserClick();
    EXPECT_EQ(run.LastMessageCode, 160);
    setup.cmdNext.UserClick();
    EXPECT_EQ(run.CurrentProcedure, Procedure::LoadCell);
    EXPECT_EQ(run.CurrentProcStep, step::loadCellTrialStarts);
    EXPECT_TRUE(run.SetupComplete);
    EXPECT_TRUE(machine.Has("InterimCal20120309.DDX"));
    EXPECT_TRUE(machine.Has("InterimCal20120309/InterimCal.DDX"));
    auto& menu = dynamic_cast<frmMainMenu&>(program->The<MainMenuDoor>());
    EXPECT_EQ(program->Screens.Front(), &menu);
    EXPECT_TRUE(menu.cmdCalLoadCell.Enabled);
    EXPECT_FALSE(menu.cmdRefCalDefAccel.Enabled);
}

TEST_F(FrmSetupTest, NextOfANewSetUpNeedsAllOfTheFWD) {
    ReadCenter();
    BeginFreshRun(*program);
    NameInterimStore(*program);
    run.CurrentProcedure = Procedure::Setup;
    setup.Show();
    tab.cmdApproveBellmarkCenter.UserClick();
    setup.General.optGeneral.UserClick();
    machine.dialogs.QueueAnswer(Answer::Yes);
    setup.General.cmdApproveCalSeq.UserClick();
    setup.cmdNext.UserClick();
    EXPECT_TRUE(setup.FWD.fraFWD.Visible);
    EXPECT_FALSE(run.SetupComplete);
    EXPECT_FALSE(setup.cmdNext.Enabled);
    setup.FWD.cboFWDMfg.UserChoose("KUAB");
    CompleteFWD();
    EXPECT_EQ(setup.FWD.lblMissing.Caption.Get(), "Still missing: the type of the KUAB's sensors");
    EXPECT_FALSE(setup.cmdNext.Enabled);
    setup.FWD.cboSensorType.UserChoose("Seismometer");
    EXPECT_TRUE(setup.cmdNext.Enabled);
    setup.cmdNext.UserClick();
    EXPECT_TRUE(run.SetupComplete);
}

TEST_F(FrmSetupTest, WhatTrialsRestOnCannotBeChanged) {
    ReadCenter();
    setup.Show();
    run.EnglishUnits = true;
    run.RelTrialInHand.emplace();
    run.SetupComplete = true;
    setup.RefreshFromRun();
    setup.General.optGeneral.UserClick();
    machine.dialogs.QueueAnswer(Answer::OK);
    setup.General.optMetric.UserClick();
    EXPECT_TRUE(run.EnglishUnits) << "readings in mils stay in mils";
    EXPECT_EQ(machine.dialogs.TakeBoxes().size(), 1U);
    run.RelTrialInHand.reset();

    run.NumberSensors = 9;
    const auto isOpen = [&] {
        setup.FWD.optFWDClick();
        const FWDTab& fwd = setup.FWD;
        return std::vector<bool>{fwd.cboFWDMfg.Enabled, fwd.cboNumSensors.Enabled, fwd.grdSensor.IsEditable(1, 2),
                                 !fwd.txtFWDLCGain.Locked};
    };
    EXPECT_EQ(isOpen(), (std::vector{true, true, true, true}));
    run.LoadCellRefTrials = 1;
    EXPECT_EQ(isOpen(), (std::vector{false, true, true, false}));
    run.RefTrials = 1;
    EXPECT_EQ(isOpen(), (std::vector{false, false, false, false}));
    EXPECT_FALSE(setup.FWD.cmdReadFWDConfig.Enabled);
    run.LoadCellRefTrials = run.RefTrials = 0;
    EXPECT_EQ(isOpen(), (std::vector{true, true, true, true}));
}

TEST_F(FrmSetupTest, ATrialInHandIsRepeatedOrKeepsItsUnitsAndSequence) {
    GeneralTab& general = setup.General;
    const struct {
        const char* what;
        std::function<void()> change;
        TrialShape wanted;
    } cases[] = {
        {"units", [&] { general.optMetric.UserClick(); }, {4, 6, false}},
        {"heights", [&] { general.cboNumHeights.UserChoose("3"); }, {3, 6, true}},
        {"drops", [&] { general.cboNumDrops.UserChoose("8"); }, {4, 8, true}},
        {"another center's units", [&] { ReadCenter(); }, {4, 6, false}},
    };
    const TrialShape old{4, 6, true};
    ReadCenter();
    Set("EnglishUnits", "False");
    setup.Show();
    for (const auto& c : cases) {
        for (const auto& [waits, answer] : {std::pair(false, Answer::No), {false, Answer::Yes}, {true, Answer::OK}}) {
            SCOPED_TRACE(c.what + NumberText(static_cast<int>(answer)));
            run.CurrentProcedure = Procedure::LoadCell;
            run.EnglishUnits = true;
            run.NumberLoadLevels = 4;
            run.NumberDropsPerLoadLevel = 6;
            BeginTrial(run);
            TakePeak(run.Trial, 6028, {});
            TakePeak(run.Trial, 6031, {});
            run.FlagUnacceptedTrial = waits;
            run.CurrentProcedure = Procedure::Setup;
            run.SetupComplete = true;
            setup.RefreshFromRun();
            general.optGeneral.UserClick();
            machine.dialogs.QueueAnswer(answer);
            c.change();
            const auto boxes = machine.dialogs.TakeBoxes();
            ASSERT_EQ(boxes.size(), 1U);
            EXPECT_NE(boxes[0].find(waits ? "counts from the next trial on" : "2 of the 24 drops of a trial"),
                      std::string::npos);
            const TrialShape& shown = answer == Answer::No ? old : c.wanted;
            EXPECT_EQ(TrialOfSetup(run).shape, shown);
            EXPECT_EQ(general.optEnglish.IsChosen(), shown.englishUnits);
            EXPECT_EQ(general.cboNumHeights.DisplayText(), NumberText(shown.heights));
            EXPECT_EQ(general.cboNumDrops.DisplayText(), NumberText(shown.dropsPerHeight));
            EXPECT_EQ(run.Trial.DropSequenceIndex, answer == Answer::Yes ? 0 : 2);
            EXPECT_EQ(run.Trial.shape, old);
        }
    }
    run.FlagUnacceptedTrial = false;
    LeaveTrial(run);
    general.optGeneral.UserClick();
    general.cboNumDrops.UserChoose("10");
    EXPECT_EQ(run.NumberDropsPerLoadLevel, 10) << "nothing is asked without a trial in hand";
}

TEST_F(FrmSetupTest, ACommaInANoteBecomesASemicolonInSight) {
    ReadCenter();
    BeginFreshRun(*program);
    run.SetupComplete = true;
    setup.RefreshFromRun();
    setup.Show();
    setup.General.optGeneral.UserClick();
    setup.General.txtComment.UserEnter("windy, 12 degrees\r\nsecond");
    EXPECT_EQ(setup.General.txtComment.Text.Get(), "windy; 12 degrees\r\nsecond");
    EXPECT_EQ(center.Notes[0], "windy; 12 degrees");
    EXPECT_EQ(center.Notes[1], "second");
}

TEST_F(FrmSetupTest, ReviewKeepsTheMachinesOwnConfiguration) {
    ReadCenter();
    const std::string own = MasterText();
    Set("CalibrationCenterOperator", "of the review");
    machine.Write("Review/BellmarkCenterConfig.ini", configuration.Text());
    machine.dialogs.QueueFile(machine.folder / "Review/BellmarkCenterConfig.ini");
    setup.ReadCalCenter();
    EXPECT_EQ(center.CalibrationCenterOperator, "of the review");
    EXPECT_EQ(ReadTextFile(machine.files, machine.folder / "BellmarkCenterConfigOld.Ini"), own);
    EXPECT_TRUE(machine.Has("InterimCal20120309/BellmarkCenterConfig.ini"));
    QuitApplication(*program);
    EXPECT_EQ(MasterText(), own);
    EXPECT_FALSE(machine.Has("BellmarkCenterConfigOld.Ini"));
    EXPECT_FALSE(machine.Has("InterimCal20120309")) << "nothing was saved";
}

/// Opens the only interim calibration of the list.
void OpenListed(Program& program) {
    Main(program);
    auto& about = dynamic_cast<frmAbout&>(program.The<StartFormDoor>());
    ASSERT_EQ(about.grdInterim.Rows(), 2);
    about.grdInterim.UserClickCell(1, 0);
    about.cmdOpenInterimCal.UserClick();
}

TEST_F(FrmSetupTest, NewRunHarmsNoneOfTheListed) {
    ReadCenter();
    for (const bool deleted : {false, true}) {
        machine.Write("InterimCal20120309.DDX", "[Operations Information]\r\nEndDate=03-09-2012\r\n");
        const Path copy = machine.Write("InterimCal20120309/BellmarkCenterConfig.ini", "its own");
        const auto next = AssembleProgram(machine.machine);
        Main(*next);
        next->Run.ReviewMode = false;
        auto& about = dynamic_cast<frmAbout&>(next->The<StartFormDoor>());
        about.grdInterim.UserClickCell(1, 0);
        if (deleted) {
            machine.dialogs.QueueAnswer(Answer::Yes);
            about.cmdDeleteInterim.UserClick();
        }
        StartNewCalibration(*next);
        EXPECT_EQ(next->Run.InterimFileName, deleted ? "InterimCal20120309.DDX" : "InterimCal20120309-1.DDX");
        EXPECT_EQ(ReadTextFile(machine.files, copy) == "its own", !deleted);
        machine.files.RemoveFolder(machine.folder / "InterimCal20120309-1");
    }
}

TEST_F(FrmSetupTest, SavedRunGoesOnInAnotherProgramAlsoFromItsCopy) {
    ReadCenter();
    run.InterimFileName = "InterimCal20120309.DDX";
    run.InterimFolderName = "InterimCal20120309";
    run.DeviceOwner = "Owner";
    run.EnglishUnits = false;  // the center's file says English: the run's own units must win
    run.LoadCellRefTrials = 1;
    run.LCTrialShape[0] = {4, 6, false};
    run.LCTrial[0].RefDropData = {26.8125};
    run.CurrentProcedure = Procedure::LoadCell;
    run.CurrentProcStep = step::loadCellTrial;
    center.Notes[0] = "windy";
    center.LocationOfFWDDataTransfer = "/of the run/";
    ASSERT_TRUE(SaveInterimCalibration(*program));
    for (const bool fromCopy : {false, true}) {
        if (fromCopy) machine.files.RemoveFile(machine.folder / "InterimCal20120309.DDX");
        const auto resumed = AssembleProgram(machine.machine);
        if (fromCopy) machine.dialogs.QueueAnswer(Answer::Yes);
        machine.dialogs.QueueAnswer(Answer::Yes);
        OpenListed(*resumed);
        EXPECT_EQ(resumed->Run.DeviceOwner, "Owner");
        EXPECT_FALSE(resumed->Run.EnglishUnits);
        EXPECT_EQ(resumed->Run.LoadCellRefTrials, 1);
        EXPECT_EQ(resumed->Run.LCTrial[0].RefDropData[0], 26.8125);
        EXPECT_EQ(resumed->Run.CurrentProcStep, step::loadCellTrial);
        EXPECT_TRUE(resumed->Run.SetupComplete);
        EXPECT_EQ(resumed->Center.ReferenceLoadCellName, "RLC-07") << "the master, where the run has no copy";
        auto& menu = dynamic_cast<frmMainMenu&>(resumed->The<MainMenuDoor>());
        EXPECT_EQ(resumed->Screens.Front(), &menu);
        EXPECT_TRUE(menu.cmdCalLoadCell.Enabled);
        const auto& shown = dynamic_cast<const frmSetup&>(resumed->The<SetupDoor>());
        EXPECT_EQ(shown.General.txtComment.Text.Get(), "windy");
        EXPECT_EQ(shown.DataAcq.txtFWDDataFolder.Text.Get(), "/of the run/");
        EXPECT_EQ(machine.dialogs.TakeBoxes().size(), fromCopy ? 2U : 1U);
        EXPECT_TRUE(machine.Has("InterimCal20120309.DDX"));
    }
}

}  // namespace
}  // namespace bellmark
