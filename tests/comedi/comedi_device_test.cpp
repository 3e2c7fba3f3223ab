// The comedi back-end on a stand-in for its library.

#include "comedi/comedi_device.h"

#include <comedi.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

#include "app/program.h"
#include "daq/frm_kusb.h"
#include "tests/comedi/fake_comedilib.h"
#include "tests/support/idle_doors.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

using fake_comedi::FakeBoard;
using fake_comedi::Library;
using fake_comedi::TheLibrary;
using testing::HasSubstr;

constexpr const char* first = "/dev/comedi0";

class ComediTest : public testing::Test {
  protected:
    ComediTest() {
        TheLibrary() = {};
        TheLibrary().boards[first] = {};
        TheLibrary().voltages = std::vector<std::uint32_t>(8, 32768);
    }
    ~ComediTest() override {
        device.reset();
        EXPECT_EQ(TheLibrary().opened, 0) << "boards were left open";
    }

    void Select() { device->Select(device->Boards().at(0)); }

    void StartFlow(int buffers) {
        Select();
        for (int i = 0; i < buffers; ++i) device->PutReady({std::vector<RawSample>(500), 0});
        device->StartContinuous(1, 15000);
    }

    std::size_t portion = 100000;  ///< the most bytes that one read gives
    std::unique_ptr<ComediDevice> device = std::make_unique<ComediDevice>(
        [this](int, void* bytes, std::size_t most) { return TheLibrary().Read(bytes, most, portion); });
};

struct StartCase {
    const char* name;
    std::function<void(Library&)> change;
    std::vector<std::string> boards;
    const char* problem;
};

class ComediStart : public ComediTest, public testing::WithParamInterface<StartCase> {};

TEST_P(ComediStart, FindsTheBoardOrTellsWhyItCannotBeUsed) {
    GetParam().change(TheLibrary());
    EXPECT_EQ(device->Boards(), GetParam().boards);
    EXPECT_THAT(device->Problem(), HasSubstr(GetParam().problem));
    if (*GetParam().problem == '\0') {
        EXPECT_EQ(device->Problem(), "");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Boards, ComediStart,
    testing::Values(
        StartCase{"Usual", [](Library&) {}, {"example-1"}, ""},
        StartCase{"NoBoard", [](Library& l) { l.boards.clear(); }, {}, ""},
        StartCase{"OnlyTheLastFile",
                  [](Library& l) {
                      l.boards.clear();
                      l.boards["/dev/comedi15"].name = "example-2";
                  },
                  {"example-2"},
                  ""},
        StartCase{"NoPermission", [](Library& l) { l.openErrors[first] = EACCES; }, {}, "usermod -aG iocard"},
        StartCase{"Busy", [](Library& l) { l.openErrors[first] = EBUSY; }, {}, "in use by another program"},
        StartCase{"NotConfigured", [](Library& l) { l.openErrors[first] = ENODEV; }, {}, ""},
        StartCase{"TooSlow", [](Library& l) { l.boards[first].fastestPeriod = 100000; }, {}, "15000 samples a second"},
        StartCase{"CoarseClock", [](Library& l) { l.boards[first].clockStep = 1000; }, {}, "15000 samples a second"},
        StartCase{"SmallRange",
                  [](Library& l) {
                      l.boards[first].ranges = {{-5, 5}};
                  },
                  {},
                  "from -10 to +10 V"},
        StartCase{"OneSidedRange",
                  [](Library& l) {
                      l.boards[first].ranges = {{0, 10}};
                  },
                  {},
                  "from -10 to +10 V"},
        StartCase{"OtherUnit",
                  [](Library& l) {
                      l.boards[first].ranges = {{-10, 10, 1}};
                  },
                  {},
                  "from -10 to +10 V"},
        StartCase{"NoFlow", [](Library& l) { l.boards[first].streams = false; }, {}, "no analog input"}),
    [](const auto& row) { return row.param.name; });

TEST_F(ComediTest, TakesTheRangeNearestToTenVolts) {
    TheLibrary().boards[first].ranges = {{-12, 12}, {-5, 5}, {-10.24, 10.24}, {0, 10}, {-50, 50}};
    StartFlow(1);
    EXPECT_EQ(CR_RANGE(TheLibrary().channelEntry), 2U);
    EXPECT_EQ(CR_CHAN(TheLibrary().channelEntry), 1U);
    EXPECT_EQ(TheLibrary().period, 66650U) << "66667 ns in steps of 50 ns";
    EXPECT_FLOAT_EQ(device->VoltsOf(0), -10.24F);
    EXPECT_FLOAT_EQ(device->VoltsOf(65535), 10.24F);
}

TEST_F(ComediTest, AsksForTwoSecondsInTheDriver) {
    Select();
    EXPECT_EQ(TheLibrary().bufferBytes, 60000);
    TheLibrary().bufferBytes = 4096;
    TheLibrary().boards[first].mostBytes = 32768;
    Select();
    EXPECT_EQ(TheLibrary().bufferBytes, 32768) << "as much as the driver allows";
    TheLibrary().bufferBytes = 100000;
    Select();
    EXPECT_EQ(TheLibrary().bufferBytes, 100000);
}

TEST_F(ComediTest, UsesTheBoardsCalibration) {
    Select();
    EXPECT_FLOAT_EQ(device->VoltsOf(65535), 10.0F);
    TheLibrary().boards[first].flags = SDF_SOFT_CALIBRATED;
    EXPECT_THROW(Select(), DeviceError) << "a board that was never calibrated";
    TheLibrary().isCalibrated = true;
    Select();
    EXPECT_FLOAT_EQ(device->VoltsOf(0), static_cast<float>(-10 + fake_comedi::calibrationVolts));
    TheLibrary().boards[first] = {};
    TheLibrary().boards[first].maxData = 4095;
    Select();
    EXPECT_EQ(device->ResolutionBits(), 12);
    EXPECT_FLOAT_EQ(device->VoltsOf(4095), 10.0F);
}

TEST_F(ComediTest, ConvertsSingleVoltages) {
    Select();
    TheLibrary().voltages[3] = 65535;
    EXPECT_EQ(device->SingleValue(3), 65535U);
    for (const auto& [error, words] : {std::pair(ENODEV, "does not answer"), std::pair(EBUSY, "another program"),
                                       std::pair(EINVAL, "Invalid argument")}) {
        TheLibrary().readError = error;
        try {
            device->SingleValue(3);
            FAIL() << error;
        } catch (const DeviceError& failure) {
            EXPECT_THAT(failure.what(), HasSubstr(words));
            EXPECT_EQ(failure.Number(), error);
        }
    }
    EXPECT_THROW(device->SingleValue(8), DeviceError) << "no such channel";
}

/// Samples in portions that divide neither samples nor buffers.
TEST_F(ComediTest, FillsBuffersWhateverTheDriverDelivers) {
    for (const unsigned flags : {0U, static_cast<unsigned>(SDF_LSAMPL)}) {
        for (const std::size_t bytesAtATime : {1U, 3U, 1000U, 1001U, 100000U}) {
            TheLibrary().boards[first].flags = flags;
            portion = bytesAtATime;
            StartFlow(4);
            for (unsigned i = 0; i < 1234; ++i) {
                const unsigned raw = i * 53 % 65536;
                flags ? TheLibrary().Deliver(static_cast<lsampl_t>(raw))
                      : TheLibrary().Deliver(static_cast<sampl_t>(raw));
            }
            while (!TheLibrary().bytes.empty()) device->Serve();
            EXPECT_EQ(device->Queues().done, 2);
            EXPECT_EQ(device->Queues().inProcess, 1);
            for (unsigned b = 0; b < 2; ++b) {
                const auto buffer = device->TakeDone();
                ASSERT_TRUE(buffer);
                EXPECT_EQ(buffer->firstSample, 500 * b);
                for (unsigned i = 0; i < 500; ++i) ASSERT_EQ(buffer->samples[i], (500 * b + i) * 53 % 65536);
            }
            device->Stop();
        }
    }
}

TEST_F(ComediTest, LeavesWithTheDriverWhatHasNoBuffer) {
    StartFlow(2);
    for (unsigned i = 0; i < 1700; ++i) TheLibrary().Deliver(static_cast<sampl_t>(i));
    device->Serve();
    device->Serve();
    EXPECT_EQ(TheLibrary().bytes.size(), 1400U);
    device->PutReady({std::vector<RawSample>(500), 0});
    device->Serve();
    for (const RawSample expected : {0U, 500U, 1000U}) EXPECT_EQ(device->TakeDone()->samples.front(), expected);
}

TEST_F(ComediTest, TellsHowAFlowEnds) {
    StartFlow(2);
    device->Serve();
    EXPECT_FALSE(device->TakeEvent()) << "nothing has arrived yet";
    TheLibrary().endOfBytes = EPIPE;
    device->Serve();
    EXPECT_EQ(device->TakeEvent(), DeviceEvent::Overrun);
    StartFlow(2);
    TheLibrary().endOfBytes = 0;
    device->Serve();
    EXPECT_EQ(device->TakeEvent(), DeviceEvent::QueueStopped);
    StartFlow(2);
    TheLibrary().endOfBytes = ENODEV;
    EXPECT_THROW(device->Serve(), DeviceError);
    TheLibrary().commandError = EBUSY;
    EXPECT_THROW(StartFlow(2), DeviceError);
    EXPECT_FALSE(TheLibrary().flows);
}

struct LoudDrop : IdleDrop {
    bool CheckTrigger(double volts) override { return volts > 5; }
};

/// A pulse of 6 V in a quiet signal, through the whole board.
TEST_F(ComediTest, DeliversTheSecondAroundAPulse) {
    TestMachine machine;
    Program program(machine.machine);
    program.Register<DropDoor>([](Program&) { return std::make_shared<LoudDrop>(); });
    frmKUSB board(program, std::move(device));
    EXPECT_EQ(board.FindBoard(), "example-1");
    board.InitializeBoard();
    board.CaptureBlock(1);
    portion = 333;
    constexpr unsigned pulseAt = 7300;
    constexpr sampl_t sixVolts = 52428;
    for (unsigned i = 0; i < 40000 && !board.BlockCaptured(); ++i) {
        TheLibrary().Deliver(i == pulseAt ? sixVolts : static_cast<sampl_t>(32768));
        if (i % 150 == 0) machine.Advance(std::chrono::milliseconds(10));
    }
    ASSERT_TRUE(board.BlockCaptured());
    std::vector<float> volts(sampleCapacity);
    int count = 0;
    board.GetResultsVolts(volts, count);
    EXPECT_EQ(count, 15000);
    // The block ends with the buffer that completes 10000 samples: at 17500.
    EXPECT_NEAR(volts[pulseAt - 2500], 6, 0.001);
    EXPECT_NEAR(volts[0], 0, 0.001);
    EXPECT_FALSE(TheLibrary().flows);
    board.Unload();
}

}  // namespace
}  // namespace bellmark
