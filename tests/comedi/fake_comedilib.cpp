#include "tests/comedi/fake_comedilib.h"

#include <comedilib.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

using bellmark::fake_comedi::calibrationVolts;
using bellmark::fake_comedi::FakeBoard;
using bellmark::fake_comedi::TheLibrary;

struct comedi_t_struct {
    FakeBoard board;
    std::vector<comedi_range> ranges;
    int file = open("/dev/null", O_RDONLY);
};

namespace bellmark::fake_comedi {

Library& TheLibrary() {
    static Library library;
    return library;
}

long Library::Read(void* to, std::size_t most, std::size_t portion) {
    const std::size_t count = std::min({most, portion, bytes.size()});
    if (count == 0) {
        errno = endOfBytes;
        return endOfBytes == 0 ? 0 : -1;
    }
    std::copy_n(bytes.begin(), count, static_cast<unsigned char*>(to));
    bytes.erase(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
    return static_cast<long>(count);
}

namespace {

int Fails(int error) {
    TheLibrary().error = error;
    return error == 0 ? 0 : -1;
}

void SetNominal(const comedi_t* device, unsigned range, comedi_polynomial_t* polynomial) {
    const VoltRange& volts = device->board.ranges[range];
    *polynomial = {};
    polynomial->order = 1;
    polynomial->coefficients[0] = volts.lowest;
    polynomial->coefficients[1] = (volts.highest - volts.lowest) / device->board.maxData;
}

}  // namespace
}  // namespace bellmark::fake_comedi

using bellmark::fake_comedi::Fails;
using bellmark::fake_comedi::SetNominal;

comedi_t* comedi_open(const char* fn) {
    const auto refused = TheLibrary().openErrors.find(fn);
    const auto found = TheLibrary().boards.find(fn);
    const bool opens = refused == TheLibrary().openErrors.end() && found != TheLibrary().boards.end();
    Fails(opens ? 0 : refused != TheLibrary().openErrors.end() ? refused->second : ENOENT);
    if (!opens) return nullptr;
    ++TheLibrary().opened;
    auto* device = new comedi_t_struct;
    device->board = found->second;
    for (const auto& range : device->board.ranges) device->ranges.push_back({range.lowest, range.highest, range.unit});
    return device;
}

int comedi_close(comedi_t* it) {
    --TheLibrary().opened;
    close(it->file);
    delete it;
    return 0;
}

int comedi_loglevel(int) {
    return 0;
}
int comedi_errno() {
    return TheLibrary().error;
}
const char* comedi_strerror(int errnum) {
    return std::strerror(errnum);
}
int comedi_fileno(comedi_t* it) {
    return it->file;
}
const char* comedi_get_board_name(comedi_t* it) {
    return it->board.name.c_str();
}
int comedi_get_read_subdevice(comedi_t* dev) {
    return dev->board.streams ? 0 : -1;
}
int comedi_get_subdevice_type(comedi_t*, unsigned) {
    return COMEDI_SUBD_AI;
}
int comedi_get_subdevice_flags(comedi_t* it, unsigned) {
    return static_cast<int>(it->board.flags);
}
int comedi_get_n_channels(comedi_t*, unsigned) {
    return 8;
}
lsampl_t comedi_get_maxdata(comedi_t* it, unsigned, unsigned) {
    return it->board.maxData;
}
int comedi_get_n_ranges(comedi_t* it, unsigned, unsigned) {
    return static_cast<int>(it->ranges.size());
}
comedi_range* comedi_get_range(comedi_t* it, unsigned, unsigned, unsigned range) {
    return &it->ranges[range];
}
int comedi_get_buffer_size(comedi_t*, unsigned) {
    return TheLibrary().bufferBytes;
}
int comedi_get_max_buffer_size(comedi_t* it, unsigned) {
    return it->board.mostBytes;
}
int comedi_set_buffer_size(comedi_t*, unsigned, unsigned len) {
    return TheLibrary().bufferBytes = static_cast<int>(len);
}

int comedi_data_read(comedi_t*, unsigned, unsigned chan, unsigned, unsigned, lsampl_t* data) {
    if (TheLibrary().readError) return Fails(TheLibrary().readError);
    *data = TheLibrary().voltages[chan];
    return 1;
}

int comedi_get_cmd_generic_timed(comedi_t*, unsigned, comedi_cmd* cmd, unsigned, unsigned period) {
    *cmd = {};
    cmd->scan_begin_src = TRIG_TIMER;
    cmd->scan_begin_arg = period;
    return 0;
}

/// 0 when the command can run as it stands; otherwise it is changed to the nearest that can.
int comedi_command_test(comedi_t* it, comedi_cmd* cmd) {
    const unsigned step = it->board.clockStep;
    const unsigned nearest = std::max((cmd->scan_begin_arg + step / 2) / step * step, it->board.fastestPeriod);
    const bool asItStands = nearest == cmd->scan_begin_arg;
    cmd->scan_begin_arg = nearest;
    return asItStands ? 0 : 4;
}

int comedi_command(comedi_t*, comedi_cmd* cmd) {
    if (TheLibrary().commandError) return Fails(TheLibrary().commandError);
    TheLibrary().flows = true;
    TheLibrary().channelEntry = cmd->chanlist[0];
    TheLibrary().period = cmd->scan_begin_arg;
    return 0;
}

int comedi_cancel(comedi_t*, unsigned) {
    TheLibrary().flows = false;
    TheLibrary().bytes.clear();
    return 0;
}

int comedi_poll(comedi_t*, unsigned) {
    return 0;
}
char* comedi_get_default_calibration_path(comedi_t*) {
    return strdup("/var/lib/example");
}

comedi_calibration_t* comedi_parse_calibration_file(const char*) {
    return TheLibrary().isCalibrated ? new comedi_calibration_t{} : nullptr;
}

void comedi_cleanup_calibration(comedi_calibration_t* calibration) {
    delete calibration;
}

int comedi_get_softcal_converter(unsigned, unsigned, unsigned, comedi_conversion_direction, const comedi_calibration_t*,
                                 comedi_polynomial_t* polynomial) {
    *polynomial = {};
    polynomial->order = 1;
    polynomial->coefficients[0] = -10 + calibrationVolts;
    polynomial->coefficients[1] = 20.0 / 65535;
    return 0;
}

int comedi_get_hardcal_converter(comedi_t* dev, unsigned, unsigned, unsigned range, comedi_conversion_direction,
                                 comedi_polynomial_t* polynomial) {
    SetNominal(dev, range, polynomial);
    return 0;
}

double comedi_to_physical(lsampl_t data, const comedi_polynomial_t* polynomial) {
    return polynomial->coefficients[0] + polynomial->coefficients[1] * data;
}
