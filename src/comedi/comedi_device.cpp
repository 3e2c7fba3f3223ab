#include "comedi/comedi_device.h"

#include <comedilib.h>
#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>

#include "platform/numbers.h"

namespace bellmark {

namespace {

constexpr int mostDeviceFiles = 16;
constexpr unsigned usualSamplesPerSecond = 15000;
constexpr double nanosecondsPerSecond = 1e9;
/// The deflection grows with the square of the time step: this share of it is 0.1 % of a deflection, a third of what
/// AASHTO R32 allows a gain to be wrong by.
constexpr double largestRateError = 0.0005;
constexpr std::size_t ringSeconds = 2;

/// The group whose members may use a device file: "iocard".
std::string GroupOf(const std::string& deviceFile) {
    struct stat facts {};
    if (stat(deviceFile.c_str(), &facts) != 0) return "iocard";
    const group* owner = getgrgid(facts.st_gid);
    return owner ? owner->gr_name : NumberText(static_cast<long long>(facts.st_gid));
}

std::string NoPermission(const std::string& deviceFile) {
    const std::string group = GroupOf(deviceFile);
    return "You may not use the data acquisition board " + deviceFile + ". Please become a member of the group \"" +
           group + "\" (sudo usermod -aG " + group + " YOUR-NAME) and log in again.";
}

/// A command for an endless flow of one channel. Throws DeviceError when the board cannot do it at this rate.
comedi_cmd FlowCommand(comedi_t* board, const CalibratedInput& input, unsigned* channels, unsigned rate) {
    const double period = nanosecondsPerSecond / rate;
    comedi_cmd command{};
    const bool knowsTimedFlow = comedi_get_cmd_generic_timed(board, input.Subdevice(), &command, 1,
                                                             static_cast<unsigned>(std::lround(period))) >= 0;
    command.chanlist = channels;
    command.chanlist_len = 1;
    command.stop_src = TRIG_NONE;
    command.stop_arg = 0;
    // The driver adapts what it cannot do exactly; asked again, it must agree.
    if (knowsTimedFlow) comedi_command_test(board, &command);
    const bool agrees = knowsTimedFlow && comedi_command_test(board, &command) == 0;
    const unsigned reached = command.scan_begin_src == TRIG_TIMER ? command.scan_begin_arg : command.convert_arg;
    if (!agrees || std::abs(reached - period) > largestRateError * period)
        throw DeviceError(0, "It cannot take " + NumberText(static_cast<long long>(rate)) + " samples a second.");
    return command;
}

unsigned ChannelEntry(const CalibratedInput& input, int channel) {
    return CR_PACK(static_cast<unsigned>(channel), input.Range(), input.Reference());
}

}  // namespace

void ComediDevice::Closer::operator()(comedi_t_struct* board) const {
    comedi_close(board);
}

ComediDevice::ComediDevice(ReadFunction read) : read_(std::move(read)) {
    // Failures are told by the program.
    comedi_loglevel(0);
}

ComediDevice::~ComediDevice() {
    CancelFlow();
}

/// nullptr when there is no board behind the file.
ComediDevice::OpenBoard ComediDevice::Open(const std::string& deviceFile) {
    OpenBoard board(comedi_open(deviceFile.c_str()));
    if (board) return board;
    const int number = comedi_errno();
    if (number == EACCES || number == EPERM) throw DeviceError(number, NoPermission(deviceFile));
    if (number == EBUSY) throw ComediFailure(deviceFile, "The data acquisition board cannot be opened");
    return nullptr;
}

std::vector<std::string> ComediDevice::Boards() {
    Release();
    known_.clear();
    problem_.clear();
    for (int i = 0; i < mostDeviceFiles; ++i) {
        const std::string deviceFile = "/dev/comedi" + NumberText(i);
        try {
            const OpenBoard board = Open(deviceFile);
            if (!board) continue;
            const char* const known = comedi_get_board_name(board.get());
            const std::string name = known ? known : deviceFile;
            try {
                const CalibratedInput input(board.get());
                unsigned channels = ChannelEntry(input, 0);
                FlowCommand(board.get(), input, &channels, usualSamplesPerSecond);
                known_.push_back({name, deviceFile});
            } catch (const DeviceError& error) {
                problem_ = "The data acquisition board " + name + " cannot be used. " + error.what();
            }
        } catch (const DeviceError& error) {
            problem_ = error.what();
        }
    }
    std::vector<std::string> names;
    for (const KnownBoard& board : known_) names.push_back(board.name);
    return names;
}

void ComediDevice::Select(const std::string& board) {
    Release();
    const auto found =
        std::find_if(known_.begin(), known_.end(), [&](const KnownBoard& known) { return known.name == board; });
    if (found == known_.end()) throw DeviceError(0, "There is no data acquisition board " + board + '.');
    deviceFile_ = found->deviceFile;
    board_ = Open(deviceFile_);
    if (!board_) throw ComediFailure(deviceFile_, "The data acquisition board cannot be opened");
    input_ = std::make_unique<CalibratedInput>(board_.get());
    input_->ChooseChannel(0);
    AskForRing();
}

/// The driver keeps two seconds of samples while the program is busy. A driver that refuses keeps what it has; what
/// does not fit is an overrun, which is told.
void ComediDevice::AskForRing() const {
    const auto wanted = static_cast<int>(ringSeconds * usualSamplesPerSecond * input_->BytesPerSample());
    if (comedi_get_buffer_size(board_.get(), input_->Subdevice()) >= wanted) return;
    const int most = comedi_get_max_buffer_size(board_.get(), input_->Subdevice());
    comedi_set_buffer_size(board_.get(), input_->Subdevice(), static_cast<unsigned>(std::min(wanted, most)));
}

void ComediDevice::Release() {
    Stop();
    input_.reset();
    board_.reset();
}

RawSample ComediDevice::SingleValue(int channel) {
    if (!input_) throw DeviceError(0, "There is no data acquisition board.");
    input_->ChooseChannel(channel);
    lsampl_t raw = 0;
    const int got = comedi_data_read(board_.get(), input_->Subdevice(), static_cast<unsigned>(channel), input_->Range(),
                                     input_->Reference(), &raw);
    if (got < 0) throw ComediFailure(deviceFile_, "The voltage cannot be read");
    return raw;
}

void ComediDevice::StartContinuous(int channel, int samplesPerSecond) {
    if (!input_) throw DeviceError(0, "There is no data acquisition board.");
    input_->ChooseChannel(channel);
    unsigned channels = ChannelEntry(*input_, channel);
    comedi_cmd command = FlowCommand(board_.get(), *input_, &channels, static_cast<unsigned>(samplesPerSecond));
    const int file = comedi_fileno(board_.get());
    fcntl(file, F_SETFL, fcntl(file, F_GETFL) | O_NONBLOCK);
    if (comedi_command(board_.get(), &command) < 0) throw ComediFailure(deviceFile_, "The capture cannot be started");
    flows_ = true;
    left_ = 0;
}

void ComediDevice::Serve() {
    if (!flows_) return;
    // Samples that the board still holds itself are handed on at once. A driver that cannot do that delivers them
    // later.
    comedi_poll(board_.get(), input_->Subdevice());
    const std::size_t size = input_->BytesPerSample();
    bytes_.resize(Room() * size);
    if (bytes_.size() <= left_) return;
    const long got = read_(comedi_fileno(board_.get()), bytes_.data() + left_, bytes_.size() - left_);
    if (got < 0) return ReadError(errno);
    if (got == 0) return Raise(DeviceEvent::QueueStopped);
    const std::size_t held = left_ + static_cast<std::size_t>(got);
    std::vector<RawSample> samples(held / size);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        sampl_t narrow = 0;
        lsampl_t wide = 0;
        void* const sample = size == sizeof(narrow) ? static_cast<void*>(&narrow) : &wide;
        std::memcpy(sample, bytes_.data() + i * size, size);
        samples[i] = size == sizeof(narrow) ? narrow : wide;
    }
    left_ = held % size;
    std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(held - left_), left_, bytes_.begin());
    Deliver(samples);
}

void ComediDevice::ReadError(int number) {
    if (number == EAGAIN || number == EWOULDBLOCK || number == EINTR) return;
    flows_ = false;
    // The driver's buffer was full, and the driver has stopped.
    if (number == EPIPE) return Raise(DeviceEvent::Overrun);
    throw DeviceError(number, deviceFile_ + " does not answer any more. Please check its cable.");
}

void ComediDevice::Stop() {
    CancelFlow();
    flows_ = false;
    Flush();
}

/// Also after an overrun: the driver lets no new flow begin before.
void ComediDevice::CancelFlow() const {
    if (board_ && input_) comedi_cancel(board_.get(), input_->Subdevice());
}

}  // namespace bellmark
