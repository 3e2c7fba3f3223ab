#include "demonstration/frm_demonstration.h"

#include <algorithm>

#include "app/program.h"
#include "platform/clock.h"
#include "platform/format.h"
#include "platform/numbers.h"
#include "run/trial.h"

namespace bellmark {

using virtual_fwd::CalSwitch;
using virtual_fwd::DropNumber;

namespace {

constexpr double volts5 = 5;
constexpr double temperatureVolts = 0.215;  ///< 21.5 degrees Celsius at 10 mV per degree
constexpr std::size_t samplesPerMillisecond = 15;
static_assert(samplesPerMillisecond * 1000 == samplesPerSecond);
constexpr std::size_t ringSamples = 2000 * samplesPerMillisecond;  ///< that the board keeps for a program that is busy

/// A set-up value is measured with the first drop of its height.
DropNumber NumberOfDrop(const CalibrationRun& run) {
    const bool isOfTrial = CalibratesSensors(run) || run.CurrentProcedure == Procedure::LoadCell;
    if (!isOfTrial) return {1, run.CurrentHeightIndex, 1};
    return {NumberOfTrialShown(run), run.CurrentHeightIndex, run.CurrentDropIndex};
}

}  // namespace

frmDemonstration::frmDemonstration(Program& program, virtual_fwd::LiveDrops drops)
    : Screen(program.Screens, "frmDemonstration", "Demonstration Board"), program_(program), signal_(std::move(drops)) {
    chkCable.Value = true;
    optCalOff.Choose();
    optUpright.Choose();
    cmdHandButton.Click = [this] {
        buttonIsPressed_ = true;
        tmrButton.Start();
    };
    tmrButton.Tick = [this] {
        buttonIsPressed_ = false;
        tmrButton.Stop();
    };
    chkAutoBalance.Click = [this] { signal_.isBalanced = chkAutoBalance.Value; };
    optCalOff.Click = [this] { signal_.calSwitch = CalSwitch::Off; };
    optCalPlus.Click = [this] { signal_.calSwitch = CalSwitch::Plus; };
    optCalMinus.Click = [this] { signal_.calSwitch = CalSwitch::Minus; };
    optUpright.Click = [this] { signal_.TurnAccelerometer(true, Seconds()); };
    optUpsideDown.Click = [this] { signal_.TurnAccelerometer(false, Seconds()); };
    ShowDrop(false);
}

std::chrono::milliseconds frmDemonstration::Now() const {
    return program_.Services.clock.Elapsed();
}

double frmDemonstration::Seconds() const {
    return static_cast<double>(Now().count()) / 1000;
}

void frmDemonstration::RequireCable() const {
    if (!chkCable.Value) throw DeviceError(0, "The board does not answer. Please check its cable.");
}

double frmDemonstration::VoltsOn(int channel) {
    const CalibrationRun& run = program_.Run;
    if (channel == run.ButtonChannel) return buttonIsPressed_ || chkHoldButton.Value ? volts5 : 0;
    if (channel == 0) return temperatureVolts;
    return signal_.VoltsAt(Seconds());
}

RawSample frmDemonstration::SingleValue(int channel) {
    RequireCable();
    if (!flows_) ConnectInstrument(false);
    return virtual_fwd::RawOf(VoltsOn(channel));
}

/// A drop is due in a flow that waits for one, not in the initial burst or the daily calibration.
void frmDemonstration::ConnectInstrument(bool forFlow) {
    const CalibrationRun& run = program_.Run;
    const virtual_fwd::LiveDrops& drops = signal_.Drops();
    const bool awaitsDrop = forFlow && !run.BurstCapture;
    bool isDue = false;
    if (run.CurrentProcedure == Procedure::LoadCell) {
        const auto due = awaitsDrop ? DueDrop(drops.loadCell, NumberOfDrop(run)) : std::nullopt;
        isDue = due.has_value();
        signal_.ConnectLoadCell(due, Seconds());
    } else {
        const auto due = awaitsDrop ? DueDrop(drops.accelerometer, NumberOfDrop(run)) : std::nullopt;
        isDue = due.has_value();
        signal_.ConnectAccelerometer(due, Seconds());
    }
    ShowDrop(isDue);
}

void frmDemonstration::ShowDrop(bool isDue) {
    if (!isDue) {
        lblDrop.Caption = "No drop is due.";
        return;
    }
    const DropNumber number = NumberOfDrop(program_.Run);
    lblDrop.Caption = "The drop of trial " + NumberText(number.trial) + ", height " + NumberText(number.height) +
                      ", drop " + NumberText(number.drop) + " comes " + NumberText(signal_.Drops().secondsToDrop) +
                      " seconds after arming.";
}

void frmDemonstration::StartContinuous(int, int) {
    RequireCable();
    ConnectInstrument(true);
    flows_ = true;
    flowStart_ = Now();
    produced_ = 0;
}

void frmDemonstration::Serve() {
    if (!flows_) return;
    RequireCable();
    const auto arrived = static_cast<std::size_t>((Now() - flowStart_).count()) * samplesPerMillisecond;
    if (arrived - produced_ > ringSamples) {
        flows_ = false;
        Raise(DeviceEvent::Overrun);
        return;
    }
    const std::size_t count = std::min(arrived - produced_, Room());
    const double start =
        static_cast<double>(flowStart_.count()) / 1000 + static_cast<double>(produced_) / samplesPerSecond;
    Deliver(signal_.RawSamples(start, count));
    produced_ += count;
}

void frmDemonstration::Stop() {
    flows_ = false;
    Flush();
    ShowDrop(false);
}

std::unique_ptr<AcquisitionDevice> MakeDemonstrationBoard(Program& program) {
    const FileSystem& files = program.Services.files;
    const Path path = program.Folder() / virtual_fwd::liveDropsName;
    if (!files.IsFile(path)) return nullptr;
    auto drops = virtual_fwd::LiveDropsIn(files.ReadBytes(path));
    if (!drops) return nullptr;
    return std::make_unique<frmDemonstration>(program, std::move(*drops));
}

}  // namespace bellmark
