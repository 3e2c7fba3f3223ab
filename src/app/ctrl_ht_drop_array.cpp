#include "app/ctrl_ht_drop_array.h"

#include <algorithm>

#include "platform/format.h"
#include "platform/numbers.h"

namespace bellmark {

namespace {

constexpr int mostDropsPerHeight = 10;

template <class ControlType>
std::vector<std::unique_ptr<ControlType>> ControlArray(Place place, const std::string& name, std::size_t count) {
    std::vector<std::unique_ptr<ControlType>> controls;
    for (std::size_t i = 0; i < count; ++i) {
        controls.push_back(std::make_unique<ControlType>(place, name + '(' + NumberText(i) + ')'));
    }
    return controls;
}

const char* PictureOf(Procedure procedure, bool englishUnits) {
    if (procedure == Procedure::Sensors) return englishUnits ? "#0.00" : "#,##0.0";
    if (procedure == Procedure::LoadCell) return englishUnits ? "#,##0" : "#0.00";
    return englishUnits ? "#0.000" : "#,##0.00";
}

}  // namespace

ctrlHtDropArray::ctrlHtDropArray(Place place, const CalibrationRun& run, const std::string& prefix)
    : txtData(ControlArray<TextBox>(place, prefix + "txtData", maxDrops)),
      lblHeight(ControlArray<Label>(place, prefix + "lblHeight", maxHeights)),
      lblDrop(ControlArray<Label>(place, prefix + "lblDrop", mostDropsPerHeight)),
      lblMean(ControlArray<Label>(place, prefix + "lblMean", maxHeights)),
      lblStdDev(ControlArray<Label>(place, prefix + "lblStdDev", maxHeights)),
      lblMeanLabel(place, prefix + "lblMeanLabel", "Mean"),
      lblStdDevLabel(place, prefix + "lblStdDevLabel", "Std.Dev."),
      lblNoise(place, prefix + "lblNoise", "Excess noise detected in Avg. Zero for highlighted tests"),
      run_(run) {
    for (std::size_t i = 0; i < txtData.size(); ++i) {
        txtData[i]->Locked = true;
        txtData[i]->Click = [this, i] {
            if (CellClick) CellClick(static_cast<int>(i));
        };
    }
    for (std::size_t i = 0; i < lblHeight.size(); ++i) lblHeight[i]->Caption = "Ht. " + NumberText(i + 1);
    for (std::size_t i = 0; i < lblDrop.size(); ++i) lblDrop[i]->Caption = "Drop " + NumberText(i + 1);
    lblNoise.Visible = false;
}

void ctrlHtDropArray::CreateResultTable(int drops, int heights, bool labels) {
    drops_ = drops;
    heights_ = heights;
    FormatStyle();
    for (std::size_t i = 0; i < txtData.size(); ++i) txtData[i]->Visible = IsCell(static_cast<int>(i));
    for (std::size_t i = 0; i < maxHeights; ++i) {
        const bool used = static_cast<int>(i) < heights;
        lblHeight[i]->Visible = used && labels;
        lblMean[i]->Visible = used;
        lblStdDev[i]->Visible = used;
    }
    for (std::size_t i = 0; i < lblDrop.size(); ++i) lblDrop[i]->Visible = static_cast<int>(i) < drops && labels;
}

void ctrlHtDropArray::FormatStyle() {
    picture_ = PictureOf(run_.CurrentProcedure, run_.Trial.shape.englishUnits);
}

void ctrlHtDropArray::Clear() {
    for (const auto& cell : txtData) {
        cell->Text = "";
        cell->BackColor = colors::window;
    }
    for (std::size_t i = 0; i < maxHeights; ++i) {
        lblMean[i]->Caption = "";
        lblStdDev[i]->Caption = "";
        lblStdDev[i]->ToolTip = "";
    }
    lblNoise.Visible = false;
}

void ctrlHtDropArray::HighlightCell(int index, Color color) {
    if (IsCell(index)) txtData[static_cast<std::size_t>(index)]->BackColor = color;
}

void ctrlHtDropArray::ShowResult(int index, double value) {
    if (IsCell(index)) txtData[static_cast<std::size_t>(index)]->Text = Format(value, picture_);
}

void ctrlHtDropArray::ShowResults() {
    const TrialInHand& trial = run_.Trial;
    const int taken = std::min(trial.DropSequenceIndex, drops_ * heights_);
    for (int i = 0; i < taken; ++i) {
        const auto slot = static_cast<std::size_t>(i);
        ShowExcessNoise(i, trial.DropNoiseFlags[slot]);
        if (trial.DropRangeFlags[slot]) HighlightCell(i, colors::mustBeUpdated);
        ShowResult(i, trial.DropResults[slot]);
    }
    ShowStatistics(std::span(trial.DropResults).first(static_cast<std::size_t>(std::max(taken, 0))));
}

void ctrlHtDropArray::ShowExcessNoise(int index, bool excess) {
    HighlightCell(index, excess ? colors::mustBeUpdated : colors::window);
    const auto& flags = run_.Trial.DropNoiseFlags;
    lblNoise.Visible = std::find(flags.begin(), flags.end(), true) != flags.end();
}

void ctrlHtDropArray::ShowHeightStats(int height, const PeakStatistics& statistics) {
    if (height < 1 || height > static_cast<int>(maxHeights)) return;
    const auto row = static_cast<std::size_t>(height - 1);
    lblMean[row]->Caption = Format(statistics.mean, picture_);
    lblStdDev[row]->Caption = Format(statistics.stdDev, picture_);
    const double limit = HeightVariationLimit(run_.CurrentProcedure, run_.Trial.shape.englishUnits, statistics.mean);
    lblStdDev[row]->ToolTip = "To be expected: at most " + Format(limit, picture_);
}

void ctrlHtDropArray::ShowStatistics(std::span<const double> peaks) {
    int height = 1;
    for (const PeakStatistics& statistics : StatisticsOfHeights({heights_, drops_}, peaks)) {
        ShowHeightStats(height++, statistics);
    }
}

}  // namespace bellmark
