#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <vector>

/// A stand-in for the library of the comedi drivers, with faults on request. It is global, as the library is.
namespace bellmark::fake_comedi {

struct VoltRange {
    double lowest = -10;
    double highest = 10;
    unsigned unit = 0;  ///< 0 are volts
};

struct FakeBoard {
    std::string name = "example-1";
    unsigned maxData = 65535;
    std::vector<VoltRange> ranges{{}};
    unsigned flags = 0;              ///< SDF_...
    bool streams = true;             ///< has a subdevice for commands
    unsigned clockStep = 50;         ///< ns: periods are multiples of it
    unsigned fastestPeriod = 10000;  ///< ns
    int mostBytes = 200000;          ///< to which the driver's buffer may grow
};

struct Library {
    std::map<std::string, FakeBoard> boards;  ///< by device file
    std::map<std::string, int> openErrors;    ///< errno of comedi_open, by device file
    int readError = 0;                        ///< errno of a single conversion
    int commandError = 0;                     ///< errno of the start of a flow
    bool isCalibrated = false;                ///< there is a calibration file
    std::vector<std::uint32_t> voltages;      ///< raw value of each channel

    // What the program did.
    int error = 0;
    int opened = 0;  ///< boards that are open
    bool flows = false;
    unsigned channelEntry = 0;  ///< of the flow
    unsigned period = 0;        ///< ns
    int bufferBytes = 4096;
    std::deque<unsigned char> bytes;  ///< that the driver holds
    int endOfBytes = 11;              ///< errno of a read without bytes: EAGAIN; 0 is the end of the flow

    /// As the system's read; portion: the most that one call gives.
    long Read(void* to, std::size_t most, std::size_t portion);
    template <class Sample>
    void Deliver(Sample sample) {
        const auto* first = reinterpret_cast<const unsigned char*>(&sample);
        bytes.insert(bytes.end(), first, first + sizeof(sample));
    }
};

Library& TheLibrary();

/// Volts of a raw value on a range after software calibration: 1 mV more than nominal.
inline constexpr double calibrationVolts = 0.001;

}  // namespace bellmark::fake_comedi
