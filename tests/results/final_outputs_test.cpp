// The outputs of a calibration: which files, where, with what in them.

#include "results/final_outputs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/fwd_configuration.h"
#include "app/interim_store.h"
#include "platform/profile_strings.h"
#include "results/certificate.h"
#include "results/publish_run.h"
#include "run/version.h"
#include "tests/results/results_program.h"

namespace bellmark {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* notice =
    "\tSave the Configuration File (BellmarkCalibration.ddx) to Floppy or Thumb Drive\\nand give to the FWD "
    "Operator\t64\tOK\n";

struct FinalOutputsTest : testing::Test, ResultsProgram {
    FinalOutputsTest() {
        machine.Write("CertificateTemplate.rtf", "{\\rtf1 FWDOwner LCFin Messages:}");
        machine.Write("Transfer/keep.txt", "");
        center.LocationOfFWDDataTransfer = PathText(machine.folder / "Transfer");
        SetTrials({1.005, 1.006});
        tab.cmdAcceptLC.UserClick();
    }
    void Produce(std::optional<Path> forCenter, std::optional<Path> forFWD) {
        machine.dialogs.QueueFile(std::move(forCenter));
        machine.dialogs.QueueAnswer(Answer::OK);
        machine.dialogs.QueueFile(std::move(forFWD));
        results.cmdPrintPDDX[0].UserClick();
    }
    std::vector<std::string> Published() const { return machine.files.FileNames(run.OutputFolder); }
};

TEST_F(FinalOutputsTest, ALoadCellAloneLeavesAllItsFiles) {
    machine.Write("InterimCal20120309/LoadCell1-H1D1.txt", "a drop");
    Produce({}, {});
    EXPECT_EQ(Boxes(), notice);
    EXPECT_THAT(Published(), ElementsAre("BellmarkCalibration.ddx", "BellmarkCalibrationOutput 09-Mar-2012.ddx",
                                         "BellmarkCalibrationRecord 09-Mar-2012.ddx", "BellmarkCenterConfig.ini",
                                         "CalibrationCertificate09-Mar-2012.json",
                                         "CalibrationCertificate09-Mar-2012.rtf", "LoadCell1-H1D1.txt"));
    EXPECT_THAT(machine.files.FileNames(machine.folder / "Transfer"),
                ElementsAre("BellmarkCalibrationOutput 09-Mar-2012.ddx", "keep.txt"));
    const std::string certificate = Text("InterimCal20120309/CalibrationCertificate09-Mar-2012.rtf");
    EXPECT_EQ(certificate, machine.files.ReadBytes(run.OutputFolder / "CalibrationCertificate09-Mar-2012.rtf"));
    EXPECT_EQ(
        certificate,
        "{\\rtf1 {\\highlight0 County Roads} {\\highlight0 1.006} {\\highlight0 Messages:\\par Load Cell:\\par    "
        "  All data checks passed\\par }}");
    EXPECT_EQ(program->Screens.Front()->Name(), "frmReport");
    EXPECT_EQ(program->Screens.Front()->Find("rtbReport")->DisplayText(),
              "County Roads 1.006 Messages:\nLoad Cell:\n     All data checks passed");
    EXPECT_FALSE(run.CertificationComplete);
    EXPECT_FALSE(machine.Has("Bellmark/Calibrations/Owner/Unit 7/20120309/InterimCal.DDX"));

    // Done again it replaces what it wrote, and nothing is left over.
    const auto before = Published();
    run.SensorRelCalComplete = true;
    results.OpenLoadCell();
    Produce({}, {});
    EXPECT_EQ(Published(), before);
    EXPECT_TRUE(run.CertificationComplete);
}

TEST_F(FinalOutputsTest, TheFWDsDocumentHoldsTheNewGain) {
    const Path chosen = machine.folder / "Transfer/For the FWD.ddx";
    center.AccelDailyCalibrationDate = MakeDateTime(2012, 3, 8);
    center.AccelDailyCalibrationTime = MakeDateTime(2012, 3, 8, 16, 5);
    center.AccelDailyCalibrationTemp = 21.5;
    Produce({}, chosen);
    // The keys of a calibration record that have a value, checked by hand against the run above: the final gain is the
    // mean of the two trials, in the four decimals of all makers but one.
    const std::string expected =
        "[Operations Information]\r\n"
        "FileName = " +
        PathText(chosen) +
        "\r\n"
        "EndTime = 10:00\r\n"
        "EndDate = 03-09-2012\r\n"
        "\r\n"
        "[Device Information]\r\n"
        "DeviceSerialNumber = 8002-123\r\n"
        "LoadCellSerialNumber = LC-9\r\n"
        "\r\n"
        "[Device Configuration]\r\n"
        "NumberOfDeflectionSensors = 0\r\n"
        "\r\n"
        "[Device Calibration]\r\n"
        "LoadCellCalibrationCenterDate = 09-Mar-2012\r\n"
        "LoadCellCalibrationCenterGain = 1.0055\r\n"
        "\r\n"
        "[FWD Calibration Center]\r\n"
        "VersionNumber = " +
        VersionText() +
        "\r\n"
        "CalibrationCenter = Test Center\r\n"
        "CalCenterIDCode = 0\r\n"
        "CalibrationCenterOperator = A. Operator\r\n"
        "AccelDailyCalibrationDate = 08-Mar-2012\r\n"
        "AccelDailyCalibrationTime = 16:05:00\r\n"
        "AccelDailyCalibrationTemp = 21.50\r\n"
        "AccelNewSlopeFactor = 0.00000\r\n"
        "AccelDailyCalibration+1GVoltage = 0.00000\r\n"
        "AccelDailyCalibration-1GVoltage = 0.00000\r\n"
        "AccelDailyCalibration+1GFlipVoltage = 0.00000\r\n"
        "TypeOfCalibration = Annual\r\n"
        "\r\n";
    EXPECT_EQ(machine.files.ReadBytes(chosen), expected);
    const auto record =
        OpenProfileStrings(machine.files, run.OutputFolder / "BellmarkCalibrationRecord 09-Mar-2012.ddx");
    EXPECT_EQ(record.Get("Device Calibration", "LoadCellCalibrationCenterGain"), "1.0000")
        << "a run that is resumed starts from what the FWD came with";
    EXPECT_EQ(record.Get("Device Calibration", "NewLoadCellCalibrationCenterGain"), "1.00550000");
}

/// The clock stands still, so that not even times differ.
TEST_F(FinalOutputsTest, RecordsAreTheSameAfterOneSittingAndAfterTen) {
    const char* const records[] = {"BellmarkCalibration.ddx", "BellmarkCalibrationOutput 09-Mar-2012.ddx",
                                   "BellmarkCalibrationRecord 09-Mar-2012.ddx", "BellmarkCenterConfig.ini"};
    machine.Write("fwd.ddx",
                  "[FWD Calibration Center]\r\nAccelNewSlopeFactor=0.42100\r\nAccelOldSlopeFactor=0.4\r\n"
                  "CalibrationCenter=of the last calibration\r\nNotes=of the last calibration\r\n"
                  "[Device Information]\r\nDeviceSerialNumber=8002-123\r\nLoadCellSerialNumber=LC-9\r\n"
                  "[Device Calibration]\r\nLoadCellCalibrationCenterGain=1.0\r\n");
    const auto read = [&](const char* name) { return machine.files.ReadBytes(run.OutputFolder / name); };
    for (const bool hasFormerCalibration : {false, true}) {
        if (hasFormerCalibration) ReadFWDConfiguration(*program, machine.folder / "fwd.ddx", FWDReading::Fresh);
        Produce({}, {});
        std::vector<std::string> once;
        for (const char* name : records) once.push_back(read(name));
        EXPECT_EQ(once[1].find("AccelOldSlopeFactor = 0.42100") != std::string::npos, hasFormerCalibration);
        EXPECT_EQ(once[1].find("of the last calibration"), std::string::npos);
        EXPECT_EQ(once[2].find("[Interim State]"), std::string::npos);
        for (int sitting = 0; sitting < 10; ++sitting) {
            ASSERT_TRUE(SaveInterimCalibration(*program));
            ASSERT_TRUE(LoadInterimCalibration(*program));
            results.OpenLoadCell();
            if (sitting % 3 == 2) Produce({}, {});
        }
        for (std::size_t i = 0; i < once.size(); ++i) EXPECT_EQ(read(records[i]), once[i]) << records[i];
    }
    machine.dialogs.TakeBoxes();
}

TEST_F(FinalOutputsTest, ADocumentThatCannotBeWrittenDoesNotStopTheOthers) {
    const Path nowhere = machine.folder / "unplugged/out.ddx";
    machine.dialogs.QueueFile(nowhere);
    for (int boxes = 0; boxes < 3; ++boxes) machine.dialogs.QueueAnswer(Answer::OK);
    machine.dialogs.QueueFile(nowhere);
    results.cmdPrintPDDX[0].UserClick();
    const std::string refusal = "\tUnable to create PDDX file:\\n" + PathText(nowhere) + "\t48\tOK\n";
    EXPECT_EQ(Boxes(), refusal + notice + refusal);
    EXPECT_TRUE(machine.files.IsFile(run.OutputFolder / "CalibrationCertificate09-Mar-2012.rtf"));
}

TEST_F(FinalOutputsTest, AnOutputFolderThatVanishedIsMadeAgain) {
    machine.files.RemoveFolder(machine.folder / "Bellmark");
    Produce({}, {});
    EXPECT_EQ(Published().size(), 6U);

    machine.files.RemoveFolder(machine.folder / "Bellmark");
    machine.Write("Bellmark", "in its way");
    machine.dialogs.QueueAnswer(Answer::OK);
    results.OpenLoadCell();
    results.cmdPrintPDDX[0].UserClick();
    EXPECT_THAT(Boxes(), HasSubstr("Owner"));
}

TEST_F(FinalOutputsTest, ATemplateThatCannotBeFilledIsTold) {
    const struct {
        const char* bytes;
        const char* told;
    } cases[] = {{"plain text", "is no rich-text document"}, {"{\\rtf1 cut", "is damaged: it ends in the middle"}};
    for (const auto& [bytes, told] : cases) {
        machine.Write("CertificateTemplate.rtf", bytes);
        machine.dialogs.QueueAnswer(Answer::OK);
        program->The<ReportDoor>().PrintReferenceCalReport();
        EXPECT_THAT(Boxes(), HasSubstr(told));
    }
    machine.files.RemoveFile(machine.folder / "CertificateTemplate.rtf");
    machine.dialogs.QueueAnswer(Answer::OK);
    program->The<ReportDoor>().PrintReferenceCalReport();
    EXPECT_THAT(Boxes(), HasSubstr("CertificateTemplate.rtf"));
    EXPECT_FALSE(machine.Has("InterimCal20120309/CalibrationCertificate09-Mar-2012.rtf"));
    EXPECT_EQ(program->Screens.Front()->Name(), "frmResults");
}

TEST_F(FinalOutputsTest, ACertificateTooLongToShowIsWrittenAllTheSame) {
    machine.Write("CertificateTemplate.rtf", "{\\rtf1 " + std::string(1'000'001, 'x') + "FWDOwner}");
    program->Run.OutputFolder = machine.folder / "Transfer";
    program->The<ReportDoor>().PrintReferenceCalReport();
    const Screen& report = *program->Screens.Front();
    EXPECT_THAT(report.Find("rtbReport")->DisplayText(), HasSubstr("too long to be shown"));
    EXPECT_FALSE(report.Find("cmdPrint")->Enabled);
    EXPECT_TRUE(Text("Transfer/CalibrationCertificate09-Mar-2012.rtf").ends_with("{\\highlight0 County Roads}}"));
}

TEST_F(FinalOutputsTest, PrintsWhenAskedAndSavesTheTextCertificate) {
    run.AutoPrint = true;
    Produce({}, {});
    EXPECT_THAT(Text("Printed.txt"), HasSubstr("BellmarkCalibrationOutput 09-Mar-2012.ddx"));
    dynamic_cast<Button&>(*program->Screens.Front()->Find("cmdPrint")).UserClick();
    EXPECT_THAT(Text("Printed.txt"), HasSubstr("County Roads 1.006 Messages:\r\nLoad Cell:"));
    dynamic_cast<Button&>(*program->Screens.Front()->Find("cmdNext")).UserClick();
    EXPECT_EQ(program->Screens.Front()->Name(), "frmResults");

    machine.dialogs.QueueFile({});
    results.cmdSaveCertificate.UserClick();
    const Path chosen = machine.folder / "Certificate: \xC3\xA9.txt";
    machine.dialogs.QueueFile(chosen);
    results.cmdSaveCertificate.UserClick();
    EXPECT_THAT(machine.files.ReadBytes(chosen), HasSubstr("LOAD CELL CALIBRATION\r\n"));
}

TEST_F(FinalOutputsTest, WaitingIsShownWhileFilesAreCopied) {
    std::vector<bool> told;
    machine.machine.showWaiting = [&](bool waits) {
        told.push_back(waits);
        EXPECT_TRUE(results.txtPleaseWait.Visible);
        // First the files are copied, then their digests are taken.
        const char* made =
            told.size() <= 2 ? "BellmarkCalibrationRecord 09-Mar-2012.ddx" : "CalibrationCertificate09-Mar-2012.json";
        EXPECT_EQ(std::filesystem::exists(run.OutputFolder / made), !waits);
    };
    Produce({}, {});
    EXPECT_THAT(told, ElementsAre(true, false, true, false));
    EXPECT_FALSE(results.txtPleaseWait.Visible);
}

}  // namespace
}  // namespace bellmark
