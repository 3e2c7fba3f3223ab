#include "controls/controls.h"

#include <gtest/gtest.h>

#include "tests/controls/sample_screen.h"

namespace bellmark {
namespace {

struct ControlsTest : ::testing::Test, SampleProgram {};

/// Counts how often a control notifies its view during an action.
template <class Action>
int TellsOf(Control& control, Action action) {
    int tells = 0;
    control.Changed = [&] { ++tells; };
    action();
    control.Changed = nullptr;
    return tells;
}

TEST_F(ControlsTest, TellTheViewOfChangesOnly) {
    screen.cboList.Items = {"4", "5"};
    EXPECT_EQ(TellsOf(screen.lblText, [&] { screen.lblText.Caption = "new"; }), 1);
    EXPECT_EQ(TellsOf(screen.lblText, [&] { screen.lblText.Caption = "new"; }), 0);
    EXPECT_EQ(TellsOf(screen.lblText, [&] { screen.lblText.Caption = screen.cmdGo.Caption; }), 1);
    EXPECT_EQ(screen.lblText.Caption.Get(), "&Go");
    EXPECT_EQ(TellsOf(screen.cmdGo, [&] { screen.cmdGo.BackColor = colors::complete; }), 1);
    EXPECT_EQ(TellsOf(screen.cmdGo, [&] { screen.cmdGo.Enabled = true; }), 0);
    EXPECT_EQ(TellsOf(screen.cboList, [&] { EXPECT_TRUE(screen.cboList.ChooseText("5")); }), 1);
    EXPECT_EQ(TellsOf(screen.cboList, [&] { EXPECT_FALSE(screen.cboList.ChooseText("6")); }), 0);
    EXPECT_EQ(screen.cboList.DisplayText(), "5");
    screen.optFirst.Choose();
    EXPECT_EQ(TellsOf(screen.optFirst, [&] { screen.optSecond.Choose(); }), 1) << "dropped by its neighbour";
    EXPECT_EQ(TellsOf(screen.optOther, [&] { screen.optFirst.Choose(); }), 0);
}

TEST_F(ControlsTest, CallNoHandlerWhenTheProgramSpeaks) {
    const auto fail = [] { ADD_FAILURE() << "a handler was called"; };
    for (Control* control : screen.Controls()) control->Click = fail;
    screen.txtName.Leave = fail;
    screen.grdRows.CellEdit = [&](int, int, const std::string&) { fail(); };
    screen.txtName.Text = "text";
    screen.chkSound.Value = true;
    screen.optFirst.Choose();
    screen.cboList.Items = {"4"};
    screen.cboList.ListIndex = 0;
    screen.grdRows.SetHeadings({"A"});
    screen.grdRows.SetCell(0, 0, "B");
}

TEST_F(ControlsTest, ReachHandlersOnlyWhenTheUserCanReachThem) {
    screen.cboList.Items = {"4", "5"};
    screen.grdRows.SetHeadings({"A", "B"});
    screen.grdRows.SetEditable(0, 1, true);
    int handled = 0;
    for (Control* control : screen.Controls()) control->Click = [&] { ++handled; };
    screen.txtName.Leave = [&] { ++handled; };
    screen.grdRows.CellClick = [&](int, int) { ++handled; };
    screen.grdRows.CellDoubleClick = [&](int, int) { ++handled; };
    screen.grdRows.CellEdit = [&](int, int, const std::string&) { ++handled; };
    const std::vector<std::pair<Control*, std::function<void()>>> verbs{
        {&screen.cmdGo, [&] { screen.cmdGo.UserClick(); }},
        {&screen.lblText, [&] { screen.lblText.UserClick(); }},
        {&screen.chkSound, [&] { screen.chkSound.UserClick(); }},
        {&screen.optFirst, [&] { screen.optFirst.UserClick(); }},
        {&screen.txtName, [&] { screen.txtName.UserEnter("typed"); }},
        {&screen.cboList, [&] { screen.cboList.UserChoose(1); }},
        {&screen.grdRows, [&] { screen.grdRows.UserClickCell(0, 1); }},
        {&screen.grdRows, [&] { screen.grdRows.UserDoubleClickCell(0, 1); }},
        {&screen.grdRows, [&] { screen.grdRows.UserEditCell(0, 1, "typed"); }},
    };
    for (const auto& [control, verb] : verbs) {
        SCOPED_TRACE(control->Name());
        for (Property<bool>* barrier : {&control->Enabled, &control->Visible, &screen.fraInner.Enabled,
                                        &screen.fraInner.Visible, &screen.fraOuter.Visible, &screen.fraOuter.Enabled}) {
            *barrier = false;
            EXPECT_FALSE(control->IsReachable());
            EXPECT_THROW(verb(), UserError);
            *barrier = true;
        }
        EXPECT_EQ(handled, 0);
        verb();
        EXPECT_EQ(handled, 1);
        handled = 0;
    }
    // Only the reachable attempts have an effect.
    EXPECT_TRUE(screen.chkSound.Value);
    EXPECT_TRUE(screen.optFirst.IsChosen());
    EXPECT_EQ(screen.txtName.Text.Get(), "typed");
    EXPECT_EQ(screen.cboList.ListIndex.Get(), 1);
}

TEST_F(ControlsTest, RefuseWhatCannotBe) {
    screen.txtName.Text = "old";
    EXPECT_THROW(screen.txtName.UserEnter("10 \xE2\x84\xA6"), UserError) << "the ohm sign, which the files lack";
    screen.txtName.UserEnter("5 \xC2\xB5m");
    screen.txtName.Locked = true;
    EXPECT_THROW(screen.txtName.UserEnter("x"), UserError);
    EXPECT_EQ(screen.txtName.Text.Get(), "5 \xC2\xB5m");

    screen.cboList.Items = {"4"};
    EXPECT_THROW(screen.cboList.UserChoose(1), UserError);
    EXPECT_THROW(screen.cboList.UserChoose(-1), UserError);
    EXPECT_THROW(screen.cboList.UserChoose("5"), UserError);
    EXPECT_EQ(screen.cboList.DisplayText(), "");

    screen.grdRows.SetHeadings({"A", "B"});
    EXPECT_THROW(screen.grdRows.UserClickCell(1, 0), UserError);
    EXPECT_THROW(screen.grdRows.UserClickCell(0, 2), UserError);
    EXPECT_THROW(screen.grdRows.UserClickCell(-1, 0), UserError);
    EXPECT_THROW(screen.grdRows.UserEditCell(0, 0, "x"), UserError) << "not to be edited";
}

TEST_F(ControlsTest, GridForgetsASelectionThatIsGone) {
    screen.grdRows.SetHeadings({"A", "B"});
    screen.grdRows.AddRow({"1"});
    screen.grdRows.AddRow({"2", "3", "beyond the last column"});
    EXPECT_EQ(screen.grdRows.DisplayText(), "A\tB\n1\t\n2\t3");
    screen.grdRows.SelectedRow = 2;
    screen.grdRows.Resize(3, 1);
    EXPECT_EQ(screen.grdRows.SelectedRow.Get(), 2);
    screen.grdRows.SetHeadings({"A"});
    EXPECT_EQ(screen.grdRows.SelectedRow.Get(), -1);
}

}  // namespace
}  // namespace bellmark
