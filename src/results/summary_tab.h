#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "controls/controls.h"
#include "controls/picture.h"
#include "platform/files.h"
#include "results/history_plot.h"

namespace bellmark {

class PDDXFile;
class ProfileStrings;
class Program;
struct CalibrationRun;

/// The tab of frmResults that says whose FWD was calibrated, and when it was the last time: its earlier calibrations
/// are read here from its file, and the run is added to them.
class SummaryTab {
    Screen& screen_;

  public:
    SummaryTab(Screen& screen, Program& program);
    ~SummaryTab();
    SummaryTab(const SummaryTab&) = delete;
    SummaryTab& operator=(const SummaryTab&) = delete;

    OptionButton optSummary{screen_, "optSummary", "tabs", "&Summary"};
    Frame fraSummary{screen_, "fraSummary", "Calibration Results Summary"};
    TextBox txtFWDOwner{fraSummary, "txtFWDOwner"};
    TextBox txtFWDUnit{fraSummary, "txtFWDUnit"};
    TextBox txtFWDOperator{fraSummary, "txtFWDOperator"};
    TextBox txtLastLCCalDate{fraSummary, "txtLastLCCalDate"};
    TextBox txtLastSensorCalDate{fraSummary, "txtLastSensorCalDate"};
    Button cmdReadHistory{fraSummary, "cmdReadHistory", "Read FWD Calibration &History"};
    Button cmdUpdateHistory{fraSummary, "cmdUpdateHistory", "&Update FWD Calibration History"};
    Label lblNewGains{fraSummary, "lblNewGains"};
    Label lblHistory{fraSummary, "lblHistory"};
    Label lblHistoryStep{fraSummary, "lblHistoryStep"};
    Grid grdFWDHistory{fraSummary, "grdFWDHistory"};
    ComboBox cboHistoryGain{fraSummary, "cboHistoryGain"};
    Label lblTrend{fraSummary, "lblTrend"};
    Picture pctHistory{fraSummary, "pctHistory"};
    Button cmdPrintHistory{fraSummary, "cmdPrintHistory", "&Print Screen"};

    void Fill();

    /// Reads the earlier calibrations from a PDDX file and shows them. The operator is warned when it is of another
    /// FWD.
    void ReadPDDXHistory(const Path& path);

    /// What is left to do here; null when there is nothing.
    Button* NextStep();

    std::function<void()> Changed;  ///< the history was read, or the run was added to it

  private:
    /// The history that was read last.
    struct History {
        std::string ofRun;  ///< name of the run's interim file: another run begins without a history
        std::string file;   ///< name, without folder
        std::unique_ptr<PDDXFile> document;
        std::shared_ptr<const ProfileStrings> strings;
        std::shared_ptr<const ProfileStrings> earlier;  ///< as the operator read them, without this run
        std::vector<EarlierCalibration> calibrations;
    };

    void cmdReadHistory_Click();
    void cmdUpdateHistory_Click();
    History HistoryIn(std::string_view text, const Path& path) const;
    void TakeHistory(History history);
    bool AskToAdd();
    bool HasOtherHeadings() const;
    void ShowTable();
    void ShowRow(int row, const EarlierCalibration& calibration);
    void ShowChoices();
    void ShowPlot();
    void ShowSteps();
    std::string HistoryText() const;
    std::optional<Path> DocumentForFWD() const;

    /// What of the run was added to which document.
    struct Added {
        Path document;
        bool loadCell = false;
        bool reference = false;
        bool relative = false;
        friend bool operator==(const Added&, const Added&) = default;
    };
    Added ToBeAdded() const;

    Program& program_;
    CalibrationRun& run_;
    History history_;
    Added added_;
};

}  // namespace bellmark
