#include "screens/forms.h"

#include <map>

#include "ui_frmAbout.h"
#include "ui_frmBellmark_Accel.h"
#include "ui_frmBellmark_AccelDrop.h"
#include "ui_frmBellmark_AccelTrigger.h"
#include "ui_frmCenterRelPlot.h"
#include "ui_frmCenterRelative.h"
#include "ui_frmDemonstration.h"
#include "ui_frmFlipCalibration.h"
#include "ui_frmGetFWDData.h"
#include "ui_frmKUSB.h"
#include "ui_frmMainMenu.h"
#include "ui_frmPrerequisites.h"
#include "ui_frmRefReview.h"
#include "ui_frmRegressionPlot.h"
#include "ui_frmRelResults.h"
#include "ui_frmRelative.h"
#include "ui_frmReport.h"
#include "ui_frmResults.h"
#include "ui_frmSetup.h"
#include "ui_frmSimulator.h"
#include "ui_page_header.h"

namespace bellmark {

namespace {

template <class Layout>
std::unique_ptr<QWidget> Make() {
    auto form = std::make_unique<QWidget>();
    Layout().setupUi(form.get());
    return form;
}

using Maker = std::unique_ptr<QWidget> (*)();

const std::map<std::string, Maker>& Makers() {
    static const std::map<std::string, Maker> makers{
        {"frmAbout", Make<Ui::frmAbout>},
        {"frmBellmark_Accel", Make<Ui::frmBellmark_Accel>},
        {"frmBellmark_AccelDrop", Make<Ui::frmBellmark_AccelDrop>},
        {"frmBellmark_AccelTrigger", Make<Ui::frmBellmark_AccelTrigger>},
        {"frmCenterRelPlot", Make<Ui::frmCenterRelPlot>},
        {"frmCenterRelative", Make<Ui::frmCenterRelative>},
        {"frmDemonstration", Make<Ui::frmDemonstration>},
        {"frmFlipCalibration", Make<Ui::frmFlipCalibration>},
        {"frmGetFWDData", Make<Ui::frmGetFWDData>},
        {"frmKUSB", Make<Ui::frmKUSB>},
        {"frmMainMenu", Make<Ui::frmMainMenu>},
        {"frmPrerequisites", Make<Ui::frmPrerequisites>},
        {"frmRefReview", Make<Ui::frmRefReview>},
        {"frmRegressionPlot", Make<Ui::frmRegressionPlot>},
        {"frmRelResults", Make<Ui::frmRelResults>},
        {"frmRelative", Make<Ui::frmRelative>},
        {"frmReport", Make<Ui::frmReport>},
        {"frmResults", Make<Ui::frmResults>},
        {"frmSetup", Make<Ui::frmSetup>},
        {"frmSimulator", Make<Ui::frmSimulator>},
    };
    return makers;
}

}  // namespace

std::unique_ptr<QWidget> MakeForm(const std::string& screenName) {
    const auto maker = Makers().find(screenName);
    return maker == Makers().end() ? nullptr : maker->second();
}

std::unique_ptr<QWidget> MakePageHeader() {
    return Make<Ui::page_header>();
}

}  // namespace bellmark
