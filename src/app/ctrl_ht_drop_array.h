#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "controls/controls.h"
#include "run/trial.h"

namespace bellmark {

/// The peaks of the trial in hand, heights by drops, with mean and standard deviation of each height. Its controls
/// belong to the screen; on a screen with two of them a prefix to the controls' names tells them apart.
class ctrlHtDropArray {
  public:
    ctrlHtDropArray(Place place, const CalibrationRun& run, const std::string& prefix = {});

    std::vector<std::unique_ptr<TextBox>> txtData;  ///< one per drop, in the order of the trial
    std::vector<std::unique_ptr<Label>> lblHeight;
    std::vector<std::unique_ptr<Label>> lblDrop;
    std::vector<std::unique_ptr<Label>> lblMean;
    std::vector<std::unique_ptr<Label>> lblStdDev;
    Label lblMeanLabel;
    Label lblStdDevLabel;
    Label lblNoise;

    std::function<void(int index)> CellClick;

    void CreateResultTable(int drops, int heights, bool labels = true);
    void FormatStyle();  ///< sets the picture of the values by procedure and units
    void Clear();
    void HighlightCell(int index, Color color);
    void ShowResult(int index, double value);
    void ShowResults();  ///< all accepted drops of the trial in hand, with their marks
    void ShowExcessNoise(int index, bool excess);

    /// Shows mean and standard deviation of a height, counted from 1. A height above 5 is ignored.
    void ShowHeightStats(int height, const PeakStatistics& statistics);
    /// The same for every height of a trial. peaks: those so far, from the first drop on.
    void ShowStatistics(std::span<const double> peaks);

    int Drops() const { return drops_; }
    int Heights() const { return heights_; }

  private:
    bool IsCell(int index) const { return index >= 0 && index < drops_ * heights_; }

    const CalibrationRun& run_;
    std::string picture_ = "#0.000";
    int drops_ = 0;
    int heights_ = 0;
};

}  // namespace bellmark
