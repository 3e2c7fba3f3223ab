#include "assembly/assembly.h"

#include "app/frm_about.h"
#include "app/frm_main_menu.h"
#include "app/frm_master.h"
#include "app/program.h"
#include "comedi/make_comedi_device.h"
#include "daq/frm_daq.h"
#include "daq/frm_kusb.h"
#include "daq/frm_simulator.h"
#include "demonstration/frm_demonstration.h"
#include "fwd/frm_get_fwd_data.h"
#include "fwd/frm_ref_review.h"
#include "fwd/frm_regression_plot.h"
#include "monthly/frm_rel_results.h"
#include "monthly/frm_relative.h"
#include "reference/frm_bellmark_accel.h"
#include "reference/frm_bellmark_accel_drop.h"
#include "reference/frm_bellmark_accel_trigger.h"
#include "reference/frm_flip_calibration.h"
#include "reference/frm_prerequisites.h"
#include "relative/frm_center_rel_plot.h"
#include "relative/frm_center_relative.h"
#include "results/frm_report.h"
#include "results/frm_results.h"
#include "setup/frm_setup.h"

namespace bellmark {

namespace {

template <class Door, class ScreenType>
void RegisterScreen(Program& program) {
    program.Register<Door>([](Program& owner) { return std::make_shared<ScreenType>(owner); });
}

/// The demonstration board of the program folder, otherwise the boards that the operating system's drivers know.
std::unique_ptr<AcquisitionDevice> FindDevice(Program& program) {
    if (auto demonstration = MakeDemonstrationBoard(program)) return demonstration;
    return MakeComediDevice();
}

void RegisterBoard(Program& program, std::unique_ptr<AcquisitionDevice> device) {
    const auto board = std::make_shared<frmKUSB>(program, std::move(device));
    program.Register<BoardDoor>([board](Program&) { return board; });
}

}  // namespace

std::unique_ptr<Program> AssembleProgram(Machine& machine) {
    auto program = std::make_unique<Program>(machine);
    RegisterScreen<MainFrameDoor, frmMaster>(*program);
    RegisterScreen<StartFormDoor, frmAbout>(*program);
    RegisterScreen<MainMenuDoor, frmMainMenu>(*program);
    RegisterScreen<SetupDoor, frmSetup>(*program);
    RegisterScreen<CollectionDoor, frmBellmark_Accel>(*program);
    RegisterScreen<DropDoor, frmBellmark_AccelDrop>(*program);
    RegisterScreen<TriggerDoor, frmBellmark_AccelTrigger>(*program);
    RegisterScreen<PrerequisitesDoor, frmPrerequisites>(*program);
    RegisterScreen<FlipCalibrationDoor, frmFlipCalibration>(*program);
    RegisterScreen<FWDDataDoor, frmGetFWDData>(*program);
    RegisterScreen<RegressionPlotDoor, frmRegressionPlot>(*program);
    RegisterScreen<ReferenceReviewDoor, frmRefReview>(*program);
    RegisterScreen<CenterRelativeDoor, frmCenterRelative>(*program);
    RegisterScreen<CenterRelPlotDoor, frmCenterRelPlot>(*program);
    RegisterScreen<RelativeDoor, frmRelative>(*program);
    RegisterScreen<RelativeResultsDoor, frmRelResults>(*program);
    RegisterScreen<ResultsDoor, frmResults>(*program);
    RegisterScreen<ReportDoor, frmReport>(*program);

    // Both boards are screens, too.
    RegisterScreen<SimulatorDoor, frmSimulator>(*program);
    if (auto device = FindDevice(*program)) RegisterBoard(*program, std::move(device));
    program->Register<AcquisitionDoor>([](Program& owner) {
        auto& simulator = dynamic_cast<frmSimulator&>(owner.The<SimulatorDoor>());
        auto* hardware = owner.Has<BoardDoor>() ? &dynamic_cast<frmKUSB&>(owner.The<BoardDoor>()) : nullptr;
        return std::make_shared<frmDAQ>(owner, simulator, hardware);
    });
    return program;
}

}  // namespace bellmark
