#include "results/summary_tab.h"

#include "app/doors.h"
#include "app/program.h"

namespace bellmark {

SummaryTab::SummaryTab(Screen& screen, Program& program) : screen_(screen), program_(program) {
    for (TextBox* box : {&txtFWDOwner, &txtFWDUnit, &txtFWDOperator, &txtLastLCCalDate, &txtLastSensorCalDate}) {
        box->Locked = true;
    }
}

void SummaryTab::Fill() {
    const SetupDoor& setup = program_.The<SetupDoor>();
    txtFWDOwner.Text = program_.Run.DeviceOwner;
    txtFWDUnit.Text = program_.Run.DeviceName;
    txtFWDOperator.Text = program_.Run.OperatorName;
    txtLastLCCalDate.Text = setup.LoadCellCalDate();
    txtLastSensorCalDate.Text = setup.SensorCalDate();
}

}  // namespace bellmark
