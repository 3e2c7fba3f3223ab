// The dated folder of a run.

#include "results/publish_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/profile_strings.h"
#include "tests/results/results_program.h"

namespace bellmark {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

struct PublishRunTest : testing::Test, ResultsProgram {
    std::vector<std::string> DatedFolders() const { return machine.files.FolderNames(run.DeviceFolder); }
};

TEST_F(PublishRunTest, TheFolderFollowsTheDateAndBeginsWithSimInAReview) {
    machine.Write("InterimCal20120309/LoadCell1-H1D1.txt", "a drop");
    PublishRun(*program);
    EXPECT_THAT(DatedFolders(), ElementsAre("20120309"));
    EXPECT_THAT(machine.files.FileNames(run.OutputFolder),
                ElementsAre("BellmarkCalibration.ddx", "InterimCal.DDX", "LoadCell1-H1D1.txt"));
    const auto document = OpenProfileStrings(machine.files, run.OutputFolder / calibrationDocumentName);
    EXPECT_EQ(document.Get("Operations Information", "FileName"),
              PathText(machine.folder / "Bellmark/Calibrations/Owner/Unit 7/20120309/BellmarkCalibration.ddx"));
    const auto saved = OpenProfileStrings(machine.files, machine.folder / run.InterimFileName);
    EXPECT_EQ(saved.Get("Device Calibration", "DeviceOwnerSNDateFolder"), PathText(run.OutputFolder));

    machine.Write("Bellmark/Calibrations/Owner/Unit 7/20110101/of another year.txt", "");
    machine.clock.Set(MakeDateTime(2012, 3, 10, 0, 5));
    PublishRun(*program);
    EXPECT_THAT(DatedFolders(), ElementsAre("20110101", "20120310"));
    PublishRun(*program);
    EXPECT_THAT(DatedFolders(), ElementsAre("20110101", "20120310"));
    run.ReviewMode = true;
    PublishRun(*program);
    EXPECT_THAT(DatedFolders(), ElementsAre("20110101", "Sim20120310"));
}

TEST_F(PublishRunTest, OnlyADatedFolderOfTheFWDIsDeleted) {
    const Path unit = "Bellmark/Calibrations/Owner/Unit 7";
    const Path strange = "Pictures/Years/20110101";
    const Path others[] = {unit / "Photos",
                           unit / "20111301",
                           unit / "20110101 old",
                           unit / "sim20110101",
                           unit / "../Unit 8/20110101",
                           "20110101",
                           strange};
    for (const Path& other : others) {
        machine.Write(other / "Photos.txt", "not the run's");
        run.DeviceFolder = machine.folder / (other == strange ? other.parent_path() : unit);
        run.OutputFolder = machine.folder / other;
        PublishRun(*program);
        EXPECT_TRUE(machine.Has(other / "Photos.txt")) << other;
    }
}

TEST_F(PublishRunTest, AnAcceptanceIsSavedAlsoWhenItsFolderCannotBeMade) {
    machine.Write("Bellmark", "a file where the owner's folder should be");
    SetTrials({1.0, 1.0});
    machine.dialogs.QueueAnswer(Answer::OK);
    tab.cmdAcceptLC.UserClick();
    EXPECT_THAT(Boxes(), HasSubstr("Owner"));
    EXPECT_FALSE(results.txtPleaseWait.Visible);
    EXPECT_TRUE(results.cmdPrintPDDX[0].Enabled) << "the final outputs try again";
    const auto saved = OpenProfileStrings(machine.files, machine.folder / run.InterimFileName);
    EXPECT_EQ(saved.Get("Device Calibration", "LoadCellCalComplete"), "True");

    run.DeviceFolder.clear();
    run.LoadCellCalComplete = false;
    results.Recompute();
    machine.dialogs.QueueAnswer(Answer::OK);
    tab.cmdAcceptLC.UserClick();
    EXPECT_THAT(Boxes(), HasSubstr("choose the folder of the FWD in the set-up"));
}

}  // namespace
}  // namespace bellmark
