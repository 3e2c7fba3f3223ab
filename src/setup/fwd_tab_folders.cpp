// Choosing or creating owner and FWD in the tree of their folders.
#include "app/center_file.h"
#include "app/program.h"
#include "controls/screen.h"
#include "platform/dialogs.h"
#include "platform/text.h"
#include "run/center_keys.h"
#include "setup/folder_tree.h"
#include "setup/fwd_tab.h"

namespace bellmark {

namespace {

constexpr const char* notFWDLevel =
    "You have not selected an FWD level directory. Please select an FWD or add a new one";

std::string NameOf(const Path& folder) {
    return PathText(folder.filename());
}

}  // namespace

void FWDTab::EnsureRoot() {
    const Path root = CalibrationsFolder(program_.Folder());
    if (!program_.Services.files.IsFolder(root)) CreateFolder(root);
    const Path& device = program_.Run.DeviceFolder;
    ShowFolder(!device.empty() && program_.Services.files.IsFolder(device) ? device : root);
}

void FWDTab::ShowOwnerAndFWD() {
    const CalibrationRun& run = program_.Run;
    txtFWDOwner.Text = run.DeviceOwner.empty() ? createFolderText : run.DeviceOwner;
    txtFWDUnitFolder.Text = run.DeviceFolder.empty() ? createFolderText : NameOf(run.DeviceFolder);
    txtFWDOwner.BackColor = run.DeviceOwner.empty() ? colors::mustBeUpdated : colors::window;
}

/// The list holds the folder above, the folder itself, and those below it.
void FWDTab::ShowFolder(const Path& folder) {
    shownFolder_ = folder;
    listedFolders_.clear();
    DirFWDOwner.Resize(0, 1);
    const auto add = [&](const std::string& text, const Path& listed) {
        DirFWDOwner.AddRow({text});
        listedFolders_.push_back(listed);
    };
    if (folder != DriveRoot(program_.Folder())) add("..", folder.parent_path());
    add(NameOf(folder), folder);
    DirFWDOwner.SelectedRow = DirFWDOwner.Rows() - 1;
    for (const auto& name : program_.Services.files.FolderNames(folder))
        add("    " + name, folder / PathFromText(name));
    txtCalibrationFolder.Text = PathText(folder);
}

bool FWDTab::CreateFolder(const Path& folder) {
    try {
        program_.Services.files.CreateFolder(folder);
        return true;
    } catch (const FileError& error) {
        program_.Log(error.what());
        program_.ShowBox(std::string("The folder could not be created.\r\n") + error.what(), box::critical);
        return false;
    }
}

void FWDTab::DirFWDOwner_Click(int row) {
    const Path folder = listedFolders_.at(static_cast<std::size_t>(row));
    if (!program_.Services.files.IsFolder(folder)) {
        program_.ShowBox("The folder is no longer there:\r\n" + PathText(folder), box::exclamation);
        EnsureRoot();
        return;
    }
    // The owner's and the FWD's names are stored in records; the folders above them are only their place on disk.
    const std::string ownNames = PathText(folder.lexically_relative(DriveRoot(program_.Folder())));
    if (const auto problem = UnstorableCharacter(ownNames); !problem.empty()) {
        program_.ShowBox("This folder cannot be used: " + problem + '.', box::exclamation);
        return;
    }
    ShowFolder(folder);
    switch (LevelOf(DriveRoot(program_.Folder()), folder)) {
        case FolderLevel::Improper:
            RefuseFolder();
            break;
        case FolderLevel::Owner:
            SelectOwner(folder);
            break;
        case FolderLevel::FWD:
            SelectFWD(folder);
            break;
        case FolderLevel::Other:
            break;
    }
}

void FWDTab::RefuseFolder() {
    program_.ShowBox(
        "You have selected an improper directory!\r\nPlease select or add an Owner and then\r\n"
        " select or add an FWD.",
        box::critical);
    EnsureRoot();
    ShowOwnerAndFWD();
}

void FWDTab::SelectOwner(const Path& folder) {
    CalibrationRun& run = program_.Run;
    run.OwnerFolder = folder;
    run.DeviceOwner = NameOf(folder);
    if (run.DeviceFolder.parent_path() != folder) {
        // The FWD of another owner must not end up under this owner's name. The results have no folder until an FWD is
        // chosen.
        run.DeviceFolder.clear();
        run.DeviceName.clear();
        run.SetupComplete = false;
    }
    ShowOwnerAndFWD();
    StoreFolderKeys(false);
    CheckFWDData();
    if (Stored) Stored();
}

void FWDTab::SelectFWD(const Path& folder) {
    CalibrationRun& run = program_.Run;
    run.DeviceFolder = folder;
    run.OwnerFolder = folder.parent_path();
    run.DeviceOwner = NameOf(run.OwnerFolder);
    run.DeviceName = NameOf(folder);
    ShowOwnerAndFWD();
    StoreFolderKeys(true);
    CheckFWDData();
    if (Stored) Stored();
}

void FWDTab::StoreFolderKeys(bool withFWD) {
    CalibrationRun& run = program_.Run;
    const Path file = RunCenterConfig(program_);
    WriteKey(program_, file, "Device Information", "DeviceOwner", run.DeviceOwner);
    WriteKey(program_, file, "Device Calibration", "DeviceOwnerFolder", PathText(run.OwnerFolder));
    if (withFWD) {
        WriteKey(program_, file, "Device Calibration", "DeviceOwnerSNFolder", PathText(run.DeviceFolder));
        WriteKey(program_, file, "Device Calibration", "DeviceOwnerSNDateFolder", PathText(run.OutputFolder));
    }
    run.InterimCalOpen = true;
}

void FWDTab::cmdNewOwner_Click() {
    constexpr const char* title = "New FWD Owner";
    const auto name = program_.Services.dialogs.Input("Input name of new FWD owner", "FWD Owner", "");
    if (!name || name->empty()) {
        program_.ShowBox("No owner name was supplied.  Please try again.", box::exclamation, title);
        return;
    }
    if (const auto problem = FolderNameProblem(*name); !problem.empty()) {
        program_.ShowBox("This name cannot be given to a folder: " + problem + '.', box::exclamation, title);
        return;
    }
    const Path root = CalibrationsFolder(program_.Folder());
    if (!ExistingSubfolder(program_.Services.files, root, *name).empty()) {
        program_.ShowBox("Owner already exists.  Select exisitng owner or type in a new name.", box::exclamation,
                         title);
        return;
    }
    const Path folder = root / PathFromText(*name);
    if (!CreateFolder(folder)) return;
    ShowFolder(folder);
    SelectOwner(folder);
}

void FWDTab::cmdNewFWD_Click() {
    CalibrationRun& run = program_.Run;
    if (run.DeviceOwner.empty() || !program_.Services.files.IsFolder(run.OwnerFolder)) {
        program_.ShowBox("Please select or create an owner before creating an FWD folder.", box::exclamation,
                         "New FWD");
        return;
    }
    const std::string proposal = txtFWDModel.Text.Get() + '-' + txtFWDSerial.Text.Get();
    const auto name = program_.Services.dialogs.Input("Input new FWD name", "FWD Name", proposal);
    if (!name || name->empty()) {
        program_.ShowBox("No FWD name was supplied.  Please try again.", box::exclamation, "New FWD Name");
        return;
    }
    if (const auto problem = FolderNameProblem(*name); !problem.empty()) {
        program_.ShowBox("This name cannot be given to a folder: " + problem + '.', box::exclamation, "New FWD Name");
        return;
    }
    if (!ExistingSubfolder(program_.Services.files, run.OwnerFolder, *name).empty()) {
        program_.ShowBox("FWD Name already exists.  Select exisitng FWD or type in a new name.", box::exclamation,
                         "New FWD");
        return;
    }
    const Path folder = run.OwnerFolder / PathFromText(*name);
    if (!CreateFolder(folder)) return;
    ShowFolder(folder);
    if (LevelOf(DriveRoot(program_.Folder()), folder) != FolderLevel::FWD) {
        program_.ShowBox(notFWDLevel, box::exclamation);
        CheckFWDData();
        return;
    }
    const std::string question =
        "You have selected the following:\r\nOwner: " + NameOf(folder.parent_path()) + "\r\nFWD: " + NameOf(folder);
    if (program_.ShowBox(question, box::okCancel) == Answer::OK) SelectFWD(folder);
    CheckFWDData();
}

}  // namespace bellmark
