// Renders every screen of the program to PNG files, at both display sizes that it is made for: screenshots FOLDER.

#include <QApplication>
#include <QDir>
#include <cmath>
#include <iostream>

#include "app/doors.h"
#include "controls/controls.h"
#include "controls/picture.h"
#include "controls/screen.h"
#include "screens/look.h"
#include "screens/page.h"
#include "tests/screens/test_desktop.h"

namespace bellmark {
namespace {

/// Every control holds something, as long as the operator may meet it.
void FillWithSamples(Screen& screen) {
    for (Control* control : screen.Controls()) {
        if (auto* box = dynamic_cast<TextBox*>(control); box && box->Text.Get().empty()) box->Text = "1,234.5";
    }
}

void Shoot(TestDesktop& desktop, Screen& screen, const QString& name, const QDir& folder) {
    for (const QSize size : {QSize(1280, 800), QSize(1920, 1080)}) {
        desktop.window->resize(size);
        screen.Show();
        for (int turn = 0; turn < 5; ++turn) QApplication::processEvents();
        const QString file =
            folder.filePath(QStringLiteral("%1-%2x%3.png").arg(name).arg(size.width()).arg(size.height()));
        desktop.window->grab().save(file);
        std::cout << file.toStdString() << '\n';
    }
}

Plot SampleDrop() {
    Plot plot;
    plot.title = "Force";
    plot.horizontal = {"Time (mSec)", 0, 200, {}};
    plot.vertical = {"lbf", -1000, 17000, {}};
    PlotSeries force{"Force", {}, {}, false};
    for (int i = 0; i < 3000; ++i) {
        const double t = i / 15.0;
        force.x.push_back(t);
        force.y.push_back(t > 50 && t < 80 ? 16000 * std::pow(std::sin((t - 50) * M_PI / 30), 2) : 30 * std::sin(t));
    }
    plot.series.push_back(force);
    plot.marks = {{"Start", 50, 0}, {"Peak", 65, 16000}};
    return plot;
}

void Shoot(const QDir& folder) {
    TestDesktop desktop;
    desktop.Start();
    Program& program = *desktop.program;
    const auto screen = [&program](const char* name) -> Screen& { return *program.Screens.Find(name); };
    const auto caption = [](Screen& owner, const char* name, const char* text) {
        dynamic_cast<CaptionedControl&>(*owner.Find(name)).Caption = text;
    };
    program.Header.SetFWDOwnerName("FWD Owner: State Highway Agency");
    program.Header.SetFWDNameCtrl("FWD Name: 8002-101");
    Shoot(desktop, screen("frmAbout"), "start", folder);

    program.Run.LoadCellRefTrials = 2;
    program.Run.LoadCellCalPassed = true;
    program.Run.LoadCellCalComplete = true;
    program.Run.RefTrials = 1;
    Shoot(desktop, screen("frmMainMenu"), "menu", folder);

    program.Run.CurrentProcedure = 5;
    program.Header.SetProcedureName("FWD Load Cell Calibration");
    program.The<CollectionDoor>().Start();
    Screen& collection = screen("frmBellmark_Accel");
    Shoot(desktop, collection, "collection", folder);

    program.The<DropDoor>();
    Screen& drop = screen("frmBellmark_AccelDrop");
    caption(drop, "lblHeightDrop", "Height: 2  Drop: 3");
    caption(drop, "lblState", "Ready: drop now");
    caption(drop, "lblFilename",
            "Save Directory = /home/operator/Bellmark/InterimCal20120309\r\n        09-Mar-2012 2:05:09 PM");
    drop.SetBackColor(colors::complete);
    for (const char* hidden : {"fraMessage", "Frame1", "chkZoom", "lblNoise"}) drop.Find(hidden)->Visible = false;
    for (const char* off : {"cmdAccept", "cmdReject"}) drop.Find(off)->Enabled = false;
    Shoot(desktop, drop, "drop-armed", folder);

    drop.SetBackColor(colors::warning);
    for (const char* shown : {"Frame1", "chkZoom"}) drop.Find(shown)->Visible = true;
    for (const char* on : {"cmdAccept", "cmdReject"}) drop.Find(on)->Enabled = true;
    drop.SetDefaultButton(drop.Find("cmdAccept"));
    drop.SetFocus(*drop.Find("cmdAccept"));
    for (const auto& [name, text] :
         std::initializer_list<std::pair<const char*, const char*>>{{"lblState", "Captured: accept or reject"},
                                                                    {"lblPeakCaption", "Peak Load"},
                                                                    {"lblPeakMils", "16,012"},
                                                                    {"lblMilsUnit", "(pound-force)"},
                                                                    {"lblPeakMicrons", "71.23"},
                                                                    {"lblMicronsUnit", "(kilo-Newtons)"},
                                                                    {"lblRiseTime", "12.4"},
                                                                    {"lblZeroCaption", "Load at Start of Pulse"},
                                                                    {"lblZeroCalc(0)", "12.1"},
                                                                    {"lblZeroCalc(1)", "0.054"},
                                                                    {"optAcceleration", "&Voltage"},
                                                                    {"optVelocity", "&Offset"},
                                                                    {"optDeflection", "&Force"}}) {
        caption(drop, name, text);
    }
    dynamic_cast<OptionButton&>(*drop.Find("optDeflection")).Choose();
    dynamic_cast<CheckBox&>(*drop.Find("chkZoom")).Value = true;
    dynamic_cast<Picture&>(*drop.Find("picDropResponse")).Draw(SampleDrop());
    Shoot(desktop, drop, "drop-captured", folder);

    drop.Find("fraMessage")->Visible = true;
    drop.Find("lblNoise")->Visible = true;
    for (const char* off : {"cmdAccept", "cmdReject"}) drop.Find(off)->Enabled = false;
    caption(drop, "lblMessageTitle", "Excess Noise in the Load Cell Average Zero Array (103)");
    caption(drop, "lblMessageText",
            "Noise in excess of 95 pounds has been detected in the Average Zero calculation.  Carefully review the "
            "graphical "
            "data that is coming up next ...\r\n\r\nPress <OK> to continue ...");
    drop.SetDefaultButton(drop.Find("cmdErrOK"));
    Shoot(desktop, drop, "drop-message", folder);

    MakeAllScreens(program);
    for (Screen* other : program.Screens.Screens()) {
        if (other->IsAlwaysAtHand()) continue;
        const QString name = QString::fromStdString(other->Name());
        if (name != QLatin1String("frmAbout") && !name.startsWith(QLatin1String("frmBellmark_")) &&
            name != QLatin1String("frmMainMenu")) {
            FillWithSamples(*other);
            Shoot(desktop, *other, name, folder);
        }
    }
}

}  // namespace
}  // namespace bellmark

int main(int count, char** words) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, words);
    if (count != 2 || !QDir().mkpath(QString::fromLocal8Bit(words[1]))) {
        std::cerr << "usage: screenshots FOLDER\n";
        return 2;
    }
    bellmark::ApplyLook();
    bellmark::Shoot(QDir(QString::fromLocal8Bit(words[1])));
    return 0;
}
