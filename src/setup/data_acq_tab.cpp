#include "setup/data_acq_tab.h"

#include "app/center_file.h"
#include "app/program.h"
#include "platform/dialogs.h"
#include "platform/numbers.h"
#include "run/center_keys.h"

namespace bellmark {

namespace {
constexpr int channels = 8;
}

std::string WithFinalSeparator(std::string folder) {
    const bool ends = folder.empty() || folder.back() == '/' || folder.back() == '\\';
    return ends ? folder : folder + static_cast<char>(Path::preferred_separator);
}

DataAcqTab::DataAcqTab(Screen& screen, Program& program) : screen_(screen), program_(program) {
    txtFWDDataFolder.Leave = [this] { txtFWDDataFolder_Leave(); };
    txtSimDataLocation.Leave = [this] { txtSimDataLocation_Leave(); };
    cmdBrowse.Click = [this] { PickFolder(txtFWDDataFolder, "Select folder where FWD data files are located."); };
    cmdBrowseData.Click = [this] {
        PickFolder(txtSimDataLocation, "Select folder where simulation files are located.");
    };
    std::vector<std::string> numbers;
    for (int channel = 0; channel < channels; ++channel) numbers.push_back(NumberText(channel));
    for (ComboBox* list : {&cboLoadCellChannel, &cboAccelChannel, &cboTempChannel}) list->Items = numbers;
    cboLoadCellChannel.Click = [this] { program_.Run.LoadCellChannel = cboLoadCellChannel.ListIndex; };
    cboAccelChannel.Click = [this] { program_.Run.AccelChannel = cboAccelChannel.ListIndex; };
    cboTempChannel.Click = [this] { program_.Run.TempChannel = cboTempChannel.ListIndex; };
    ShowChannels();
}

void DataAcqTab::ShowChannels() {
    cboLoadCellChannel.ListIndex = program_.Run.LoadCellChannel;
    cboAccelChannel.ListIndex = program_.Run.AccelChannel;
    cboTempChannel.ListIndex = program_.Run.TempChannel;
}

void DataAcqTab::ShowTransferFolder() {
    const std::string& folder = program_.Center.LocationOfFWDDataTransfer;
    if (!folder.empty()) txtFWDDataFolder.Text = WithFinalSeparator(folder);
}

void DataAcqTab::SetFolders(const std::string& folder) {
    txtFWDDataFolder.Text = folder;
    txtSimDataLocation.Text = folder;
    txtFWDDataFolder_Leave();
    txtSimDataLocation_Leave();
}

void DataAcqTab::ShowSimDataFolder() {
    txtSimDataLocation.Text = WithFinalSeparator(PathText(program_.Run.SimDataLocation));
}

void DataAcqTab::txtFWDDataFolder_Leave() {
    txtFWDDataFolder.Text = WithFinalSeparator(txtFWDDataFolder.Text);
    program_.Center.LocationOfFWDDataTransfer = txtFWDDataFolder.Text;
}

void DataAcqTab::txtSimDataLocation_Leave() {
    program_.Run.SimDataLocation = PathFromText(WithFinalSeparator(txtSimDataLocation.Text));
    ShowSimDataFolder();
}

void DataAcqTab::PickFolder(TextBox& cell, const std::string& prompt) {
    const Path picked = BrowseForFolder(program_.Services.dialogs, prompt);
    if (picked.empty()) return;
    const std::string folder = WithFinalSeparator(PathText(program_.Services.startDirectory / picked));
    cell.Text = folder;
    if (&cell == &txtSimDataLocation) program_.Run.SimDataLocation = PathFromText(folder);
    program_.Center.LocationOfFWDDataTransfer = folder;
    WriteKey(program_, MasterCenterConfig(program_), centerSection, "LocationOfFWDDataTransfer", folder);
}

}  // namespace bellmark
