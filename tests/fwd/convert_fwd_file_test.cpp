// The converter is a separate program: here small shell scripts, each with a different fault.
#include "fwd/convert_fwd_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "app/frm_master.h"
#include "app/program.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

using ::testing::HasSubstr;

constexpr const char* goodConverter =
    "#!/bin/sh\n"
    "echo \"$*\" > \"$(dirname \"$0\")/arguments.txt\"\n"
    "file=${*%,*}\n"
    "echo new > \"${file%.*}cvt.ddx\"\n";

class Conversions : public testing::Test {
  protected:
    Conversions() {
        machine.LetProgramsRun();
        program.Register<MainFrameDoor>([](Program& owner) { return std::make_shared<frmMaster>(owner); });
        program.Run.InterimFolderName = "InterimCal20120309";
        machine.Write("transfer/Trial 1.F25", "drops");
    }

    void InstallConverter(const std::string& script) {
        machine.Write("Ferrylink.exe", script);
        std::filesystem::permissions(machine.folder / "Ferrylink.exe", std::filesystem::perms::owner_all);
    }

    Conversion Convert(int type = 1, bool copyIntoRun = true) {
        return ConvertFWDFile(program, machine.folder / "transfer/Trial 1.F25", type, copyIntoRun);
    }
    std::string BoxText() {
        const auto boxes = machine.dialogs.TakeBoxes();
        return boxes.size() == 1 ? boxes.front() : "number of boxes: " + std::to_string(boxes.size());
    }

    TestMachine machine;
    Program program{machine.machine};
    const Path document = machine.folder / "InterimCal20120309/Trial 1cvt.ddx";
};

TEST_F(Conversions, TheCopyInTheDataFolderIsConverted) {
    InstallConverter(goodConverter);
    const Conversion conversion = Convert(1);
    EXPECT_TRUE(conversion.done);
    EXPECT_EQ(conversion.path, document);
    EXPECT_EQ(machine.files.ReadBytes(document), "new\n");
    EXPECT_EQ(machine.files.ReadBytes(machine.folder / "InterimCal20120309/Trial 1.F25"), "drops");
}

TEST_F(Conversions, AnF25FileIsReadWithoutAConverterOrByTheOneThatIsThere) {
    const std::string header =
        "5001,25.99\r\n5002,\"25SI\"\r\n5200,\"L\",2,1.0\r\n5201,\"S\",1.0\r\n5020,150,0\r\n5301,0,0,0,0,0\r\n";
    machine.Write("transfer/Trial 1.F25", header + "1,700,500.5\r\n");
    EXPECT_TRUE(Convert().done);
    EXPECT_THAT(machine.files.ReadBytes(document), HasSubstr("DropData_1 = 11123.6,19.7047\r\n"));
    machine.Write("transfer/Trial 1.F25", header + "1,700,x\r\n");
    machine.files.RemoveFile(machine.folder / "InterimCal20120309/Trial 1.F25");
    machine.dialogs.QueueAnswer(Answer::Yes);
    machine.dialogs.QueueAnswer(Answer::OK);
    EXPECT_TRUE(Convert().told);
    EXPECT_THAT(machine.dialogs.TakeBoxes().back(), HasSubstr("Line 7: \"x\" is not a number."));
    EXPECT_THAT(machine.files.ReadBytes(document), HasSubstr("DropData_1 = 11123.6")) << "the old document stays";
    // The operator is asked once.
    InstallConverter(goodConverter);
    machine.dialogs.QueueAnswer(Answer::Yes);
    machine.dialogs.QueueAnswer(Answer::Yes);
    EXPECT_TRUE(Convert().done);
    EXPECT_THAT(machine.dialogs.TakeBoxes().back(), HasSubstr("This is an F25 file."));
    machine.dialogs.QueueAnswer(Answer::Yes);
    EXPECT_TRUE(Convert().done);
    EXPECT_EQ(machine.files.ReadBytes(document), "new\n");
}

TEST_F(Conversions, TheArgumentIsPathCommaType) {
    InstallConverter(goodConverter);
    machine.files.Rename(machine.folder / "transfer/Trial 1.F25", machine.folder / "transfer/T.F20");
    ConvertFWDFile(program, machine.folder / "transfer/T.F20", 2, true);
    EXPECT_EQ(machine.files.ReadBytes(machine.folder / "arguments.txt"),
              PathText(machine.folder / "InterimCal20120309/T.F20") + ",2\n");
}

TEST_F(Conversions, BlanksAndQuotesOfTheNameReachTheConverter) {
    InstallConverter(
        "#!/bin/sh\n"
        "echo \"$#:$1\" > \"$(dirname \"$0\")/arguments.txt\"\n"
        "file=${1%,*}\n"
        "echo new > \"${file%.*}cvt.ddx\"\n");
    for (const char* name : {"Trial  1.F25", "a \"quoted\" name.F25", " - 'x'.F25"}) {
        machine.Write(Path("transfer") / name, "drops");
        EXPECT_TRUE(ConvertFWDFile(program, machine.folder / "transfer" / name, 1, true).done) << name;
        EXPECT_EQ(machine.files.ReadBytes(machine.folder / "arguments.txt"),
                  "1:" + PathText(machine.folder / "InterimCal20120309" / name) + ",1\n");
    }
}

TEST_F(Conversions, NoFileOfTheRunIsReplacedByAnotherOfItsName) {
    InstallConverter(goodConverter);
    const Path own = machine.Write("InterimCal20120309/Trial 1.F25", "the run's own");
    machine.dialogs.QueueAnswer(Answer::No);
    EXPECT_FALSE(Convert().done);
    EXPECT_THAT(BoxText(), HasSubstr("Do you want to add the chosen file as Trial 1-1.F25?"));
    EXPECT_FALSE(machine.Has("InterimCal20120309/Trial 1-1.F25"));
    machine.dialogs.QueueAnswer(Answer::Yes);
    EXPECT_EQ(Convert().path, machine.folder / "InterimCal20120309/Trial 1-1cvt.ddx");
    EXPECT_EQ(machine.files.ReadBytes(own), "the run's own");
    machine.Write("InterimCal20120309/Trial 1.F25", "drops");
    machine.dialogs.TakeBoxes();
    EXPECT_EQ(Convert().path, document) << "the same file once more needs no question";
    EXPECT_TRUE(machine.dialogs.TakeBoxes().empty());
}

TEST_F(Conversions, AMonthlyTrialIsConvertedWhereItLies) {
    InstallConverter(goodConverter);
    EXPECT_EQ(Convert(1, false).path, machine.folder / "transfer/Trial 1cvt.ddx");
    EXPECT_FALSE(machine.Has("InterimCal20120309"));
}

TEST_F(Conversions, AnExistingDocumentIsReplacedOnlyOnYes) {
    InstallConverter(goodConverter);
    machine.Write("InterimCal20120309/Trial 1cvt.ddx", "old");
    machine.dialogs.QueueAnswer(Answer::No);
    EXPECT_FALSE(Convert().done);
    EXPECT_EQ(machine.files.ReadBytes(document), "old");
    EXPECT_NE(BoxText().find("The file Trial 1cvt.ddx already exist.\\nDo you want to replace the existing file?"),
              std::string::npos);
    machine.dialogs.QueueAnswer(Answer::Yes);
    EXPECT_TRUE(Convert().done);
    EXPECT_EQ(machine.files.ReadBytes(document), "new\n");
}

TEST_F(Conversions, WhileTheConverterRunsOnlyCancelIsLive) {
    InstallConverter("#!/bin/sh\nexec sleep 100\n");
    machine.dialogs.QueueAnswer(Answer::OK);
    machine.WhileWaiting = [this] {
        auto& frame = dynamic_cast<frmMaster&>(program.The<MainFrameDoor>());
        EXPECT_THROW(frame.mnuExit.UserClick(), UserError);
        EXPECT_TRUE(program.Screens.IsLocked());
        frame.cmdCancelWaiting.UserClick();
    };
    Convert();
    EXPECT_FALSE(program.Screens.IsLocked());
}

/// Programs started by the converter are ended with it, and its partial output is no document.
TEST_F(Conversions, AnEndedConverterLeavesNothingBehind) {
    InstallConverter(
        "#!/bin/sh\n"
        "file=${*%,*}\n"
        "echo half > \"${file%.*}cvt.ddx\"\n"
        "sh -c 'sleep 1; echo late > \"$0\"' \"$(dirname \"$0\")/late.txt\" &\n"
        "touch \"$(dirname \"$0\")/begun.txt\"\n"
        "wait\n");
    machine.dialogs.QueueAnswer(Answer::OK);
    machine.WhileWaiting = [this] {
        if (machine.Has("begun.txt"))
            dynamic_cast<frmMaster&>(program.The<MainFrameDoor>()).cmdCancelWaiting.UserClick();
    };
    EXPECT_FALSE(Convert().done);
    EXPECT_TRUE(machine.Has("begun.txt"));
    EXPECT_FALSE(machine.files.IsFile(document));
    std::this_thread::sleep_for(std::chrono::milliseconds(1300));
    EXPECT_FALSE(machine.Has("late.txt"));
}

struct FailureCase {
    const char* name;
    const char* script;  ///< nullptr: there is no converter
    const char* told;
    bool cancel = false;
};

class ConversionFailures : public Conversions, public testing::WithParamInterface<FailureCase> {};

TEST_P(ConversionFailures, EndInABoxAndLeaveTheOldDocument) {
    const FailureCase& c = GetParam();
    if (std::string(c.name) == "ForWindows" && std::filesystem::exists("/usr/bin/wine")) GTEST_SKIP();
    if (c.script) InstallConverter(c.script);
    machine.Write("InterimCal20120309/Trial 1cvt.ddx", "old");
    machine.dialogs.QueueAnswer(Answer::Yes);
    machine.dialogs.QueueAnswer(Answer::OK);
    if (c.cancel) {
        machine.WhileWaiting = [this] {
            auto& frame = dynamic_cast<frmMaster&>(program.The<MainFrameDoor>());
            EXPECT_EQ(frame.lblWaiting.Caption.Get(), "Converting Trial 1.F25 ...");
            frame.cmdCancelWaiting.UserClick();
        };
    }
    const Conversion conversion = Convert();
    EXPECT_FALSE(conversion.done);
    EXPECT_TRUE(conversion.told);
    EXPECT_EQ(conversion.path, machine.folder / "transfer/Trial 1.F25");
    EXPECT_EQ(machine.files.ReadBytes(document), "old");
    const auto boxes = machine.dialogs.TakeBoxes();
    ASSERT_EQ(boxes.size(), 2u);
    EXPECT_NE(boxes[1].find(c.told), std::string::npos) << boxes[1];
    EXPECT_FALSE(dynamic_cast<frmMaster&>(program.The<MainFrameDoor>()).fraWaiting.Visible);
}

INSTANTIATE_TEST_SUITE_P(
    All, ConversionFailures,
    testing::Values(FailureCase{"Missing", nullptr, "could not be started"},
                    FailureCase{"Failing", "#!/bin/sh\nexit 3\n", "failed (status 3)"},
                    FailureCase{"Silent", "#!/bin/sh\nexit 0\n", "ended without writing a document"},
                    FailureCase{"Hanging", "#!/bin/sh\nexec sleep 100\n", "did not end within 60 seconds"},
                    FailureCase{"Cancelled", "#!/bin/sh\nexec sleep 100\n", "cancelled", true},
                    FailureCase{"ForWindows", "MZ not for this machine",
                                "is a Windows program, and wine is not installed"}),
    [](const auto& named) { return std::string(named.param.name); });

TEST_F(Conversions, AVanishedFileIsTold) {
    InstallConverter(goodConverter);
    machine.dialogs.QueueAnswer(Answer::OK);
    EXPECT_FALSE(ConvertFWDFile(program, machine.folder / "gone.F25", 1, true).done);
    EXPECT_NE(BoxText().find("could not be converted"), std::string::npos);
}

}  // namespace
}  // namespace bellmark
