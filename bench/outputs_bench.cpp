// The outputs of a whole calibration, and a certificate out of a template of 50 MB.

#include <benchmark/benchmark.h>

#include "platform/sha256.h"
#include "results/certificate.h"
#include "results/frm_report.h"
#include "results/frm_results.h"
#include "results/publish_run.h"
#include "results/rich_text_reader.h"
#include "tests/interim/full_run.h"
#include "tests/support/idle_doors.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

constexpr std::size_t dropBytes = 150'000;  ///< a drop file of the load cell

/// All that the program does between the operator's answers, flushes and digests included: twelve sensors, 200 drop
/// files.
void FinalOutputs(benchmark::State& state) {
    constexpr int drops = 200;
    TestMachine machine;
    Program program(machine.machine);
    program.Register<MainMenuDoor>([](Program&) { return std::make_shared<IdleMainMenu>(); });
    program.Register<ResultsDoor>([](Program& owner) { return std::make_shared<frmResults>(owner); });
    program.Register<ReportDoor>([](Program& owner) { return std::make_shared<frmReport>(owner); });
    machine.Write(certificateTemplateName,
                  machine.files.ReadBytes(Path(BELLMARK_SOURCE_FOLDER) / "sample" / certificateTemplateName));
    program.Run = FullRun(1);
    program.Run.SensorRelCalComplete = true;
    program.Run.DeviceFolder = machine.folder / "Owner/FWD";
    program.Run.OutputFolder.clear();
    const std::string drop(dropBytes, '1');
    for (int i = 0; i < drops; ++i) {
        machine.Write(Path(program.Run.InterimFolderName) / ("LoadCell1-H" + NumberText(i) + "D1.txt"), drop);
    }
    PublishRun(program);  // as the last acceptance does
    auto& results = dynamic_cast<frmResults&>(program.The<ResultsDoor>());
    for (auto _ : state) {
        machine.dialogs.QueueFile({});
        machine.dialogs.QueueAnswer(Answer::OK);
        machine.dialogs.QueueFile({});
        results.cmdPrintPDDX[0].UserClick();
        if (machine.dialogs.TakeBoxes().size() != 1) state.SkipWithError("an output failed");
    }
}
BENCHMARK(FinalOutputs)->Unit(benchmark::kMillisecond);

void DigestsOfDrops(benchmark::State& state) {
    const std::string drop(dropBytes, '1');
    for (auto _ : state) {
        for (int i = 0; i < 200; ++i) benchmark::DoNotOptimize(Sha256(drop));
    }
}
BENCHMARK(DigestsOfDrops)->Unit(benchmark::kMillisecond);

/// A keyword at the end of much text, all others missing: each is looked for in all of it.
void LargeTemplate(benchmark::State& state, const char* repeated) {
    constexpr std::size_t bytes = 50'000'000;
    std::string rtf = "{\\rtf1\\viewkind4 ";
    while (rtf.size() < bytes) rtf += repeated;
    rtf += " Messages:}";
    const CalibrationRun run = FullRun(1);
    for (auto _ : state) {
        RichText text(rtf);
        FillCertificate(text, run, {}, {true, true}, MakeDateTime(2012, 3, 9));
        const std::string filled = CertificateRtf(text);
        benchmark::DoNotOptimize(ReadRichText(filled).paragraphs.size());
    }
}
BENCHMARK_CAPTURE(LargeTemplate, text, "Calibration of the LC and FWD. ")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LargeTemplate, groups, "{\\b L}{\\i C}\\par ")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LargeTemplate, controls, "\\'e9\\u233?\\tab ")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace bellmark

BENCHMARK_MAIN();
