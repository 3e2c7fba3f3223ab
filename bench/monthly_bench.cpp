// A monthly trial of twelve sensors and sixty drops: read and analysed, and its reports.
#include <benchmark/benchmark.h>

#include "monthly/monthly_report.h"
#include "monthly/monthly_trial.h"
#include "relative/relative_trial.h"
#include "tests/monthly/monthly_samples.h"

namespace bellmark {
namespace {

SampleDocument TwelveSensors() {
    SampleDocument file;
    for (std::size_t s = 0; s < maxSensors; ++s) {
        file.gains.push_back(1 + 0.001 * static_cast<double>(s));
        file.readings.emplace_back();
        for (std::size_t drop = 0; drop < maxRelativeDrops; ++drop)
            file.readings.back().push_back(500 + 0.1 * static_cast<double>((s * 31 + drop * 17) % 97));
    }
    return file;
}

void Ignore(const char*) {}

void ReadAndAnalyseMonthlyTrial(benchmark::State& state) {
    PDDXFile document;
    TwelveSensors().Fill(document);
    CalibrationRun run;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(ReadMonthlyTrial(document, run, ""));
        benchmark::DoNotOptimize(AnalyseMonthlyTrial(run, 1, 0, Ignore));
        benchmark::DoNotOptimize(CountMonthlySensors(run, 1));
    }
}
BENCHMARK(ReadAndAnalyseMonthlyTrial)->Unit(benchmark::kMicrosecond);

void ExactCriticalValuesOfATrial(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(ExactCriticalValues(12, monthlyDropsPerSet));
}
BENCHMARK(ExactCriticalValuesOfATrial)->Unit(benchmark::kMicrosecond);

/// The trial's report and both final ones.
void MonthlyReports(benchmark::State& state) {
    PDDXFile document;
    TwelveSensors().Fill(document);
    CalibrationRun run;
    ReadMonthlyTrial(document, run, "");
    AnalyseMonthlyTrial(run, 1, 0, Ignore);
    CountRelativeTrial(run);
    const MonthlyReading reading = ReadMonthlyTrial(document, run, "");
    const MonthlyAnalysis analysis = AnalyseMonthlyTrial(run, 2, 0, Ignore);
    const MonthlyCounts counts = CountMonthlySensors(run, 2);
    const MonthlyFacts facts{run, analysis, counts, 2, false, 2};
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(OutputToFile(facts, reading, "Monthly.F25"));
        benchmark::DoNotOptimize(OutputFinalField(facts, reading, "Monthly.F25"));
        benchmark::DoNotOptimize(OutputFinalReplace(facts, reading, "Monthly.F25"));
    }
}
BENCHMARK(MonthlyReports)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace bellmark

BENCHMARK_MAIN();
