#pragma once

#include "reference/reference_instrument.h"

namespace bellmark {

struct LoadDropFindings;

class LoadCellInstrument : public ReferenceInstrument {
  public:
    explicit LoadCellInstrument(Program& program) : program_(program) {}
    std::optional<DropVerdict> Measure(const CaptureView& view) override;
    Plot PlotOf(DropCurve curve, bool zoomedIn) const override;
    std::string FileText(DateTime now) const override;

  private:
    DropVerdict VerdictOn(const LoadDropFindings& findings) const;

    Program& program_;
};

}  // namespace bellmark
