#include "app/app_main.h"

#include "app/center_file.h"
#include "app/doors.h"
#include "app/interim_store.h"
#include "app/journal.h"
#include "app/monthly_run.h"
#include "app/program.h"
#include "app/start_cleaning.h"
#include "app/workflow.h"
#include "pddx/pddx_file.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "run/center_keys.h"
#include "run/paths.h"

namespace bellmark {

namespace {

/// With hardware the run is live. The simulated board reports itself as available, but nothing can be measured with it.
void LookForBoard(Program& program) {
    auto& acquisition = program.The<AcquisitionDoor>();
    const std::string name = acquisition.FindBoard();
    program.Header.SetBoardName(name, acquisition.IsDemonstration() ? colors::suggestedNext : colors::buttonFace);
    program.Run.ReviewMode = !acquisition.HasHardware();
    if (program.Run.ReviewMode) {
        // A board that is there and cannot be used: the operator is told why.
        if (const std::string problem = acquisition.WhyNoBoard(); !problem.empty()) {
            program.Log(problem);
            program.ShowBox(problem + "\r\nBellmark starts in Review Mode.", box::exclamation);
        }
        program.The<StartFormDoor>().AnnounceReviewMode();
        program.Header.SetBoardName("No Board: Review");
    }
    program.The<SetupDoor>().SetReviewChoices(program.Run.ReviewMode);
}

void ResetForStart(CalibrationRun& run) {
    run.NumberSensors = 7;
    run.AcquisitionActive = false;
    run.BurstCapture = false;
    run.EnglishUnits = true;
}

bool OperatorWantsToQuit(Program& program) {
    constexpr int cannotReadInterim = 304;
    const CalibrationRun& run = program.Run;
    if (run.LastMessageCode == cannotReadInterim) return true;
    if (run.MonthlyCalibration) return MayQuitMonthlyRun(program);
    if (!run.InterimCalOpen) return true;
    return program.ShowBox("Do you really want to quit?\r\nThere is an uncompleted interim calibration.",
                           box::yesNo + box::question) == Answer::Yes;
}

}  // namespace

void Main(Program& program) {
    if (!program.Services.isFirstInstance) {
        program.Services.endProgram();
        return;
    }
    // An interrupted review has left the machine's own configuration set aside.
    PutBackCenterConfiguration(program);
    CalibrationRun& run = program.Run;
    run.StartDirectory = program.Services.startDirectory;
    run.NewCalibration = true;
    CleanUpAtStart(program);
    run.InterimCalOpen = FileExists(program.Services.files, program.Folder() / interimPattern);
    auto& startForm = program.The<StartFormDoor>();
    if (run.InterimCalOpen) startForm.EnableInterimButtons();

    program.The<MainFrameDoor>();
    LookForBoard(program);
    if (run.InterimCalOpen) startForm.AllowReadingCenter(false);
    program.The<AcquisitionDoor>().InitializeBoard();
    ResetForStart(run);

    program.The<SetupDoor>().Open();
    program.The<MainMenuDoor>().Open();
    startForm.ShowStart();
}

bool CheckCriticalFiles(Program& program) {
    const FileSystem& files = program.Services.files;
    auto& missing = program.Run.MessageParameters;
    missing = {};
    double count = 0;
    const bool lacksCenter = !program.Run.ReviewMode && !FileExists(files, program.Folder() / centerConfigName);
    if (lacksCenter && !program.The<SetupDoor>().ReadCalCenter()) return false;
    if (!FileExists(files, program.Folder() / converterName)) {
        missing[2] = "Ferrylink";
        ++count;
    }
    missing[5] = count;
    if (count > 0) {
        program.Compose(300);
        missing = {};
        program.ShowComposed(box::critical + box::helpButton);
        QuitApplication(program);
        return false;
    }
    missing = {};
    if (program.Run.ReviewMode) return true;
    if (!ReadCenterConfiguration(program, MasterCenterConfig(program))) return false;
    program.The<SetupDoor>().ShowCenter();
    return true;
}

void NameInterimStore(Program& program) {
    const std::string name = "InterimCal" + Format(program.Now(), "yyyymmdd");
    const FileSystem& files = program.Services.files;
    // A data folder with files in it counts as taken, too: they may be all that is left of a calibration.
    const auto isTaken = [&](const std::string& wanted) {
        return FileExists(files, program.Folder() / (wanted + ".DDX")) ||
               !files.FileNames(program.Folder() / wanted).empty();
    };
    std::string free = name;
    for (int n = 1; isTaken(free); ++n) free = name + '-' + NumberText(n);
    program.Run.InterimFileName = free + ".DDX";
    program.Run.InterimFolderName = free;
    program.Run.StoreIsOfThisSitting = true;
    BeginJournal(program, "The calibration is begun");
}

void LeaveInterimStore(Program& program) {
    program.Run.InterimFileName.clear();
    program.Run.InterimFolderName.clear();
    program.Run.StoreIsOfThisSitting = false;
}

void BeginFreshRun(Program& program) {
    const CalibrationRun& old = program.Run;
    CalibrationRun fresh;
    fresh.ReviewMode = old.ReviewMode;
    fresh.StartDirectory = old.StartDirectory;
    fresh.InterimFileName = old.InterimFileName;
    fresh.InterimFolderName = old.InterimFolderName;
    fresh.StoreIsOfThisSitting = old.StoreIsOfThisSitting;
    fresh.AccelChannel = old.AccelChannel;
    fresh.LoadCellChannel = old.LoadCellChannel;
    fresh.TempChannel = old.TempChannel;
    // Both came with the center's configuration, which has just been read.
    fresh.EnglishUnits = old.EnglishUnits;
    fresh.TransferFileVersion2 = old.TransferFileVersion2;
    program.Run = fresh;
    program.Drop = DropRecord();
    program.Run.NewCalibration = true;
    program.Run.ProgramStarted = true;
    program.Run.IsInHand = true;
    program.RunDocument = std::make_unique<PDDXFile>();
    program.Header.SetRunName("");
    program.The<SetupDoor>().BeginRun();
    if (program.Has<PrerequisitesDoor>()) program.The<PrerequisitesDoor>().ResetPreReq();
}

bool StartNewCalibration(Program& program) {
    LeaveInterimStore(program);
    if (!CheckCriticalFiles(program)) return false;
    BeginFreshRun(program);
    // Always searches for a free name: a calibration finished today may have left its file.
    NameInterimStore(program);
    auto& startForm = program.The<StartFormDoor>();
    startForm.AllowReadingCenter(false);
    startForm.StartShowTimer();
    auto& setup = program.The<SetupDoor>();
    setup.Open();
    if (!program.Run.CenterApproved) setup.OpenCenterPage();
    program.The<MainMenuDoor>().MarkAccelerometer();
    program.Run.CurrentProcedure = Procedure::Setup;
    program.Run.CurrentProcStep = step::setupCenter;
    program.Header.SetProcedureName("");
    // The set-up adds single values to the run's copy of the center's configuration. A review reads that copy, so it
    // must be complete. During a review the copy comes from the file that was chosen.
    if (!program.Run.ReviewMode) WriteCenterDataToPDDX(program, RunCenterConfig(program));
    return true;
}

bool OpenInterimCalibration(Program& program) {
    try {
        if (!CheckCriticalFiles(program)) return false;
    } catch (const std::exception& error) {
        // Only the run's copy of the center's configuration was not written, and that is not needed to go on.
        program.Log(error.what());
    }
    EnterLoadedRun(program);
    return true;
}

void EnterLoadedRun(Program& program) {
    program.Header.SetFWDOwnerName(program.Run.DeviceOwner);
    program.Header.SetFWDNameCtrl(program.Run.DeviceName);
    program.The<MainMenuDoor>().MarkAccelerometer();
    if (!EnterUnacceptedTrial(program)) program.The<MainMenuDoor>().Open();
}

void QuitApplication(Program& program) {
    // The set-up is left in the same way as by its own button.
    if (program.Run.ProgramStarted && program.Run.InterimCalOpen && program.Run.CurrentProcedure == Procedure::Setup) {
        SaveInterimCalibration(program);
    }
    if (program.Run.ReviewMode) PutBackCenterConfiguration(program);
    bool quit = true;
    if (!program.Run.InterimCalOpen && program.Run.StoreIsOfThisSitting) {
        RemoveInterimCalibration(program);
    } else {
        quit = OperatorWantsToQuit(program);
    }
    PurgeEmptyInterimFolders(program);
    if (!quit) return;
    // A pending capture is aborted, so that the running handlers can finish.
    program.Run.DropAborted = true;
    program.The<AcquisitionDoor>().Unload();
    program.Services.endProgram();
}

void PurgeEmptyInterimFolders(Program& program) {
    FileSystem& files = program.Services.files;
    for (const auto& name : ListSubFolders(files, program.Folder(), "InterimCal")) {
        const Path folder = program.Folder() / PathFromText(name);
        try {
            const bool holdsNothing = files.FileNames(folder).empty() && files.FolderNames(folder).empty();
            if (holdsNothing) files.RemoveFolder(folder);
        } catch (const FileError& error) {
            // Left for the next quit; the program still ends.
            program.Log(error.what());
        }
    }
}

}  // namespace bellmark
