#include "app/journal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/program.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

TEST(Journal, TellsWhatHappenedWhoDidItAndWhatWasAnswered) {
    TestMachine machine;
    Program program(machine.machine);

    program.Center.CalibrationCenterOperator = "A. Operator";
    const Path journal = machine.folder / "InterimCal20261122/Journal.txt";
    AddToJournal(program, "of no run");
    program.Run.InterimFolderName = "InterimCal20261122";
    BeginJournal(program, "begun");
    EXPECT_FALSE(machine.files.IsFile(journal)) << "the folder of the run is made by what is saved first";
    machine.files.CreateFolder(journal.parent_path());
    program.Run.CurrentProcedure = Procedure::LoadCell;
    program.Run.CurrentProcStep = step::loadCellTrial;
    machine.dialogs.QueueAnswer(Answer::No);
    program.ShowBox("The gain is\r\n1.03.\tAccept?", box::yesNo, "Doubt");
    const std::string step = "5," + std::to_string(step::loadCellTrial);
    EXPECT_EQ(machine.files.ReadBytes(journal),
              "2012-03-09 10:00:00\tA. Operator\t0,0\tbegun\r\n"
              "2012-03-09 10:00:00\tA. Operator\t" +
                  step + "\tMessage, answered No: Doubt: The gain is 1.03. Accept?\r\n");
    // Another run has an account of its own.
    program.Run.InterimFolderName = "InterimCal20261122-1";
    BeginJournal(program, "begun");
    machine.files.CreateFolder(machine.folder / "InterimCal20261122-1");
    AddToJournal(program, "gone on");
    EXPECT_THAT(machine.files.ReadBytes(machine.folder / "InterimCal20261122-1/Journal.txt"),
                testing::MatchesRegex("[^\n]*begun\r\n[^\n]*gone on\r\n"));
}

}  // namespace
}  // namespace bellmark
