#pragma once

#include "controls/controls.h"
#include "platform/files.h"

namespace bellmark {

class Program;

/// The tab of frmSetup with the folders of the FWD's files and of simulated drops, and the channels of the board.
class DataAcqTab {
    Screen& screen_;

  public:
    DataAcqTab(Screen& screen, Program& program);

    OptionButton optDataAcq{screen_, "optDataAcq", "tabs", "&Data Acquisition"};
    Frame fraDataAcq{screen_, "fraDataAcq", "Data Acquisition"};
    TextBox txtFWDDataFolder{fraDataAcq, "txtFWDDataFolder"};
    Button cmdBrowse{fraDataAcq, "cmdBrowse", "&Browse"};
    TextBox txtSimDataLocation{fraDataAcq, "txtSimDataLocation"};
    Button cmdBrowseData{fraDataAcq, "cmdBrowseData", "Bro&wse"};
    ComboBox cboLoadCellChannel{fraDataAcq, "cboLoadCellChannel"};
    ComboBox cboAccelChannel{fraDataAcq, "cboAccelChannel"};
    ComboBox cboTempChannel{fraDataAcq, "cboTempChannel"};

    /// Sets both folders, as if the folder had been typed into both cells.
    void SetFolders(const std::string& folder);
    void ShowSimDataFolder();
    void ShowChannels();
    void ShowTransferFolder();

  private:
    void txtFWDDataFolder_Leave();
    void txtSimDataLocation_Leave();
    void PickFolder(TextBox& cell, const std::string& prompt);

    Program& program_;
};

/// The text with the machine's separator at the end; an empty one stays empty.
std::string WithFinalSeparator(std::string folder);

}  // namespace bellmark
