#include "comedi/calibrated_input.h"

#include <comedilib.h>

#include <bit>
#include <cerrno>
#include <cmath>
#include <cstdlib>

#include "platform/numbers.h"

namespace bellmark {

namespace {

constexpr double fullScaleVolts = 10;
/// A smaller range would cut off the peak of a large load, and nothing would show it.
constexpr double leastVolts = 9.8;

struct CalibrationDeleter {
    void operator()(comedi_calibration_t* calibration) const { comedi_cleanup_calibration(calibration); }
};
using Calibration = std::unique_ptr<comedi_calibration_t, CalibrationDeleter>;

/// The calibration that was stored for the board; nothing when it was never calibrated.
Calibration StoredCalibration(comedi_t* board) {
    const std::unique_ptr<char, decltype(&std::free)> path(comedi_get_default_calibration_path(board), &std::free);
    return Calibration(path ? comedi_parse_calibration_file(path.get()) : nullptr);
}

unsigned ReferenceOf(int flags) {
    if (flags & SDF_GROUND) return AREF_GROUND;
    return (flags & SDF_DIFF) ? AREF_DIFF : AREF_COMMON;
}

}  // namespace

struct CalibratedInput::Converter {
    comedi_polynomial_t polynomial{};
};

DeviceError ComediFailure(const std::string& device, const std::string& what) {
    const int number = comedi_errno();
    switch (number) {
        case EBUSY:
            return {number, what + ": " + device + " is in use by another program."};
        case ENODEV:
        case ENXIO:
        case EIO:
            return {number, what + ": " + device + " does not answer. Please check its cable."};
        default:
            return {number, what + ": " + device + ": " + comedi_strerror(number) + '.'};
    }
}

CalibratedInput::CalibratedInput(comedi_t* board) : board_(board) {
    const int subdevice = comedi_get_read_subdevice(board_);
    if (subdevice < 0 || comedi_get_subdevice_type(board_, static_cast<unsigned>(subdevice)) != COMEDI_SUBD_AI)
        throw DeviceError(0, "It has no analog input that delivers a steady flow of samples.");
    subdevice_ = static_cast<unsigned>(subdevice);
    const int flags = comedi_get_subdevice_flags(board_, subdevice_);
    reference_ = ReferenceOf(flags);
    bytesPerSample_ = (flags & SDF_LSAMPL) ? sizeof(lsampl_t) : sizeof(sampl_t);
    bits_ = static_cast<int>(std::bit_width(comedi_get_maxdata(board_, subdevice_, 0)));
    ChooseRange();
}

CalibratedInput::~CalibratedInput() = default;

void CalibratedInput::ChooseRange() {
    const int ranges = comedi_get_n_ranges(board_, subdevice_, 0);
    double nearest = HUGE_VAL;
    for (int i = 0; i < ranges; ++i) {
        const comedi_range* range = comedi_get_range(board_, subdevice_, 0, static_cast<unsigned>(i));
        if (!range || range->unit != UNIT_volt || range->min > -leastVolts || range->max < leastVolts) continue;
        const double distance = std::abs(range->min + fullScaleVolts) + std::abs(range->max - fullScaleVolts);
        if (distance >= nearest) continue;
        nearest = distance;
        range_ = static_cast<unsigned>(i);
    }
    if (nearest == HUGE_VAL) throw DeviceError(0, "It cannot measure from -10 to +10 V.");
}

void CalibratedInput::ChooseChannel(int channel) {
    if (channel < 0 || channel >= comedi_get_n_channels(board_, subdevice_))
        throw DeviceError(0, "The board has no channel " + NumberText(channel) + '.');
    auto known = converters_.find(channel);
    if (known == converters_.end()) {
        known = converters_.emplace(channel, MakeConverter(static_cast<unsigned>(channel))).first;
    }
    converter_ = &known->second;
}

/// A board that is calibrated in software needs its calibration file. One that calibrates itself knows its conversion;
/// the nominal conversion of the range is the last resort, and only for a board that has no calibration at all.
CalibratedInput::Converter CalibratedInput::MakeConverter(unsigned channel) const {
    Converter converter;
    const int flags = comedi_get_subdevice_flags(board_, subdevice_);
    if (flags & SDF_SOFT_CALIBRATED) {
        const Calibration calibration = StoredCalibration(board_);
        if (!calibration || comedi_get_softcal_converter(subdevice_, channel, range_, COMEDI_TO_PHYSICAL,
                                                         calibration.get(), &converter.polynomial) < 0) {
            throw DeviceError(0, "The board has no calibration. Please calibrate it with comedi_soft_calibrate.");
        }
    } else if (comedi_get_hardcal_converter(board_, subdevice_, channel, range_, COMEDI_TO_PHYSICAL,
                                            &converter.polynomial) < 0) {
        throw DeviceError(comedi_errno(), "The board does not tell the volts of its values.");
    }
    return converter;
}

float CalibratedInput::VoltsOf(RawSample raw) const {
    return static_cast<float>(comedi_to_physical(raw, &converter_->polynomial));
}

}  // namespace bellmark
