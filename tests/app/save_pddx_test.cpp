#include "app/save_pddx.h"

#include <gtest/gtest.h>

#include "app/program.h"
#include "pddx/pddx_file.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

TEST(SavePDDX, ADocumentThatCannotBeWrittenLeavesTheOldFile) {
    TestMachine machine;
    Program program(machine.machine);
    const Path path = machine.Write("run.ddx", "old");
    PDDXFile document;
    machine.files.FailFromWrite(1);
    // The log cannot be written either; the box still appears.
    machine.dialogs.QueueAnswer(Answer::OK);
    EXPECT_FALSE(SavePDDX(program, document, path));
    EXPECT_EQ(machine.dialogs.TakeBoxes(),
              std::vector<std::string>{"\tUnable to create PDDX file:\\n" + PathText(path) + "\t48\tOK"});
    machine.files.FailFromWrite(0);
    EXPECT_EQ(machine.files.ReadBytes(path), "old");
    EXPECT_TRUE(SavePDDX(program, document, path));
    EXPECT_NE(machine.files.ReadBytes(path), "old");
    EXPECT_TRUE(SavePDDX(program, document, {}));
}

}  // namespace
}  // namespace bellmark
