#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/error_messages.h"
#include "controls/picture.h"
#include "platform/date_time.h"
#include "run/procedure.h"

namespace bellmark {

class Program;

/// The curves of a drop, by the option button that shows them.
enum class DropCurve { Acceleration, Velocity, Deflection, StdDev };

/// Texts on the screens for the drops of an instrument.
struct InstrumentTexts {
    const char* pageTitle;     ///< of the collection screen
    const char* englishUnits;  ///< "(Drop data are in pound-force)"
    const char* metricUnits;
    const char* peak;
    const char* start;  ///< the quantity measured at the start of the pulse
    const char* englishUnit;
    const char* metricUnit;
    const char* acceleration;  ///< names of the curves
    const char* velocity;
    const char* deflection;
    const char* stdDev;          ///< nullptr when there is no such curve
    const char* englishPicture;  ///< of the peak
    const char* metricPicture;
};

/// A numbered message with its values.
struct NumberedMessage {
    int code = 0;
    std::vector<MessageValue> values;
};

/// The judgement of a measured drop, besides the drop record.
struct DropVerdict {
    bool hasPeak = true;      ///< without a peak the drop cannot be accepted
    bool outOfRange = false;  ///< beyond the range of the instrument: rejecting is suggested
    std::string startEnglish;
    std::string startMetric;
    std::string advice;                    ///< in the state line; blocks nothing
    std::optional<NumberedMessage> panel;  ///< shown on the drop screen, before the drop can be answered
    std::vector<NumberedMessage> boxes;    ///< shown once the drop is drawn and saved
};

/// Callbacks of the drop screen while a drop is captured.
struct CaptureView {
    std::function<void()> armed;     ///< the mass may fall
    std::function<void()> captured;  ///< the block is complete
};

/// A reference instrument: the differences between load cell and accelerometer when a drop is measured. It works on the
/// program's drop in hand.
class ReferenceInstrument {
  public:
    virtual ~ReferenceInstrument() = default;
    /// Captures and analyses a drop. Returns nothing when the wait was aborted.
    virtual std::optional<DropVerdict> Measure(const CaptureView& view) = 0;
    virtual Plot PlotOf(DropCurve curve, bool zoomedIn) const = 0;
    /// Content of the drop's file; lines end in CR LF.
    virtual std::string FileText(DateTime now) const = 0;
};

/// The texts of the load cell for its own procedure, of the accelerometer for all others.
const InstrumentTexts& TextsOf(Procedure procedure);

/// The instrument of the procedure in hand: the load cell, or the accelerometer.
std::unique_ptr<ReferenceInstrument> MakeInstrument(Program& program);

}  // namespace bellmark
