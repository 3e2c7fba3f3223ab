#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "comedi/calibrated_input.h"
#include "daq/queued_device.h"

namespace bellmark {

/// Analog input through Linux's comedi drivers, by device file. Reads never block: they are served from the timers of
/// the one thread.
class ComediDevice : public QueuedDevice {
  public:
    /// As the system's read: up to that many bytes of an open file; -1 and errno when it fails.
    using ReadFunction = std::function<long(int file, void* bytes, std::size_t most)>;

    explicit ComediDevice(ReadFunction read);
    ~ComediDevice() override;

    std::vector<std::string> Boards() override;
    std::string Problem() const override { return problem_; }
    void Select(const std::string& board) override;
    void Release() override;
    int ResolutionBits() const override { return input_->ResolutionBits(); }
    RawSample SingleValue(int channel) override;
    float VoltsOf(RawSample raw) const override { return input_->VoltsOf(raw); }
    void StartContinuous(int channel, int samplesPerSecond) override;
    void Serve() override;
    void Stop() override;

  private:
    struct Closer {
        void operator()(comedi_t_struct* board) const;
    };
    using OpenBoard = std::unique_ptr<comedi_t_struct, Closer>;

    struct KnownBoard {
        std::string name;
        std::string deviceFile;
    };

    OpenBoard Open(const std::string& deviceFile);
    void AskForRing() const;
    void CancelFlow() const;
    void ReadError(int number);

    ReadFunction read_;
    std::vector<KnownBoard> known_;
    std::string problem_;
    OpenBoard board_;
    std::string deviceFile_;
    std::unique_ptr<CalibratedInput> input_;
    bool flows_ = false;
    std::vector<unsigned char> bytes_;  ///< read in one go
    std::size_t left_ = 0;              ///< bytes of a sample that has not arrived whole, at the start of bytes_
};

}  // namespace bellmark
