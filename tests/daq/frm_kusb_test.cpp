// The hardware board on a device that does as the test says. Each sample's raw value is its place in the flow since the
// program began, and its volts are the same number, so that the expected block is known without the ring.

#include "daq/frm_kusb.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>

#include "app/board_error.h"
#include "app/program.h"
#include "daq/queued_device.h"
#include "tests/support/idle_doors.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

using testing::HasSubstr;

/// Operations of the device, to make one of them fail.
enum class Operation { None, Boards, Select, SingleValue, Start, Serve, Stop };

struct FakeDevice : QueuedDevice {
    std::vector<std::string> boards{"example-9"};
    Operation failing = Operation::None;
    RawSample single = 0;
    int bits = 16;
    std::size_t arrived = 0;  ///< samples that the driver holds
    RawSample next = 0;
    bool flows = false;
    int starts = 0;

    void Do(Operation operation) const {
        if (operation == failing) throw DeviceError(19, "The cable is out.");
    }
    std::vector<std::string> Boards() override { return Do(Operation::Boards), boards; }
    void Select(const std::string&) override { Do(Operation::Select); }
    void Release() override {}
    int ResolutionBits() const override { return bits; }
    RawSample SingleValue(int) override { return Do(Operation::SingleValue), single; }
    float VoltsOf(RawSample raw) const override { return static_cast<float>(raw); }
    void StartContinuous(int, int) override {
        Do(Operation::Start);
        ++starts;
        flows = true;
    }
    void Serve() override {
        Do(Operation::Serve);
        std::vector<RawSample> samples(std::min(arrived, Room()));
        std::iota(samples.begin(), samples.end(), next);
        next += static_cast<RawSample>(samples.size());
        arrived -= samples.size();
        Deliver(samples);
    }
    void Stop() override {
        Do(Operation::Stop);
        flows = false;
        Flush();
    }
    void Overrun() {
        flows = false;
        Raise(DeviceEvent::Overrun);
    }
    std::optional<SampleBuffer> TakeDone() override {
        if (again) return std::exchange(again, std::nullopt);
        auto buffer = QueuedDevice::TakeDone();
        if (buffer && spoilNext) std::exchange(spoilNext, nullptr)(*buffer);
        if (buffer && doublesNext) again = buffer;
        if (buffer) doublesNext = false;
        return buffer;
    }
    bool doublesNext = false;
    std::optional<SampleBuffer> again;
    std::function<void(SampleBuffer&)> spoilNext;  ///< changes the next buffer that is taken
};

struct FiringDrop : IdleDrop {
    double fireAt = 1e9;
    int newStarts = 0;
    bool CheckTrigger(double volts) override { return volts >= fireAt; }
    void TellOfNewStart() override { ++newStarts; }
};

class HardwareBoard : public testing::Test {
  protected:
    HardwareBoard() {
        program.Register<DropDoor>([this](Program&) { return drop; });
        auto made = std::make_unique<FakeDevice>();
        device = made.get();
        board = std::make_unique<frmKUSB>(program, std::move(made));
        board->FindBoard();
        board->InitializeBoard();
    }

    /// Samples come as a driver delivers them, in portions of any length, every 10 ms.
    void Arrive(std::size_t samples, std::size_t portion = 150) {
        for (std::size_t i = 0; i < samples && device->flows; i += portion) {
            device->arrived += std::min(portion, samples - i);
            machine.Advance(std::chrono::milliseconds(10));
        }
    }

    void ExpectBlock(RawSample first, RawSample end) {
        std::vector<float> volts(sampleCapacity, -1);
        int count = 0;
        board->GetResultsVolts(volts, count);
        ASSERT_EQ(count, static_cast<int>(end - first));
        for (RawSample i = first; i < end; ++i) ASSERT_EQ(volts[i - first], static_cast<float>(i));
        EXPECT_EQ(volts[static_cast<std::size_t>(count)], 0) << "the element after the last sample";
    }

    TestMachine machine;
    Program program{machine.machine};
    std::shared_ptr<FiringDrop> drop = std::make_shared<FiringDrop>();
    FakeDevice* device = nullptr;
    std::unique_ptr<frmKUSB> board;
};

/// The first two buffers are not tested. The flow stops with the buffer that completes 10000 samples from the trigger
/// on.
TEST(CaptureRingTest, HoldsTheTimeAroundTheTriggerAtEveryPlaceInABuffer) {
    constexpr RawSample firstTested = 1000;
    for (const RawSample after : {0U, 400'000U}) {
        for (RawSample place = 0; place < 500; ++place) {
            const RawSample trigger = firstTested + after + place;
            const RawSample end = (trigger + 10000 + 499) / 500 * 500;
            const RawSample begin = end > 15000 ? end - 15000 : 0;
            CaptureRing ring;
            ring.Begin();
            SampleBuffer buffer{std::vector<RawSample>(500), 0};
            // A flow that has run long is as full at 20000 samples as later: the ring is begun nearer to the trigger.
            const RawSample start = trigger > 40000 ? trigger / 500 * 500 - 20000 : 0;
            RawSample next = start;
            bool complete = false;
            while (!complete) {
                ASSERT_LT(next, end);
                buffer.firstSample = next;
                std::iota(buffer.samples.begin(), buffer.samples.end(), next);
                next += 500;
                complete = ring.Take(buffer, [&](RawSample raw) { return raw >= trigger; });
            }
            ASSERT_EQ(next, end) << "trigger at " << trigger;
            std::vector<RawSample> expected(end - begin);
            std::iota(expected.begin(), expected.end(), begin);
            ASSERT_EQ(ring.InOrderOfTime(), expected) << "trigger at " << trigger;
        }
    }
}

TEST_F(HardwareBoard, DeliversTheSecondAroundTheTrigger) {
    for (const std::size_t portion : {1U, 150U, 499U, 500U, 777U, 30000U}) {
        board->CaptureBlock(1);
        EXPECT_TRUE(program.Run.AcquisitionActive);
        const RawSample start = device->next;
        drop->fireAt = start + 7250;
        Arrive(portion == 1 ? 17500 : 40000, portion);
        ASSERT_TRUE(board->BlockCaptured()) << portion;
        EXPECT_FALSE(program.Run.AcquisitionActive);
        ExpectBlock(start + 2500, start + 17500);
        EXPECT_FALSE(device->flows);
        device->arrived = 0;
    }
}

TEST_F(HardwareBoard, AShortBlockBeginsWithTheFlow) {
    board->CaptureBlock(1);
    drop->fireAt = 0;
    Arrive(40000);
    ExpectBlock(0, 11000);
    EXPECT_THAT(board->txtLog.Text.Get(), HasSubstr("Only 22 buffers out of 30 was filled."));
}

struct Disturbance {
    const char* name;
    bool afterTrigger;
    std::function<void(FakeDevice&)> happens;
    int newStarts;        ///< told to the operator
    const char* problem;  ///< "": the block is captured all the same
};

class DisturbedCapture : public HardwareBoard, public testing::WithParamInterface<Disturbance> {};

TEST_P(DisturbedCapture, GoesOnBeginsAnewOrTellsWhy) {
    const Disturbance& disturbance = GetParam();
    board->CaptureBlock(1);
    if (disturbance.afterTrigger) drop->fireAt = 2000;
    Arrive(6000);
    disturbance.happens(*device);
    machine.Advance(std::chrono::milliseconds(20));
    drop->fireAt = 20000;
    Arrive(60000);
    machine.Advance(std::chrono::milliseconds(5500));
    EXPECT_EQ(drop->newStarts, disturbance.newStarts);
    EXPECT_EQ(board->BlockCaptured(), *disturbance.problem == '\0') << board->txtLog.Text.Get();
    EXPECT_THAT(board->Problem(), HasSubstr(disturbance.problem));
    EXPECT_FALSE(program.Run.AcquisitionActive);
}

const auto lost = [](SampleBuffer& buffer) { buffer.firstSample += 500; };
const auto shorter = [](SampleBuffer& buffer) { buffer.samples.resize(300); };

INSTANTIATE_TEST_SUITE_P(
    Faults, DisturbedCapture,
    testing::Values(
        Disturbance{"OverrunWhileArmed", false, [](FakeDevice& d) { d.Overrun(); }, 1, ""},
        Disturbance{"OverrunInTheBlock", true, [](FakeDevice& d) { d.Overrun(); }, 0, "Samples of this drop were lost"},
        Disturbance{"LostBufferWhileArmed", false, [](FakeDevice& d) { d.spoilNext = lost; }, 1, ""},
        Disturbance{"LostBufferInTheBlock", true, [](FakeDevice& d) { d.spoilNext = lost; }, 0, "were lost"},
        Disturbance{"DoubledBufferWhileArmed", false, [](FakeDevice& d) { d.doublesNext = true; }, 0, ""},
        Disturbance{"DoubledBufferInTheBlock", true, [](FakeDevice& d) { d.doublesNext = true; }, 0, ""},
        Disturbance{"ShorterBufferWhileArmed", false, [](FakeDevice& d) { d.spoilNext = shorter; }, 1, ""},
        Disturbance{"SilentWhileArmed", false, [](FakeDevice& d) { d.flows = false; }, 0, "nothing for 5 seconds"},
        Disturbance{"SilentInTheBlock", true, [](FakeDevice& d) { d.flows = false; }, 0, "nothing for 5 seconds"},
        Disturbance{"UnpluggedWhileArmed", false, [](FakeDevice& d) { d.failing = Operation::Serve; }, 0, "cable"},
        Disturbance{"UnpluggedInTheBlock", true, [](FakeDevice& d) { d.failing = Operation::Serve; }, 0, "cable"}),
    [](const auto& row) { return row.param.name; });

TEST_F(HardwareBoard, TellsWhichOperationTheDeviceRefused) {
    device->failing = Operation::SingleValue;
    EXPECT_THROW(board->OneConversion(1), BoardError);
    device->failing = Operation::Start;
    board->CaptureBlock(1);
    EXPECT_EQ(board->Problem(), "The cable is out.");
    EXPECT_FALSE(program.Run.AcquisitionActive);
    EXPECT_THAT(board->txtLog.Text.Get(), HasSubstr("Error = 19:  The cable is out."));
    device->failing = Operation::None;
    board->CaptureBlock(1);
    EXPECT_EQ(board->Problem(), "");
    EXPECT_THROW(board->OneConversion(1), BoardError) << "a conversion must not disturb the capture";
    device->failing = Operation::Stop;
    board->StopAcq();
    EXPECT_FALSE(program.Run.AcquisitionActive);
    for (const Operation atStart : {Operation::Boards, Operation::Select}) {
        device->failing = atStart;
        EXPECT_EQ(board->FindBoard(), "");
        EXPECT_FALSE(board->BoardAvailable());
        EXPECT_EQ(board->Problem(), "The cable is out.");
    }
}

TEST_F(HardwareBoard, TellsACoarserResolution) {
    device->bits = 12;
    board->InitializeBoard();
    EXPECT_EQ(board->lblBoard.Caption.Get(), "example-9, 12 bits");
    EXPECT_THAT(machine.files.ReadBytes(machine.folder / "Bellmark.log"), HasSubstr("example-9, 12 bits"));
}

TEST_F(HardwareBoard, WaitsForTheButton) {
    int polls = 0;
    machine.WhileWaiting = [&] { device->single = ++polls < 10 ? 4 : 5; };
    EXPECT_EQ(board->WaitforButton(2), 'N');
    EXPECT_EQ(polls, 10);
    program.Run.ReviewMode = true;
    EXPECT_EQ(board->WaitforButton(2), 0);
}

TEST_F(HardwareBoard, TenThousandArmedAbortsLeaveNothingBehind) {
    for (int i = 0; i < 10000; ++i) {
        board->CaptureBlock(1);
        device->arrived = static_cast<std::size_t>(i % 1300);
        machine.clock.Advance(std::chrono::milliseconds(10));
        machine.timers.RunDue();
        board->StopAcq();
    }
    EXPECT_FALSE(board->BlockCaptured());
    EXPECT_FALSE(machine.timers.NextDue());
    const QueueSizes queues = device->Queues();
    EXPECT_EQ(queues.ready + queues.inProcess + queues.done, 0);
    EXPECT_LT(board->txtLog.Text.Get().size(), 10000U);
}

TEST_F(HardwareBoard, AnHourArmedLeavesQueuesAndLogAsTheyWere) {
    board->CaptureBlock(1);
    Arrive(15000);
    const std::size_t log = board->txtLog.Text.Get().size();
    for (int second = 0; second < 3600; ++second) {
        device->arrived += 15000;
        machine.clock.Advance(std::chrono::seconds(1));
        machine.timers.RunDue();
    }
    const QueueSizes queues = device->Queues();
    EXPECT_EQ(queues.ready, 30);
    EXPECT_EQ(queues.inProcess + queues.done, 0);
    EXPECT_EQ(board->txtLog.Text.Get().size(), log);
    EXPECT_EQ(drop->newStarts, 0);
    EXPECT_EQ(device->starts, 1);
}

}  // namespace
}  // namespace bellmark
