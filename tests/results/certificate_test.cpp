// Both certificates, byte for byte. The expected texts are written out by hand from the values of the run below.

#include "results/certificate.h"

#include <gtest/gtest.h>

#include "results/text_certificate.h"
#include "run/version.h"
#include "tests/results/results_program.h"

namespace bellmark {
namespace {

/// Two sensors with two reference and three relative trials, and a load cell with one trial.
CalibrationRun CalibratedRun() {
    CalibrationRun run;
    run.Manufacturer = Make::CarlBro;
    run.DeviceOwner = "County Roads";
    run.DeviceName = "Unit 7";
    run.DeviceSerialNumber = "8002-123";
    run.OperatorName = "B. Driver";
    run.LoadCellSerialNumber = "LC-9";
    run.LoadCellInitialGain = 1.0;
    run.LoadCellRefTrials = 1;
    run.LCTrial[0].Gain = 1.0125;
    run.NewLoadCellCalibrationCenterGain = 1.0121;
    run.LoadCellMessage = "All data checks passed";
    run.NumberSensors = 2;
    run.RefTrials = 2;
    run.RelTrials = 3;
    for (int s = 0; s < 2; ++s) {
        SensorCalRecord& sensor = run.Sensor[static_cast<std::size_t>(s)];
        sensor.SerialNumber = s == 0 ? "S-1" : "";
        sensor.InitialGain = 10.5 + s;
        sensor.InterimGain = 10.75 + s;
        sensor.FinalGain = 10.8125 + s;
        for (std::size_t t = 0; t < 3; ++t) {
            sensor.RefTrial[t].Gain = 10.6 + s + static_cast<double>(t) / 100;
            sensor.RelTrial[t].Gain = 10.7 + s + static_cast<double>(t) / 100;
        }
    }
    return run;
}

CenterConfig TestCenter() {
    CenterConfig center;
    center.CalibrationCenter = "Test Center";
    center.CalibrationCenterOperator = "A. Operator";
    center.ReferenceLoadCellName = "RLC-07";
    center.AccelerometerModelNumber = "2266";
    center.AccelerometerSerialNumber = "A-11";
    return center;
}

TEST(TextCertificate, IsWrittenLineByLine) {
    std::string expected =
        "FWD Calibration\r\n"
        "\r\n"
        "        Calibration Center: Test Center\r\n"
        "                  Location: Test Center\r\n"
        "           Center Operator: A. Operator\r\n"
        "              FWD Operator: \r\n"
        "                 FWD Owner: \r\n"
        "                  FWD Unit: \r\n"
        "       Reference Load Cell: RLC-07\r\n"
        "   Reference Accelerometer: 2266\r\n"
        "       Date of Calibration: 09-Mar-2012\r\n"
        "  Date of Last Calibration: \r\n"
        "Bellmark Software Version: " +
        VersionOfProgram().number +
        "\r\n"
        "\r\n"
        "LOAD CELL CALIBRATION\r\n"
        "\r\n"
        "             Serial Number: LC-9\r\n"
        "              Initial Gain: 1.000\r\n"
        "         Reference Gains\r\n"
        "                   Trial 1: 1.013\r\n"
        "                   Trial 2: 0.000\r\n"
        "                   Trial 3: 0.000\r\n"
        "                Final Gain: 1.012\r\n"
        "\r\n"
        "DEFLECTION SENSOR CALIBRATION\r\n"
        "\r\n"
        "Sensor      Serial       Initial  |     - Reference Gains --                |         -- Relative Gains ---"
        "          |  Final\r\n"
        // Two columns of five letters and two of eight blanks, three of six and one of nine.
        "Number      Number        Gain    |1    2                     Average | 1     2     3                 |"
        "  Gain \r\n"
        "  1                S-1  10.500   |10.6000 10.6100                  10.7500  |   10.7000   10.7100   10.7200 "
        "          | 10.8125 \r\n"
        "  2                       11.500   |11.6000 11.6100                  11.7500  |   11.7000   11.7100   11.7200 "
        "          | 11.8125 \r\n";
    for (int line = 0; line < 16; ++line) expected += "\r\n";
    EXPECT_EQ(TextCertificate(CalibratedRun(), TestCenter(), MakeDateTime(2012, 3, 9)), expected);
}

/// All keywords once, as the least template that a center could write.
std::string SmallTemplate() {
    std::string body =
        "{\\rtf1\\viewkind4\\uc1 CalibrationDate|CenterName|CenterOperatorName|FWDOwner|FWDManufacturer|";
    body += "FWDUnit|FWDSerialNumber|FWDOperator|LCName|AccelName|versionNumber\\par\r\n";
    body +=
        "{\\b LOAD CELL CALIBRATION}\\par "
        "LCSerialNumber|LCInit|LC1|LC2|LC3|LC4|LCG1|LCG2|LCG3|LCG4|LCAvg|LCFin\\par\r\n";
    body += "{\\b DEFLECTION SENSOR CALIBRATION}\\par Ref1|Ref2|Ref3|Ref4|Rel1|Rel2|Rel3|Rel4|SN1\\par\r\n";
    return body + "Messages:\\par end}";
}

std::string V(const std::string& value) {
    return "{\\highlight0 " + value + '}';
}

std::string FilledHeading() {
    return "{\\rtf1\\viewkind4\\margl1440\\margr1440\\uc1 " + V("09-Mar-2012") + '|' + V("Test Center") + '|' +
           V("A. Operator") + '|' + V("County Roads") + '|' + V("Carlbro") + '|' + V("Unit 7") + '|' + V("8002-123") +
           '|' + V("B. Driver") + '|' + V("RLC-07") + '|' + V("SN A-11") + '|' +
           V("Version " + VersionOfProgram().number) + "\\par\r\n";
}

struct Filled {
    std::string rtf;
    std::vector<std::string> missing;
};

Filled Fill(const std::string& rtf, const CalibrationRun& run, const CenterConfig& center, CertificateBlocks blocks) {
    RichText text(rtf);
    auto missing = FillCertificate(text, run, center, blocks, MakeDateTime(2012, 3, 9));
    return {CertificateRtf(text), std::move(missing)};
}

TEST(Certificate, FillsAllBlocks) {
    CenterConfig center = TestCenter();
    center.Notes = {" first note", "", "second"};
    CalibrationRun run = CalibratedRun();
    run.SensorRefMessage = {"overall", "of trial 1", "", "of trial 3", ""};
    run.SensorRelMessage = "relative";
    const auto [rtf, missing] = Fill(SmallTemplate(), run, center, {true, true});
    EXPECT_TRUE(missing.empty());
    const std::string sensors =
        "S-1\\tab 10.500\\tab 10.600\\tab 10.610\\tab \\tab \\tab 10.700\\tab 10.710\\tab "
        "10.720\\tab \\tab 10.813\\par \\tab 11.500\\tab 11.600\\tab 11.610\\tab \\tab \\tab "
        "11.700\\tab 11.710\\tab 11.720\\tab \\tab 11.813\\par ";
    const std::string messages =
        "Messages:\\par Load Cell:\\par      All data checks passed\\par Sensor Reference Calibration:\\par      "
        "overall\\par of trial 1\\par of trial 3\\par Sensor Relative Calibration:\\par      relative\\par "
        "Comments:\\par      first note\\par      second\\par ";
    EXPECT_EQ(rtf, FilledHeading() + "{\\b LOAD CELL CALIBRATION}\\par " + V("LC-9") + '|' + V("1.000") + '|' + V("1") +
                       "||||" + V("1.013") + "||||" + V("1.013") + '|' + V("1.012") + "\\par\r\n" +
                       "{\\b DEFLECTION SENSOR CALIBRATION}\\par " + V("1") + '|' + V("2") + "|||" + V("1") + '|' +
                       V("2") + '|' + V("3") + "||" + V(sensors) + "\\par\r\n" + V(messages) + "\\par end}");
}

TEST(Certificate, LeavesOutWhatWasNotCalibrated) {
    const std::string messages = V("Messages:\\par Load Cell:\\par      All data checks passed\\par ");
    const std::string loadCellAlone = Fill(SmallTemplate(), CalibratedRun(), TestCenter(), {true, false}).rtf;
    EXPECT_EQ(loadCellAlone.find("DEFLECTION"), std::string::npos);
    EXPECT_EQ(loadCellAlone.find("Ref1"), std::string::npos);
    EXPECT_TRUE(loadCellAlone.ends_with(V("1.012") + "\\par\r\n{\\b }\r\n" + messages + "\\par end}")) << loadCellAlone;
    CalibrationRun run = CalibratedRun();
    const auto nothing = [&] { return Fill(SmallTemplate(), run, TestCenter(), {false, false}).rtf; };
    const std::string blocks = FilledHeading() + "{\\b }\r\n{\\b }\r\n";
    EXPECT_EQ(nothing(), blocks + V("Messages:\\par ") + "\\par end}") << "one trial is no judgement";
    run.LoadCellRefTrials = 2;
    EXPECT_EQ(nothing(), blocks + messages + "\\par end}");
}

TEST(Certificate, TellsWhatATemplateLacks) {
    const auto [rtf, missing] = Fill("{\\rtf1 FWDOwner}", CalibratedRun(), TestCenter(), {false, false});
    EXPECT_EQ(rtf, "{\\rtf1 " + V("County Roads") + '}');
    EXPECT_EQ(missing, (std::vector<std::string>{"CalibrationDate", "CenterName", "CenterOperatorName",
                                                 "FWDManufacturer", "FWDUnit", "FWDSerialNumber", "FWDOperator",
                                                 "LCName", "AccelName", "versionNumber", "LOAD CELL CALIBRATION",
                                                 "DEFLECTION SENSOR CALIBRATION", "Messages:"}));
}

/// The template that comes with the program: each keyword is where it belongs, and nowhere by chance before.
TEST(Certificate, TheSampleTemplateIsWhole) {
    const DiskFileSystem files;
    const std::string rtf = files.ReadBytes(Path(BELLMARK_SOURCE_FOLDER) / "sample" / certificateTemplateName);
    CalibrationRun run = CalibratedRun();
    run.LoadCellRefTrials = run.RefTrials = run.RelTrials = 4;
    RichText template_(rtf);
    EXPECT_TRUE(FillCertificate(template_, run, TestCenter(), {true, true}, MakeDateTime(2012, 3, 9)).empty());
    const std::string filled = CertificateRtf(template_);
    for (const char* keyword : {"LC1", "LC4", "LCG", "LCA", "LCF", "LCI", "LCS", "LCN", "Ref1", "Ref4", "Rel1", "SN1",
                                "FWD", "AccelName", "CenterName", "Date}", "versionN"}) {
        EXPECT_EQ(filled.find(keyword), std::string::npos) << keyword;
    }
    EXPECT_NE(filled.find("\\viewkind4\\margl1440\\margr1440"), std::string::npos);
}

}  // namespace
}  // namespace bellmark
