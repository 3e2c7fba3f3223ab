#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "pddx/mod_pddx_read.h"
#include "platform/numbers.h"
#include "tests/pddx/memory_file_system.h"

namespace bellmark {
namespace {

constexpr int dropsOfLocation = 40;

/// A document as a converter of FWD data writes it: a load and nine deflections a drop.
std::string Survey(int locations) {
    PDDXFile document;
    document.Sections("Device Configuration").Elements("NumberOfDeflectionSensors").SetValue("9");
    for (int location = 1; location <= locations; ++location) {
        PDDXSection& section = document.AddTestLocation(0);
        section.Elements("TestTime").SetValue("10:27:11");
        for (int drop = 1; drop <= dropsOfLocation; ++drop) {
            section.AddDropData(0).SetValue(NumberText(400 + drop) +
                                            ".25,384.89,229.71,184.07,93.96,62.73,42.88,28.79,21.13,15.07");
        }
    }
    std::string text;
    document.PDDX_Output(text);
    return text;
}

void ReadSurvey(benchmark::State& state) {
    MemoryFileSystem files;
    const std::string& text = files.contents["survey.ddx"] = Survey(static_cast<int>(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        PDDXFile document;
        benchmark::DoNotOptimize(ReadPDDXFile(files, "survey.ddx", document, false));
    }
    state.SetComplexityN(state.range(0));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(ReadSurvey)->Arg(1)->Arg(100)->Arg(300)->Arg(1000)->Repetitions(9)->Unit(benchmark::kMillisecond);

/// Shows the results and fits time = factor * locations ^ exponent through those of large files. The least time of the
/// repetitions counts, since whatever else the machine does only adds to it.
class ExponentReporter : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration || run.error_occurred || run.complexity_n < 100) continue;
            const auto [least, isFirst] = leastTimes_.try_emplace(run.complexity_n, run.GetAdjustedCPUTime());
            if (!isFirst) least->second = std::min(least->second, run.GetAdjustedCPUTime());
        }
    }

    /// Slope of log time on log locations; no number when fewer than two sizes were run.
    double Exponent() const {
        double sumX = 0, sumY = 0, sumXX = 0, sumXY = 0;
        for (const auto& [locations, time] : leastTimes_) {
            const double x = std::log(static_cast<double>(locations));
            const double y = std::log(time);
            sumX += x;
            sumY += y;
            sumXX += x * x;
            sumXY += x * y;
        }
        const auto count = static_cast<double>(leastTimes_.size());
        return (count * sumXY - sumX * sumY) / (count * sumXX - sumX * sumX);
    }

  private:
    std::map<std::int64_t, double> leastTimes_;
};

}  // namespace
}  // namespace bellmark

/// Ends with 1 when the time of reading grows faster than the file, beyond what measuring noise explains.
int main(int argc, char** argv) {
    constexpr double greatestExponent = 1.15;
    // The sizes take turns, so that a machine that is slower for a while is so for all of them.
    std::string takeTurns = "--benchmark_enable_random_interleaving=true";
    std::vector<char*> arguments(argv, argv + argc);
    arguments.insert(arguments.begin() + 1, takeTurns.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 1;
    bellmark::ExponentReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::cout << "time grows with the number of locations to the power " << reporter.Exponent() << " (at most "
              << greatestExponent << ")\n";
    return reporter.Exponent() > greatestExponent ? 1 : 0;
}
