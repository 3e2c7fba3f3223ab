// Renders every screen of the program to PNG files, at both supported display sizes: screenshots FOLDER. The word
// "monthly" behind it leaves all but the monthly calibration out, "dark" shows the dark look.

#include <QApplication>
#include <QDir>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <filesystem>
#include <iostream>

#include "app/doors.h"
#include "controls/controls.h"
#include "controls/screen.h"
#include "platform/machine.h"
#include "platform/numbers.h"
#include "screens/help_window.h"
#include "screens/look.h"
#include "screens/page.h"
#include "tests/monthly/monthly_files.h"
#include "tests/screens/test_desktop.h"
#include "virtual_fwd/virtual_center.h"

namespace bellmark {
namespace {

/// An operator's way through the imaginary center, with a picture of each step.
class Tour {
  public:
    explicit Tour(const QDir& folder) : folder_(folder) {
        DiskFileSystem files;
        virtual_fwd::CenterOptions options;
        options.referenceTrials = 2;
        options.fwd.sensors.relativeTrials = 2;
        options.spoiled[{1, 1, 2}] = virtual_fwd::Spoil::NoiseInZero;
        virtual_fwd::WriteCenter(files, desktop_.Folder(), options, SystemClock().Now());
        std::filesystem::copy(Path(BELLMARK_SOURCE_FOLDER) / "sample", desktop_.Folder());
        desktop_.Start();
    }

    /// The monthly calibration alone, which needs no run.
    void RunMonthly() {
        desktop_.program->The<MainMenuDoor>().Open();
        ShootMonthly();
    }

    void Run() {
        Shoot("start");
        desktop_.dialogs.files = {desktop_.Folder() / "Review" / "BellmarkCenterConfig.ini"};
        Click("frmAbout.cmdStartNewCal");
        for (const char* tab : {"optCalCenter", "optFWD", "optDataAcq", "optGeneral"}) {
            Control& option = Find(std::string("frmSetup.") + tab);
            option.Enabled = true;
            option.UserClick();
            Shoot(QStringLiteral("setup-") + QLatin1String(tab));
        }
        ShootTriggerLevel();
        Click("frmSetup.cmdMainMenu");
        Shoot("menu");
        ShootFlip();
        ShootAccelerometerDrop();
        Click("frmMainMenu.cmdCalLoadCell");
        Shoot("prerequisites");
        for (int item = 0; item < 9; ++item) Click("frmPrerequisites.cmdOK");
        Shoot("prerequisites-met");
        // The drop of the sensors' trial is given up.
        desktop_.dialogs.answers = {Answer::Yes};
        Click("frmPrerequisites.cmdNext");
        Shoot("collection");
        ShootArmed();
        Shoot("drop-captured");
        Click("frmBellmark_AccelDrop.cmdAccept");
        Click("frmBellmark_Accel.cmdNext");
        Shoot("drop-message");
        Click("frmBellmark_AccelDrop.cmdErrOK");
        Click("frmBellmark_AccelDrop.cmdAccept");
        Shoot("collection-two-drops");
        TakeDropsFrom(3);
        Shoot("collection-complete");
        Click("frmBellmark_Accel.cmdNext");
        Shoot("fwd-data");
        auto& frame = desktop_.program->The<MainFrameDoor>();
        frame.BeginWaiting("Converting Trial1.F25 ...");
        Shoot("fwd-data-waiting");
        frame.EndWaiting();
        ReadFWDFile("Trial1.ddx");
        Shoot("fwd-data-read");
        Click("frmGetFWDData.cmdGraph");
        Shoot("plot");
        Click("frmRegressionPlot.cmdNext");
        TakeDropsFrom(1);
        Click("frmBellmark_Accel.cmdNext");
        ReadFWDFile("Trial2.ddx");
        Click("frmGetFWDData.cmdGraph");
        Click("frmRegressionPlot.cmdNext");
        ShootResults();
        ShootSensors();
        ShootRelative();
        ShootMonthly();
        ShootTheOthers();
        ShootHelp();
    }

  private:
    Control& Find(const std::string& name) {
        const auto dot = name.find('.');
        return *desktop_.program->Screens.Find(name.substr(0, dot))->Find(name.substr(dot + 1));
    }

    void Click(const std::string& name) { Find(name).UserClick(); }

    void TakeDropsFrom(int first) {
        for (int drop = first; drop <= 24; ++drop) {
            Click("frmBellmark_Accel.cmdNext");
            Click("frmBellmark_AccelDrop.cmdAccept");
        }
    }

    void ReadFWDFile(const char* name) {
        desktop_.dialogs.files = {desktop_.Folder() / "FWD" / name};
        Click("frmGetFWDData.cmdBrowse");
    }

    void Shoot(const QString& name) {
        seen_.push_back(desktop_.program->Screens.Front());
        for (const QSize size : {QSize(1280, 720), QSize(1920, 1080)}) {
            desktop_.window->resize(size);
            for (int turn = 0; turn < 5; ++turn) QApplication::processEvents();
            const QString file =
                folder_.filePath(QStringLiteral("%1-%2x%3.png").arg(name).arg(size.width()).arg(size.height()));
            desktop_.window->grab().save(file);
            std::cout << file.toStdString() << '\n';
        }
    }

    /// The daily calibration of the accelerometer, which takes half a minute.
    void ShootFlip() {
        Click("frmMainMenu.cmdCalAccelerometer");
        Shoot("flip");
        Click("frmFlipCalibration.cmdStart");
        QTest::qWait(6'500);
        Shoot("flip-upright");
        QTest::qWait(24'000);
        Shoot("flip-results");
        Click("frmFlipCalibration.cmdAccept");
    }

    void ShootAccelerometerDrop() {
        Click("frmMainMenu.cmdRefCalDefAccel");
        for (int item = 0; item < 4; ++item) Click("frmPrerequisites.cmdOK");
        Click("frmPrerequisites.cmdNext");
        Click("frmBellmark_Accel.cmdNext");
        Shoot("drop-accelerometer");
        Click("frmBellmark_AccelDrop.cmdAccept");
        Shoot("collection-accelerometer");
        Click("frmBellmark_Accel.cmdMainMenu");
    }

    /// Called while the drop screen waits for its drop.
    void ShootTriggerLevel() {
        Click("frmSetup.cmdTriggerLevel");
        for (int item = 0; item < 4; ++item) Click("frmPrerequisites.cmdOK");
        Click("frmPrerequisites.cmdNext");
        Shoot("trigger-message");
        Click("frmBellmark_AccelTrigger.cmdErrOK");
        Click("frmBellmark_AccelTrigger.cmdStart");
        Shoot("trigger-drop");
        Click("frmBellmark_AccelTrigger.cmdAccept");
        Shoot("trigger-proposed");
        Click("frmBellmark_AccelTrigger.cmdCancel");
    }

    void ShootArmed() {
        QTimer::singleShot(0, [this] { Shoot("drop-armed"); });
        Click("frmBellmark_Accel.cmdNext");
    }

    /// Two trials that agree, accepted, and their certificate.
    void ShootResults() {
        Shoot("results-optLoadCell");
        Click("frmResults.cmdDelLCTrials");
        Shoot("results-delete");
        Click("frmResults.cmdDelLCOK");
        desktop_.program->Run.DeviceFolder = desktop_.Folder() / "FWD";
        Click("frmResults.cmdAcceptLC");
        Shoot("results-accepted");
        for (const char* tab : {"optAccel", "optRef", "optSummary"}) {
            Click(std::string("frmResults.") + tab);
            Shoot(QStringLiteral("results-") + QLatin1String(tab));
        }
        ReadHistory(6);
        Shoot("results-history");
        DiskFileSystem().CopyFile(Path(BELLMARK_SOURCE_FOLDER) / "sample/CertificateTemplate.rtf",
                                  desktop_.Folder() / "CertificateTemplate.rtf");
        Click("frmResults.cmdPrintPDDX(0)");
        Shoot("certificate");
    }

    /// Earlier calibrations of the FWD, a year apart; in the second half with another sensor.
    void ReadHistory(int count) {
        std::string text = "[Device Information]\r\nDeviceDesignationName = FWD-101\r\nDeviceModelNumber = 8002\r\n";
        text += "DeviceSerialNumber = 8002-101\r\n[Device Calibration]\r\nNumberCalibrations = " + NumberText(count);
        for (int n = 1; n <= count; ++n) {
            const std::string year = NumberText(2026 - (count - n + 1) % 40);
            text += "\r\n[Device Calibration_" + NumberText(n) + "]\r\nLoadCellCalibrationCenterDate = 4-May-" + year;
            text += "\r\nLoadCellCalibrationCenterGain = 1.00" + NumberText(n % 10) + "\r\nCalCenterIDCode = 4\r\n";
            text += "SensorCalibrationCenterDate = 5-May-" + year + "\r\nSensorSerialNumbers = D1, D2, ";
            text += std::string(2 * n > count ? "D3" : "D33") + ", D4, D5, D6, D7, D8, D9\r\n";
            text += "SensorCalibrationCenterGain = 1.00" + NumberText(n % 10) + ", 0.997, 1.001, 1.012, 0.99";
            text += NumberText(9 - n % 10) + ", 1.004, 1.0, 1.006, 1.008\r\n";
        }
        const Path file = desktop_.Folder() / "FWD/History.ddx";
        DiskFileSystem().ReplaceFile(file, text);
        desktop_.dialogs.files = {file};
        Click("frmResults.cmdReadHistory");
    }

    /// The two reference trials up to their acceptance.
    void ShootSensors() {
        desktop_.program->The<MainMenuDoor>().CalibrateSensors();
        for (int trial = 1; trial <= 2; ++trial) {
            for (int item = 0; item < 4; ++item) Click("frmPrerequisites.cmdOK");
            Click("frmPrerequisites.cmdNext");
            TakeDropsFrom(1);
            Click("frmBellmark_Accel.cmdNext");
            ReadFWDFile(trial == 1 ? "Reference1.ddx" : "Reference2.ddx");
            if (trial == 1) Shoot("sensors-fwd-data");
            Click("frmGetFWDData.cmdGraph");
            if (trial == 1) Shoot("sensors-plot");
            for (int sensor = 1; sensor < desktop_.program->Run.NumberSensors; ++sensor)
                Click("frmRegressionPlot.cmdUpRP");
            Click("frmRegressionPlot.cmdNext");
            Shoot(trial == 1 ? "review-first" : "review-pair");
            Click("frmRefReview.cmdAccept");
        }
        Shoot("results-reference");
        Click("frmResults.cmdDelRefCal");
        Shoot("results-reference-delete");
        Click("frmResults.cmdDelRefCancel");
        Click("frmResults.cmdAcceptReference");
    }

    void ShootRelative() {
        Shoot("relative");
        for (int trial = 1; trial <= 2; ++trial) {
            desktop_.dialogs.files = {desktop_.Folder() / "FWD" / (trial == 1 ? "Relative1.ddx" : "Relative2.ddx")};
            Click("frmCenterRelative.cmdBrowse");
            if (trial == 1) Shoot("relative-read");
            if (trial == 1) Click("frmCenterRelative.chkANOVA");
            if (trial == 1) Shoot("relative-anova");
            Click("frmCenterRelative.cmdPlot");
            if (trial == 1) Shoot("relative-plot");
            Click("frmCenterRelPlot.cmdNext");
        }
        desktop_.program->The<ResultsDoor>().OpenReference();
        Shoot("results-relative");
        Click("frmResults.cmdShowANOVA");
        Shoot("results-anova");
        Click("frmResults.cmdAcceptSensors");
        Shoot("results-sensors-accepted");
        Click("frmResults.optSummary");
        ReadHistory(40);
        Click("frmResults.cmdPrintPDDX(0)");
        Click("frmReport.cmdMainMenu");
        Shoot("results-history-written");
        Click("frmResults.cmdUpdateHistory");
        Shoot("results-history-updated");
    }

    void BrowseMonthly(std::vector<double> ratios, int trial) {
        MonthlyFile file;
        file.sensors = 12;
        file.drops = 60;
        file.ratios = std::move(ratios);
        file.seed = trial;
        const Path path = desktop_.Folder() / "FWD" / ("Monthly" + std::to_string(trial) + ".ddx");
        DiskFileSystem().ReplaceFile(path, file.Text());
        desktop_.dialogs.files = {path};
        Click("frmRelative.cmdBrowse");
    }

    void ShootMonthly() {
        Click("frmMainMenu.cmdRelativeCal");
        desktop_.program->The<RelativeDoor>().Start();
        Shoot("monthly-type");
        Click("frmRelative.optMonthlyRelative");
        dynamic_cast<ComboBox&>(Find("frmRelative.cboNumSensorsR")).UserChoose("12");
        dynamic_cast<ComboBox&>(Find("frmRelative.cboFWDMfgR")).UserChoose("KUAB");
        dynamic_cast<Grid&>(Find("frmRelative.msfgRelTest")).UserClickCell(1, 4);
        Shoot("monthly-sensors");
        for (int trial = 1; trial <= 2; ++trial) {
            BrowseMonthly({1, 1, trial == 1 ? 1.03 : 1.02}, trial);
            if (trial == 1) Shoot("monthly-file");
            Click("frmRelative.cmdNext");
            if (trial == 1) Shoot("monthly-results");
            Click("frmRelResults.cmdShowPlot");
            if (trial == 1) Shoot("monthly-plot");
            Click("frmCenterRelPlot.cmdNext");
            desktop_.dialogs.answers = {Answer::Cancel};
            Click("frmRelResults.cmdNext");
        }
        Shoot("monthly-results-pair");
        Click("frmRelResults.chkANOVA");
        Shoot("monthly-anova");
        desktop_.dialogs.answers.clear();
        Click("frmRelResults.cmdMainMenu");
        Shoot("monthly-menu");
        desktop_.dialogs.answers = {Answer::Yes};
        Click("frmMainMenu.cmdStartForm");
        Click("frmAbout.cmdRelativeCal");
        Click("frmRelative.optMonthlyReplace");
        Shoot("replacement-sensors");
        BrowseMonthly({}, 3);
        dynamic_cast<Grid&>(Find("frmRelative.grdSerialNum")).UserClickCell(3, 1);
        Click("frmRelative.cmdNext");
        Shoot("replacement-results");
        Click("frmRelResults.cmdMainMenu");
    }

    void ShootTheOthers() {
        MakeAllScreens(*desktop_.program);
        const auto screens = desktop_.program->Screens.Screens();
        for (Screen* screen : screens) {
            const bool wasSeen = std::find(seen_.begin(), seen_.end(), screen) != seen_.end();
            if (wasSeen || screen->IsAlwaysAtHand()) continue;
            screen->Show();
            Shoot(QString::fromStdString(screen->Name()));
        }
    }

    void ShootHelp() {
        HelpWindow help;
        for (const int page : {helpPage::contents, helpPage::firstMessage + 106}) {
            help.ShowContext(page);
            const QString file = folder_.filePath(QStringLiteral("help-%1.png").arg(page));
            help.grab().save(file);
            std::cout << file.toStdString() << '\n';
        }
    }

    QDir folder_;
    TestDesktop desktop_{std::chrono::milliseconds(3000)};
    std::vector<const Screen*> seen_;
};

}  // namespace
}  // namespace bellmark

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, arguments);
    const QStringList words = QCoreApplication::arguments();
    const bool monthlyAlone = words.contains(QLatin1String("monthly"));
    const bool isDark = words.contains(QLatin1String("dark"));
    const int expected = 2 + (monthlyAlone ? 1 : 0) + (isDark ? 1 : 0);
    if (words.size() != expected || !QDir().mkpath(words[1])) {
        std::cerr << "usage: screenshots FOLDER [monthly] [dark]\n";
        return 2;
    }
    bellmark::Look look;
    if (isDark) look.Show(bellmark::Appearance::Dark);
    bellmark::Tour tour{QDir(words[1])};
    if (monthlyAlone) {
        tour.RunMonthly();
    } else {
        tour.Run();
    }
    return 0;
}
