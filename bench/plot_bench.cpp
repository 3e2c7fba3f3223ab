// A redraw of the plots of a trial, in a window of 1920 x 1080 that no display shows.
#include <benchmark/benchmark.h>

#include <QApplication>

#include "fwd/regression_plot.h"
#include "relative/relative_plot.h"
#include "screens/plot_widget.h"

namespace bellmark {
namespace {

void Redraw(benchmark::State& state, const Plot& plot) {
    PlotWidget widget;
    widget.resize(1500, 700);
    widget.show();
    widget.Show(plot);
    QApplication::processEvents();
    for ([[maybe_unused]] auto _ : state) widget.RedrawNow();
}

void RedrawTrial(benchmark::State& state) {
    CalibrationRun run;
    run.CurrentProcedure = Procedure::LoadCell;
    run.Trial.shape = {4, 10, true};
    run.LoadCellRefTrials = 1;
    for (std::size_t drop = 0; drop < 40; ++drop) {
        run.LCTrial[0].DropData[drop] = 6000 + 250 * static_cast<double>(drop);
        run.LCTrial[0].RefDropData[drop] = 6010 + 249 * static_cast<double>(drop);
    }
    run.LCTrial[0].AdjFactor = 0.998;
    Redraw(state, RegressionPlot(run, 0));
}
BENCHMARK(RedrawTrial)->Unit(benchmark::kMillisecond);

/// The residuals of twelve sensors of 24 drops.
void RedrawResiduals(benchmark::State& state) {
    CalibrationRun run;
    run.CurrentProcedure = Procedure::Sensors;
    run.Trial.shape = {4, 6, true};
    run.RefTrials = 1;
    run.NumberSensors = static_cast<int>(maxSensors);
    for (SensorCalRecord& sensor : run.Sensor) {
        for (std::size_t drop = 0; drop < 24; ++drop) {
            sensor.RefTrial[0].DropData[drop] = 6 + 2 * static_cast<double>(drop);
            sensor.RefTrial[0].RefDropData[drop] = 6.01 + 2.001 * static_cast<double>(drop);
        }
        sensor.RefTrial[0].AdjFactor = 1;
    }
    Redraw(state, ResidualsOfAllSensors(run, 3));
}
BENCHMARK(RedrawResiduals)->Unit(benchmark::kMillisecond);

/// Twelve sensors of forty drops.
void RedrawRelativeTrial(benchmark::State& state) {
    CalibrationRun run;
    run.NumberSensors = static_cast<int>(maxSensors);
    for (std::size_t s = 0; s < maxSensors; ++s) {
        for (std::size_t drop = 0; drop < 40; ++drop) {
            run.Sensor[s].RelTrial[0].DropData[drop] = 19.8 + 0.01 * static_cast<double>((s * 7 + drop * 5) % 23);
        }
    }
    Redraw(state, RelativePlot(run, 0));
}
BENCHMARK(RedrawRelativeTrial)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace bellmark

int main(int count, char** words) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, words);
    benchmark::Initialize(&count, words);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
