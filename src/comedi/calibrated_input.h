#pragma once

#include <map>
#include <memory>
#include <string>

#include "daq/acquisition_device.h"

struct comedi_t_struct;

namespace bellmark {

/// The analog input of an opened board: its range, and the volts of its raw values with the board's calibration.
class CalibratedInput {
  public:
    /// Chooses the range nearest to ±10 V. Throws DeviceError for a board that cannot stream, or has no such range.
    explicit CalibratedInput(comedi_t_struct* board);
    ~CalibratedInput();
    CalibratedInput(const CalibratedInput&) = delete;
    CalibratedInput& operator=(const CalibratedInput&) = delete;

    unsigned Subdevice() const { return subdevice_; }
    unsigned Range() const { return range_; }
    unsigned Reference() const { return reference_; }  ///< what the voltage is measured against: AREF_...
    int ResolutionBits() const { return bits_; }
    std::size_t BytesPerSample() const { return bytesPerSample_; }

    /// Throws DeviceError when the board has no such channel. Then VoltsOf is about this channel.
    void ChooseChannel(int channel);
    float VoltsOf(RawSample raw) const;

  private:
    struct Converter;
    void ChooseRange();
    Converter MakeConverter(unsigned channel) const;

    comedi_t_struct* board_;
    unsigned subdevice_ = 0;
    unsigned range_ = 0;
    unsigned reference_ = 0;
    int bits_ = 0;
    std::size_t bytesPerSample_ = 2;
    std::map<int, Converter> converters_;
    const Converter* converter_ = nullptr;
};

/// The reason for the library's last failure, in words for the operator, with its number. device: "/dev/comedi0".
DeviceError ComediFailure(const std::string& device, const std::string& what);

}  // namespace bellmark
