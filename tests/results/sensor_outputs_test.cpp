// The outputs of a whole annual calibration: load cell and twelve sensors.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>

#include "app/interim_store.h"
#include "platform/format.h"
#include "platform/profile_strings.h"
#include "results/certificate.h"
#include "results/text_certificate.h"
#include "run/interim_keys.h"
#include "run/paths.h"
#include "tests/results/calibrated_sensors.h"
#include "tests/results/results_program.h"

namespace bellmark {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

struct SensorOutputsTest : testing::Test, ResultsProgram {
    SensorOutputsTest() {
        machine.Write("CertificateTemplate.rtf", "{\\rtf1 LCFin Rel4 SN1 Messages:}");
        machine.Write("Transfer/keep.txt", "");
        center.LocationOfFWDDataTransfer = PathText(machine.folder / "Transfer");
        for (const char* name : dataFiles) machine.Write(Path("InterimCal20120309") / name, "of the trial");
    }
    /// Both stages accepted as by the operator.
    void Accept(int trials, bool loadCell = true) {
        CalibrateTwelveSensors(run, trials);
        run.SensorRefCalComplete = true;
        results.Recompute();
        results.OpenLoadCell();
        if (loadCell) tab.cmdAcceptLC.UserClick();
        results.OpenReference();
        results.Reference.Relative.cmdReviewSensors.UserClick();
        ASSERT_TRUE(run.SensorRelCalComplete) << Boxes();
    }
    void Produce() {
        machine.dialogs.QueueFile({});
        machine.dialogs.QueueFile({});
        for (int boxes = 0; boxes < 6; ++boxes) machine.dialogs.QueueAnswer(Answer::OK);
        results.OpenReference();
        results.cmdPrintPDDX[0].UserClick();
    }
    std::map<std::string, std::string> Outputs() const {
        std::map<std::string, std::string> all;
        for (const Path& folder : {run.OutputFolder, machine.folder / "Transfer"}) {
            for (const auto& name : machine.files.FileNames(folder))
                all[PathText((folder / name).lexically_relative(machine.folder.Folder()))] =
                    machine.files.ReadBytes(folder / name);
        }
        return all;
    }
    /// The second implementation's word on the data of the certificate.
    bool DataAreRight() const {
        const Path source = BELLMARK_SOURCE_FOLDER;
        const std::string command = "python3 '" + PathText(source / "tests/results/check_certificate_data.py") + "' '" +
                                    PathText(source / "docs/calibration-certificate.schema.json") + "' '" +
                                    PathText(run.OutputFolder) + '\'';
        return std::system(command.c_str()) == 0;
    }

    static constexpr const char* dataFiles[] = {"8002-123 09-03-2012 1.RL", "8002-123 09-Mar-2012 D.RF1",
                                                "LoadCell1-H1D1.txt", "Reference1-H1D1.txt"};
};

TEST_F(SensorOutputsTest, LieInTheDatedFolderOfAReview) {
    run.ReviewMode = true;
    machine.printer.makesPdf = true;
    Accept(2);
    Produce();
    EXPECT_EQ(PathText(run.OutputFolder.filename()), "Sim20120309");
    EXPECT_THAT(machine.files.FileNames(run.OutputFolder),
                ElementsAre("8002-123 09-03-2012 1.RL", "8002-123 09-Mar-2012 D.RF1", "BellmarkCalibration.ddx",
                            "BellmarkCalibrationOutput 09-Mar-2012.ddx", "BellmarkCalibrationRecord 09-Mar-2012.ddx",
                            "BellmarkCenterConfig.ini", "CalibrationCertificate09-Mar-2012.json",
                            "CalibrationCertificate09-Mar-2012.pdf", "CalibrationCertificate09-Mar-2012.rtf",
                            "LoadCell1-H1D1.txt", "Reference1-H1D1.txt"));
    const std::string pdf = Text("InterimCal20120309/CalibrationCertificate09-Mar-2012.pdf");
    EXPECT_THAT(pdf, HasSubstr("%PDF 1.00"));
    EXPECT_EQ(pdf, machine.files.ReadBytes(run.OutputFolder / "CalibrationCertificate09-Mar-2012.pdf"));
    EXPECT_TRUE(run.CertificationComplete);

    // Where none can be made an older one does not stay beside the new certificate.
    machine.printer.makesPdf = false;
    Produce();
    EXPECT_FALSE(machine.Has("InterimCal20120309/CalibrationCertificate09-Mar-2012.pdf"));
    EXPECT_FALSE(machine.files.IsFile(run.OutputFolder / "CalibrationCertificate09-Mar-2012.pdf"));
    EXPECT_TRUE(DataAreRight());
}

TEST_F(SensorOutputsTest, WithoutATemplateTheCertificationIsNotComplete) {
    Accept(2);
    machine.files.RemoveFile(machine.folder / "CertificateTemplate.rtf");
    Produce();
    EXPECT_THAT(Boxes(), HasSubstr("The certificate could not be written."));
    EXPECT_FALSE(run.CertificationComplete);
    EXPECT_TRUE(machine.files.IsFile(run.OutputFolder / "CalibrationCertificate09-Mar-2012.json"));
}

TEST_F(SensorOutputsTest, TheFWDsDocumentHoldsTheNewGains) {
    Accept(4);
    Produce();
    const auto document =
        OpenProfileStrings(machine.files, machine.folder / "Transfer/BellmarkCalibrationOutput 09-Mar-2012.ddx");
    std::string gains;
    for (std::size_t s = 0; s < maxSensors; ++s) {
        gains += (s == 0 ? "" : ", ") + Format(run.Sensor[s].FinalGain, "0.0000");
    }
    EXPECT_EQ(document.Get("Device Calibration", "SensorCalibrationCenterGain"), gains);
    EXPECT_EQ(document.Get("Device Calibration", "SensorCalibrationCenterDate"), "09-Mar-2012");
    EXPECT_EQ(document.Get("Device Calibration", "LoadCellCalibrationCenterGain"),
              Format(run.NewLoadCellCalibrationCenterGain, "0.0000"));
}

TEST_F(SensorOutputsTest, TheDataOfTheCertificateFollowFromTheRecord) {
    for (const int trials : {2, 4}) {
        for (const bool loadCell : {true, false}) {
            SCOPED_TRACE(trials);
            run.LoadCellCalComplete = run.SensorRelCalComplete = run.CertificationComplete = false;
            run.Manufacturer = loadCell ? Make::Dynatest : Make::Kuab;
            Accept(trials, loadCell);
            Produce();
            EXPECT_TRUE(DataAreRight());
            EXPECT_EQ(run.CertificationComplete, loadCell);
        }
    }
    // A file that was touched since is found out, and one that came later.
    machine.files.AppendToFile(run.OutputFolder / "LoadCell1-H1D1.txt", " ");
    EXPECT_FALSE(DataAreRight());
    Produce();
    machine.files.ReplaceFile(run.OutputFolder / "later.txt", "");
    EXPECT_FALSE(DataAreRight());
    // A resumed run has no sums of squares.
    run.RelTrial[0].SSTotal = run.RelTrial[1].SSTotal = 0;
    Produce();
    EXPECT_TRUE(DataAreRight());
    EXPECT_THAT(machine.files.FileNames(run.OutputFolder), testing::Contains("later.txt"));
}

/// Every write fails once, and all behind it, as on a full disk.
TEST_F(SensorOutputsTest, AFullDiskAtAnyWriteIsToldLosesNothingAndIsRepeated) {
    machine.printer.makesPdf = true;
    Accept(2);
    const Path interim = machine.folder / run.InterimFileName;
    Produce();
    Produce();
    const auto whole = Outputs();
    const double gain = run.Sensor[11].FinalGain;
    int failure = 1;
    for (; failure < 200; ++failure) {
        SCOPED_TRACE(failure);
        machine.files.RemoveFolder(run.OutputFolder);
        machine.files.RemoveFile(machine.folder / "Transfer/BellmarkCalibrationOutput 09-Mar-2012.ddx");
        run.CertificationComplete = false;
        Boxes();
        machine.files.FailFromWrite(failure);
        Produce();
        machine.files.FailFromWrite(0);
        if (run.CertificationComplete) break;
        EXPECT_THAT(Boxes(), testing::AnyOf(HasSubstr("no space left"), HasSubstr("Unable to create")));
        EXPECT_FALSE(results.txtPleaseWait.Visible);
        EXPECT_EQ(run.Sensor[11].FinalGain, gain);
        EXPECT_TRUE(run.LoadCellCalComplete && run.SensorRelCalComplete);
        EXPECT_TRUE(HasEndMark(OpenProfileStrings(machine.files, interim)));
        for (const char* name : dataFiles) EXPECT_EQ(Text(Path("InterimCal20120309") / name), "of the trial");
        // What is there is whole; the copy of the run becomes the record at the end.
        for (const auto& [name, bytes] : Outputs()) {
            if (name.ends_with(interimCopyName)) continue;
            EXPECT_EQ(bytes, whole.at(name)) << name;
        }
        Produce();
        EXPECT_TRUE(run.CertificationComplete);
        EXPECT_EQ(Outputs(), whole);
    }
    EXPECT_GT(failure, 20);
    EXPECT_LT(failure, 200);
}

/// Twelve sensors with gains that tell sensor, trial and kind: sensor 3, second reference trial: 1.0321.
CalibrationRun RunOfTellingGains(int trials) {
    CalibrationRun run;
    run.NumberSensors = static_cast<int>(maxSensors);
    run.RefTrials = run.RelTrials = trials;
    for (std::size_t s = 0; s < maxSensors; ++s) {
        SensorCalRecord& sensor = run.Sensor[s];
        const double base = 1 + 0.01 * static_cast<double>(s + 1);
        sensor.SerialNumber = "D-" + NumberText(101 + s);
        sensor.InitialGain = base;
        sensor.InterimGain = base + 0.0009;
        sensor.FinalGain = base + 0.0015;
        for (std::size_t t = 0; t < maxTrials; ++t) {
            sensor.RefTrial[t].Gain = base + 0.0001 + 0.001 * static_cast<double>(t + 1);
            sensor.RelTrial[t].Gain = base + 0.0002 + 0.001 * static_cast<double>(t + 1);
        }
    }
    return run;
}

TEST(SensorCertificates, HoldTwelveSensorsWithTwoAndFourTrials) {
    const auto blanks = [](std::size_t count) { return std::string(count, ' '); };
    const std::string number = "Number      Number        Gain    |";
    // Trials that were not made leave blanks: eight a reference trial; nine, under the heading, and ten a relative one.
    const struct {
        int trials;
        std::string heading, first, last, lastOfTable;
    } cases[] = {
        {2, number + "1    2    " + blanks(16) + " Average | 1     2    " + blanks(18) + "    |  Gain ",
         "  1              D-101  1.010   |1.0111 1.0121 " + blanks(16) + " 1.0109  |   1.0112   1.0122 " + blanks(20) +
             "| 1.0115 ",
         "  12              D-112  1.120   |1.1211 1.1221 " + blanks(16) + " 1.1209  |   1.1212   1.1222 " +
             blanks(20) + "| 1.1215 ",
         "D-112\\tab 1.120\\tab 1.121\\tab 1.122\\tab \\tab \\tab 1.121\\tab 1.122\\tab \\tab "
         "\\tab 1.122\\par "},
        {4, number + "1    2    3    4     Average | 1     2     3     4        |  Gain ",
         "  1              D-101  1.010   |1.0111 1.0121 1.0131 1.0141  1.0109  |   1.0112   1.0122   1.0132   1.0142 "
         "| 1.0115 ",
         "  12              D-112  1.120   |1.1211 1.1221 1.1231 1.1241  1.1209  |   1.1212   1.1222   1.1232   1.1242 "
         "| 1.1215 ",
         "D-112\\tab 1.120\\tab 1.121\\tab 1.122\\tab 1.123\\tab 1.124\\tab 1.121\\tab 1.122\\tab "
         "1.123\\tab 1.124\\tab 1.122\\par "},
    };
    for (const auto& row : cases) {
        const CalibrationRun run = RunOfTellingGains(row.trials);
        const std::string text = TextCertificate(run, {}, MakeDateTime(2012, 3, 9));
        EXPECT_THAT(text, HasSubstr(row.heading + "\r\n" + row.first + "\r\n"));
        EXPECT_THAT(text, HasSubstr(row.last + "\r\n\r\n"));
        if (row.trials < static_cast<int>(maxTrials)) {
            CalibrationRun waiting = run;
            waiting.CurrentProcedure = Procedure::Sensors;
            waiting.FlagUnacceptedTrial = true;
            ++waiting.RefTrials;
            EXPECT_EQ(TextCertificate(waiting, {}, MakeDateTime(2012, 3, 9)), text);
        }
        RichText filled("{\\rtf1 Ref1,Ref2,Ref3,Ref4,Rel1,Rel2,Rel3,Rel4,SN1 Messages:}");
        FillCertificate(filled, run, {}, {false, true}, MakeDateTime(2012, 3, 9));
        EXPECT_THAT(filled.Rtf(), HasSubstr(row.lastOfTable));
        std::string trials;
        for (int kind = 0; kind < 2; ++kind) {
            for (int t = 1; t <= 4; ++t) {
                trials += (t <= row.trials ? "{\\highlight0 " + NumberText(t) + '}' : "") + ',';
            }
        }
        EXPECT_THAT(filled.Rtf(), HasSubstr("{\\rtf1 " + trials));
    }
}

}  // namespace
}  // namespace bellmark
