#pragma once

#include "reference/reference_instrument.h"

namespace bellmark {

struct AccelDropFindings;
struct BurstFindings;

/// The reference accelerometer in the sensor stand. A drop takes two captures: an initial burst at rest, and the drop
/// itself.
class AccelerometerInstrument : public ReferenceInstrument {
  public:
    explicit AccelerometerInstrument(Program& program) : program_(program) {}
    std::optional<DropVerdict> Measure(const CaptureView& view) override;
    Plot PlotOf(DropCurve curve, bool zoomedIn) const override;
    std::string FileText(DateTime now) const override;

  private:
    bool CaptureBurst();
    bool CaptureDrop(const CaptureView& view);
    DropVerdict VerdictOn(const AccelDropFindings& findings, const BurstFindings& burst);

    Program& program_;
};

}  // namespace bellmark
