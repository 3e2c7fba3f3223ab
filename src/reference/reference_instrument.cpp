#include "reference/reference_instrument.h"

#include "app/program.h"
#include "reference/accelerometer_instrument.h"
#include "reference/load_cell_instrument.h"

namespace bellmark {

namespace {

constexpr InstrumentTexts loadCellTexts{
    .pageTitle = "Collect Data Using Reference Load Cell",
    .englishUnits = "(Drop data are in pound-force)",
    .metricUnits = "(Drop data are in kilo-Newtons)",
    .peak = "Peak Load",
    .start = "Load at Start of Pulse",
    .englishUnit = "(pound-force)",
    .metricUnit = "(kilo-Newtons)",
    .acceleration = "&Voltage",
    .velocity = "&Offset",
    .deflection = "&Force",
    .stdDev = nullptr,
    .englishPicture = "#,000",
    .metricPicture = "#0.00",
};

constexpr InstrumentTexts accelerometerTexts{
    .pageTitle = "Collect Data Using Accelerometer",
    .englishUnits = "(Drop data are in mils)",
    .metricUnits = "(Drop data are in microns)",
    .peak = "Peak Deflection",
    .start = "Deflection at Start of Pulse",
    .englishUnit = "(mils)",
    .metricUnit = "(microns)",
    .acceleration = "&Acceleration",
    .velocity = "&Velocity",
    .deflection = "&Deflection",
    .stdDev = "&Std.Dev.",
    .englishPicture = "#0.00",
    .metricPicture = "#0",
};

}  // namespace

const InstrumentTexts& TextsOf(Procedure procedure) {
    return procedure == Procedure::LoadCell ? loadCellTexts : accelerometerTexts;
}

std::unique_ptr<ReferenceInstrument> MakeInstrument(Program& program) {
    if (program.Run.CurrentProcedure == Procedure::LoadCell) return std::make_unique<LoadCellInstrument>(program);
    return std::make_unique<AccelerometerInstrument>(program);
}

}  // namespace bellmark
