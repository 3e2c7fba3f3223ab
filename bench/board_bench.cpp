// A capture on the hardware board: what it costs while it waits, and how soon a drop is saved.
#include <benchmark/benchmark.h>

#include <chrono>
#include <span>
#include <utility>

#include "app/program.h"
#include "daq/frm_daq.h"
#include "daq/frm_kusb.h"
#include "daq/queued_device.h"
#include "reference/accel_analysis.h"
#include "reference/frm_bellmark_accel_drop.h"
#include "reference/trigger.h"
#include "run/accel_adjustment.h"
#include "run/trial.h"
#include "tests/support/idle_doors.h"
#include "tests/support/test_machine.h"
#include "virtual_fwd/live_signal.h"
#include "virtual_fwd/virtual_center.h"

namespace bellmark {
namespace {

/// A driver that has all samples ready, so that only the program's own work is measured.
struct ReadyDevice : QueuedDevice {
    std::vector<RawSample> samples = std::vector<RawSample>(150, 33100);
    std::vector<std::string> Boards() override { return {"board"}; }
    void Select(const std::string&) override {}
    void Release() override {}
    int ResolutionBits() const override { return 16; }
    RawSample SingleValue(int) override { return 0; }
    float VoltsOf(RawSample raw) const override { return virtual_fwd::VoltsOfRaw(raw); }
    void StartContinuous(int, int) override {}
    void Serve() override { Deliver(std::exchange(samples, {})); }
    void Stop() override { Flush(); }
};

CalibrationRun RunOf(Procedure procedure) {
    CalibrationRun run;
    run.CurrentProcedure = procedure;
    return run;
}

CenterConfig Center() {
    CenterConfig center = virtual_fwd::VirtualCenter(false, ZeroDate());
    ComputeAccelAdjustment(center);
    return center;
}

struct TriggerDrop : IdleDrop {
    explicit TriggerDrop(Program& owner) : program(owner) {}
    Program& program;
    bool CheckTrigger(double volts) override {
        return bellmark::CheckTrigger(program.Run, program.Center, program.Drop, volts);
    }
};

/// One second of armed waiting: a hundred timer ticks of 150 samples. The time is the share of one core.
void ArmedSecond(benchmark::State& state) {
    TestMachine machine;
    Program program(machine.machine);
    program.Center = Center();
    program.Run.CurrentProcedure = static_cast<Procedure>(state.range(0));
    ArmAccelTrigger(program.Drop, program.Center);
    if (program.Run.CurrentProcedure == Procedure::LoadCell)
        program.Drop.TriggerLevel = program.Center.ReferenceLoadCellSensitivity;
    program.Register<DropDoor>([](Program& owner) { return std::make_shared<TriggerDrop>(owner); });
    auto made = std::make_unique<ReadyDevice>();
    ReadyDevice& device = *made;
    frmKUSB board(program, std::move(made));
    board.FindBoard();
    const auto raw = static_cast<RawSample>(program.Run.CurrentProcedure == Procedure::LoadCell ? 32770 : 34148);
    board.CaptureBlock(1);
    for ([[maybe_unused]] auto _ : state) {
        for (int tick = 0; tick < 100; ++tick) {
            device.samples.assign(150, raw);
            machine.clock.Advance(std::chrono::milliseconds(10));
            machine.timers.RunDue();
        }
    }
    if (!program.Run.AcquisitionActive) state.SkipWithError("the capture ended");
}
BENCHMARK(ArmedSecond)
    ->Arg(static_cast<int>(Procedure::Sensors))
    ->Arg(static_cast<int>(Procedure::LoadCell))
    ->Unit(benchmark::kMillisecond);

/// The trigger test of one sample.
void TriggerTest(benchmark::State& state) {
    const CalibrationRun run = RunOf(static_cast<Procedure>(state.range(0)));
    const CenterConfig center = Center();
    DropRecord drop;
    ArmAccelTrigger(drop, center);
    if (run.CurrentProcedure == Procedure::LoadCell) drop.TriggerLevel = center.ReferenceLoadCellSensitivity;
    double volts = 0.1;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(volts);
        benchmark::DoNotOptimize(CheckTrigger(run, center, drop, volts));
    }
}
BENCHMARK(TriggerTest)->Arg(static_cast<int>(Procedure::Sensors))->Arg(static_cast<int>(Procedure::LoadCell));

/// Has half a second at rest and a drop's second ready when a flow starts.
struct DropDevice : ReadyDevice {
    std::vector<RawSample> drop;
    void StartContinuous(int, int) override { samples = drop; }
    void Serve() override {
        const std::size_t count = std::min(samples.size(), Room());
        Deliver(std::span(samples).first(count));
        samples.erase(samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(count));
    }
};

std::vector<RawSample> DropOf(Procedure procedure) {
    Random random(1);
    std::vector<float> rest(samplesPerSecond / 2);
    std::vector<float> volts;
    if (procedure == Procedure::LoadCell) {
        virtual_fwd::PulseModel pulse;
        pulse.peakPounds = 9000;
        pulse.noisePounds = 6;
        volts = CaptureVolts(virtual_fwd::VirtualLoadCell(), pulse, random);
    } else {
        virtual_fwd::AccelPulseModel pulse;
        pulse.peakMicrons = 400;
        pulse.noiseVolts = 0.0008;
        volts = CaptureAccelVolts(Center(), pulse, random);
        rest = virtual_fwd::CaptureHeldAccel(Center(), 1, pulse.noiseVolts, random);
    }
    rest.insert(rest.end(), volts.begin(), volts.end());
    std::vector<RawSample> raw;
    for (const float value : rest) raw.push_back(virtual_fwd::RawOf(static_cast<double>(value)));
    return raw;
}

/// A whole drop when all samples are there already: taken from the driver, tested, analysed, plotted and saved on disk.
void DropToDisk(benchmark::State& state) {
    TestMachine machine;
    Program program(machine.machine);
    program.Center = Center();
    program.Run.CurrentProcedure = static_cast<Procedure>(state.range(0));
    program.Run.InterimFolderName = "InterimCal20120309";
    program.Run.NumberLoadLevels = 4;
    program.Run.NumberDropsPerLoadLevel = 6;
    BeginTrial(program.Run);
    auto made = std::make_unique<DropDevice>();
    made->drop = DropOf(program.Run.CurrentProcedure);
    frmKUSB board(program, std::move(made));
    const auto acquisition = std::make_shared<frmDAQ>(program, board, &board);
    acquisition->FindBoard();
    program.Register<AcquisitionDoor>([&](Program&) { return acquisition; });
    program.Register<MainFrameDoor>([](Program&) { return std::make_shared<IdleMainFrame>(); });
    program.Register<CollectionDoor>([](Program&) { return std::make_shared<IdleCollection>(); });
    program.Register<DropDoor>([](Program& owner) { return std::make_shared<frmBellmark_AccelDrop>(owner); });
    for ([[maybe_unused]] auto _ : state) program.The<DropDoor>().Start();
    const bool measured = program.Drop.PeakMetric > 0 && program.Drop.NumSamples == samplesPerSecond;
    if (!measured) state.SkipWithError("no drop was measured");
}
BENCHMARK(DropToDisk)
    ->Arg(static_cast<int>(Procedure::Sensors))
    ->Arg(static_cast<int>(Procedure::LoadCell))
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace
}  // namespace bellmark

BENCHMARK_MAIN();
