#include "daq/frm_kusb.h"

#include <algorithm>

#include "app/board_error.h"
#include "app/program.h"
#include "platform/clock.h"
#include "platform/numbers.h"

namespace bellmark {

namespace {

using std::chrono::milliseconds;

constexpr float buttonVolts = 5.0F;
constexpr int keyOfButton = 'N';
constexpr std::size_t longestLog = 8000;  ///< characters
constexpr int usualBits = 16;
constexpr int mostNewStarts = 20;
constexpr double smallestMargin = 0.001;  ///< volts, so that a quiet signal looks quiet
constexpr milliseconds longestSilence{5000};
/// Between two looks at the queues and the signal. Drawing never comes before the samples.
constexpr milliseconds showInterval{250};

const char* EventText(DeviceEvent event) {
    switch (event) {
        case DeviceEvent::BufferReused:
            return "Buffer Reused";
        case DeviceEvent::PreTriggerBufferDone:
            return "Pre-Trigger Buffer Done";
        case DeviceEvent::QueueDone:
            return "Queue Done";
        case DeviceEvent::QueueStopped:
            return "Queue Stopped";
        case DeviceEvent::SubSystemError:
            return "Sub-system event error";
        case DeviceEvent::TriggerError:
            return "Trigger Error";
        case DeviceEvent::Overrun:
            return "Overrun";
        case DeviceEvent::Underrun:
            return "Underrun";
    }
    return "";
}

}  // namespace

frmKUSB::frmKUSB(Program& program, std::unique_ptr<AcquisitionDevice> device)
    : Screen(program.Screens, "frmKUSB", "Data Acquisition Board"), program_(program), device_(std::move(device)) {
    txtLog.Locked = true;
    tmrBuffers.Tick = [this] { ServeBuffers(); };
    ShowQueues();
}

frmKUSB::~frmKUSB() = default;

std::string frmKUSB::FindBoard() {
    boardName_.clear();
    problem_.clear();
    const auto refused = Refusal([this] {
        const std::vector<std::string> boards = device_->Boards();
        problem_ = device_->Problem();
        if (boards.empty()) return;
        device_->Select(boards.front());
        boardName_ = boards.front();
    });
    if (refused) problem_ = *refused;
    return boardName_;
}

void frmKUSB::InitializeBoard() {
    if (!BoardAvailable()) return;
    const int bits = device_->ResolutionBits();
    lblBoard.Caption = boardName_ + ", " + NumberText(bits) + " bits";
    Log(lblBoard.Caption);
    // Fewer bits make every voltage coarser: whoever looks into a result later must be able to see that.
    if (bits < usualBits) program_.Log("The data acquisition board " + lblBoard.Caption.Get());
}

void frmKUSB::Unload() {
    if (acquiring_) StopAcq();
    Refusal([this] { device_->Release(); });
}

float frmKUSB::OneConversion(int channel) {
    if (!BoardAvailable()) throw BoardError("There is no data acquisition board.");
    if (acquiring_) throw BoardError("The data acquisition board is busy with a capture.");
    float volts = 0;
    const auto refused = Refusal([&] { volts = device_->VoltsOf(device_->SingleValue(channel)); });
    // A voltage that was not read must never be taken for 0 V.
    if (refused) throw BoardError("The data acquisition board cannot be read. " + *refused);
    return volts;
}

int frmKUSB::WaitforButton(int channel) {
    const CalibrationRun& run = program_.Run;
    if (!BoardAvailable() || run.ReviewMode) return 0;
    while (OneConversion(channel) < buttonVolts) {
        if (run.DropAborted) return 0;
        program_.Services.yield();
    }
    return keyOfButton;
}

void frmKUSB::CaptureBlock(int channel) {
    channel_ = channel;
    StartAcq();
}

void frmKUSB::StartAcq() {
    Log("StartAcq");
    blockCaptured_ = false;
    problem_.clear();
    newStarts_ = 0;
    trigger_ = &program_.The<DropDoor>();
    program_.Run.AcquisitionActive = true;
    acquiring_ = true;
    StartFlow();
    if (acquiring_) tmrBuffers.Start();
}

void frmKUSB::StartFlow() {
    ring_.Begin();
    program_.Drop.TriggerCount = 0;
    lastData_ = program_.Services.clock.Elapsed();
    const auto refused = Refusal([this] {
        device_->Stop();
        for (int i = 0; i < bufferCount; ++i) device_->PutReady({std::vector<RawSample>(bufferSamples), 0});
        device_->StartContinuous(channel_, samplesPerSecond);
    });
    if (refused) Fail(*refused);
}

/// All that has arrived is taken at once: samples never wait for anything to be drawn.
void frmKUSB::ServeBuffers() {
    bool more = acquiring_;
    while (more) {
        const auto refused = Refusal([this] { device_->Serve(); });
        doneWhenServed_ = device_->Queues().done;
        more = TakeBuffers() && acquiring_ && !refused;
        if (refused && acquiring_) Fail(*refused);
    }
    if (acquiring_) TakeEvents();
    if (acquiring_) WatchForSilence();
    ShowProgress();
}

bool frmKUSB::TakeBuffers() {
    bool any = false;
    while (acquiring_) {
        auto buffer = device_->TakeDone();
        if (!buffer) break;
        any = true;
        TakeBuffer(std::move(*buffer));
    }
    return any;
}

void frmKUSB::TakeBuffer(SampleBuffer buffer) {
    lastData_ = program_.Services.clock.Elapsed();
    if (!IsInOrder(buffer)) return;
    if (buffer.samples.size() != bufferSamples) {
        Log("NumSamples=" + NumberText(static_cast<int>(buffer.samples.size())));
    }
    const bool complete = ring_.Take(buffer, [this](RawSample raw) { return Fires(raw); });
    buffer.samples.resize(bufferSamples);
    device_->PutReady(std::move(buffer));
    if (complete) CompleteBlock();
}

/// A buffer that comes twice is left out. After a missing one the time of the samples is no longer known.
bool frmKUSB::IsInOrder(const SampleBuffer& buffer) {
    if (buffer.firstSample == ring_.NextSample()) return true;
    if (buffer.firstSample < ring_.NextSample()) {
        Log(EventText(DeviceEvent::BufferReused));
        device_->PutReady({std::vector<RawSample>(bufferSamples), 0});
    } else {
        Log(EventText(DeviceEvent::Overrun));
        FellBehind();
    }
    return false;
}

bool frmKUSB::Fires(RawSample raw) const {
    return trigger_->CheckTrigger(static_cast<double>(device_->VoltsOf(raw)));
}

void frmKUSB::TakeEvents() {
    while (acquiring_) {
        const auto event = device_->TakeEvent();
        if (!event) return;
        Log(EventText(*event));
        if (*event == DeviceEvent::Overrun) FellBehind();
        if (*event == DeviceEvent::SubSystemError || *event == DeviceEvent::QueueStopped)
            Fail("The data acquisition board has stopped.");
    }
}

void frmKUSB::FellBehind() {
    if (ring_.IsTriggered()) {
        Fail("Samples of this drop were lost, because the computer was too busy. Please repeat the drop.");
    } else if (++newStarts_ > mostNewStarts) {
        Fail("The computer is too busy to keep up with the data acquisition board. Please close other programs.");
    } else {
        program_.Log("The computer fell behind the data acquisition board; the capture began anew.");
        trigger_->TellOfNewStart();
        StartFlow();
    }
}

void frmKUSB::WatchForSilence() {
    if (program_.Services.clock.Elapsed() - lastData_ < longestSilence) return;
    Fail("The data acquisition board has delivered nothing for 5 seconds. Please check its cable.");
}

void frmKUSB::CompleteBlock() {
    // Only buffers that are too short can fill the ring before the pulse is whole.
    if (ring_.InOrderOfTime().size() < postTriggerTarget) {
        return Fail("The data acquisition board delivered buffers that are too short. Please repeat the drop.");
    }
    StopAcq();
    blockCaptured_ = true;
}

void frmKUSB::Fail(const std::string& why) {
    StopAcq();
    problem_ = why;
}

void frmKUSB::StopAcq() {
    if (!acquiring_) return;
    Log("Begin StopAcq");
    acquiring_ = false;
    tmrBuffers.Stop();
    Refusal([this] { device_->Stop(); });
    DrawBlock();
    if (ring_.BuffersFilled() < bufferCount) {
        Log("Only " + NumberText(ring_.BuffersFilled()) + " buffers out of " + NumberText(bufferCount) +
            " was filled.");
    }
    program_.Run.AcquisitionActive = false;
    Log("End StopAcq");
    ShowQueues();
}

void frmKUSB::GetResultsVolts(std::vector<float>& volts, int& count) {
    const std::vector<RawSample> samples = ring_.InOrderOfTime();
    std::transform(samples.begin(), samples.end(), volts.begin(),
                   [this](RawSample raw) { return device_->VoltsOf(raw); });
    count = static_cast<int>(samples.size());
    // The element after the last sample is as in a fresh record.
    if (samples.size() < volts.size()) volts[samples.size()] = 0;
}

/// The device's reason when it refuses the operation, which the log keeps with its number.
std::optional<std::string> frmKUSB::Refusal(const std::function<void()>& operation) {
    try {
        operation();
        return {};
    } catch (const DeviceError& error) {
        Log("Error = " + NumberText(error.Number()) + ":  " + error.what());
        return error.what();
    }
}

void frmKUSB::Log(const std::string& line) {
    std::string text = txtLog.Text;
    text += line + "\r\n";
    // The older half goes when the log is full: it must not grow in the hours of a day.
    if (text.size() > longestLog) text.erase(0, text.find('\n', text.size() / 2) + 1);
    txtLog.Text = text;
}

void frmKUSB::ShowProgress() {
    const milliseconds now = program_.Services.clock.Elapsed();
    if (!acquiring_ || now - lastShown_ < showInterval) return;
    lastShown_ = now;
    ShowQueues();
    DrawNewestBuffer();
}

void frmKUSB::ShowQueues() {
    const QueueSizes queues = device_->Queues();
    lblQueReady.Caption = "QueueSize(OL_QUE_READY) = " + NumberText(queues.ready);
    lblQueInprocess.Caption = "QueueSize(OL_QUE_INPROCESS) = " + NumberText(queues.inProcess);
    lblQueDone.Caption = "QueueSize(OL_QUE_DONE) = " + NumberText(doneWhenServed_);
    lblQueDone2.Caption = "QueueSize(OL_QUE_DONE) end = " + NumberText(queues.done);
}

void frmKUSB::DrawNewestBuffer() {
    const std::vector<RawSample>& newest = ring_.NewestBuffer();
    dtpGraph.Draw(PlotOf("Newest buffer", newest));
}

void frmKUSB::DrawBlock() {
    const std::vector<RawSample> block = ring_.InOrderOfTime();
    if (!block.empty()) dtpResults.Draw(PlotOf("Last block", block));
}

/// The axes span the time and the volts seen.
Plot frmKUSB::PlotOf(const std::string& title, const std::vector<RawSample>& samples) const {
    PlotSeries volts{"Volts", {}, {}, false, {}};
    for (std::size_t i = 0; i < samples.size(); ++i) {
        volts.x.push_back(static_cast<double>(i) / samplesPerSecond);
        volts.y.push_back(static_cast<double>(device_->VoltsOf(samples[i])));
    }
    if (samples.empty()) return {};
    const auto [lowest, highest] = std::minmax_element(volts.y.begin(), volts.y.end());
    const double margin = std::max(0.1 * (*highest - *lowest), smallestMargin);
    const PlotAxis time{"Time (sec)", 0, static_cast<double>(samples.size()) / samplesPerSecond, {}};
    const PlotAxis vertical{"volts", *lowest - margin, *highest + margin, {}};
    return {title, time, vertical, {std::move(volts)}, {}};
}

}  // namespace bellmark
