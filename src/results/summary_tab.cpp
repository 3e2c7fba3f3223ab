#include "results/summary_tab.h"

#include "app/program.h"
#include "platform/format.h"

namespace bellmark {

namespace {

/// As the set-up shows it; empty when the date is not known.
std::string DateText(DateTime date) {
    return DayOf(date) == ZeroDate() ? std::string() : Format(date, "d-mmm-yyyy");
}

}  // namespace

SummaryTab::SummaryTab(Screen& screen, Program& program) : screen_(screen), program_(program) {
    for (TextBox* box : {&txtFWDOwner, &txtFWDUnit, &txtFWDOperator, &txtLastLCCalDate, &txtLastSensorCalDate}) {
        box->Locked = true;
    }
}

void SummaryTab::Fill() {
    txtFWDOwner.Text = program_.Run.DeviceOwner;
    txtFWDUnit.Text = program_.Run.DeviceName;
    txtFWDOperator.Text = program_.Run.OperatorName;
    txtLastLCCalDate.Text = DateText(program_.Run.LoadCellCalibrationDate);
    txtLastSensorCalDate.Text = DateText(program_.Run.SensorCalibrationDate);
}

}  // namespace bellmark
