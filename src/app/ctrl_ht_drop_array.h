#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "controls/controls.h"
#include "run/calibration_run.h"

namespace bellmark {

/// Index, from 0, of the height that a drop of a trial belongs to, and of the drop within it.
inline int HeightOfDrop(int index, int dropsPerHeight) {
    return index / dropsPerHeight;
}
inline int DropInHeight(int index, int dropsPerHeight) {
    return index % dropsPerHeight;
}

/// Largest standard deviation to be expected within a height, in the units of the mean (mils or microns in procedure 4,
/// otherwise pounds or kN). It advises; nothing is rejected by it.
double HeightVariationLimit(int procedure, bool englishUnits, double mean);

/// The peaks of a trial, heights by drops, with mean and standard deviation of each height. Its controls are the
/// screen's own; a screen with two of them tells them apart by a prefix to the controls' names.
class ctrlHtDropArray {
  public:
    ctrlHtDropArray(Place place, CalibrationRun& run, const std::string& prefix = {});

    std::vector<std::unique_ptr<TextBox>> txtData;  ///< one a drop, in the order of the trial
    std::vector<std::unique_ptr<Label>> lblHeight;
    std::vector<std::unique_ptr<Label>> lblDrop;
    std::vector<std::unique_ptr<Label>> lblMean;
    std::vector<std::unique_ptr<Label>> lblStdDev;
    Label lblMeanLabel;
    Label lblStdDevLabel;
    Label lblNoise;

    std::function<void(int index)> CellClick;

    void CreateResultTable(int drops, int heights, bool labels = true);
    void FormatStyle();  ///< picture of the values, by procedure and units
    void Clear();
    void HighlightCell(int index, Color color);
    void ShowResult(int index, double value);
    void ShowResults();  ///< all accepted drops of the run
    void ShowExcessNoise(int index, bool excess);

    /// Shows and keeps mean and standard deviation of a height, counted from 1, over the peaks it has so far. A height
    /// above 5 is ignored.
    void ShowHeightStats(int height, std::span<const double> values, bool isFWD);

    /// The same for every height of a trial. values: its peaks so far, from the first drop on.
    void ShowStatistics(std::span<const double> values, bool isFWD);

    int Drops() const { return drops_; }
    int Heights() const { return heights_; }

  private:
    bool IsCell(int index) const { return index >= 0 && index < drops_ * heights_; }

    CalibrationRun& run_;
    std::string picture_ = "#0.000";
    int drops_ = 0;
    int heights_ = 0;
};

}  // namespace bellmark
