#include "console/script_runner.h"

#include <gtest/gtest.h>

#include <sstream>

#include "app/program.h"
#include "console/printed_screen.h"
#include "platform/numbers.h"
#include "tests/controls/sample_screen.h"
#include "tests/support/test_machine.h"

namespace bellmark {
namespace {

/// The frame around the sample screen: asks like the close box of the program.
struct SampleFrame : Screen {
    explicit SampleFrame(Program& owner) : Screen(owner.Screens, "frmMaster", "Bellmark"), program(owner) {}
    Button mnuSetup{*this, "mnuSetup", "&Setup"};
    Program& program;
    bool IsAlwaysAtHand() const override { return true; }
    void CloseRequested() override {
        if (program.ShowBox("Close?", box::yesNo, "Bellmark") == Answer::Yes) program.Services.endProgram();
    }
};

/// A small program whose controls are used by the commands of the language.
struct ConsoleTest : ::testing::Test {
    TestMachine machine;
    Program program{machine.machine};
    SampleFrame frame{program};
    SampleScreen screen{program.Screens};
    SampleScreen behind{program.Screens, "frmBehind"};
    ScriptRunner* running = nullptr;

    ConsoleTest() {
        machine.WhileWaiting = [this] { running->TakeTurn(); };
        machine.machine.endProgram = [this] { running->ProgramHasEnded(); };
        Label& told = screen.lblText;
        screen.cmdGo.Click = [this, &told] { told.Caption = "gone"; };
        screen.cmdGo.ToolTip = "two\r\nlines";
        frame.mnuSetup.Click = [&told] { told.Caption = "set up"; };
        screen.txtName.Leave = [this, &told] { told.Caption = "left " + screen.txtName.Text.Get(); };
        screen.cboList.Items = {"4", "5", "six"};
        screen.cboList.Click = [this, &told] { told.Caption = "chose " + screen.cboList.DisplayText(); };
        screen.grdRows.SetHeadings({"A", "B"});
        screen.grdRows.AddRow({"1", "two"});
        screen.grdRows.SetEditable(1, 1, true);
        screen.grdRows.SetCellColor(1, 0, colors::complete);
        screen.grdRows.CellClick = [&told](int row, int column) { told.Caption = Place("clicked", row, column); };
        screen.grdRows.CellDoubleClick = [&told](int row, int column) { told.Caption = Place("opened", row, column); };
        screen.grdRows.CellEdit = [this](int row, int column, const std::string& text) {
            screen.grdRows.SetCell(row, column, text);
        };
        screen.optSecond.Click = [this] {
            const auto opened = program.Services.dialogs.OpenFile({});
            const auto picked = program.Services.dialogs.PickFolder("Where?", {});
            const auto typed = program.Services.dialogs.Input("What?", "", "");
            screen.lblText.Caption = (opened ? PathText(*opened) : "none") + ' ' +
                                     (picked ? PathText(*picked) : "none") + ' ' + typed.value_or("none");
        };
        screen.optFirst.Click = [this] {
            const Answer answer = program.ShowBox("Stop?\r\nNow.", box::yesNo + box::question, "Title");
            screen.lblText.Caption = "answer " + AnswerText(answer);
        };
        screen.optOther.Click = [this] {
            while (!screen.chkSound.Value) program.Services.yield();
            screen.lblText.Caption = "waited";
        };
        screen.tmrTick.Tick = [this] { screen.lblText.Caption = screen.lblText.Caption.Get() + '.'; };
        screen.lblText.Click = [] { throw std::runtime_error("broken"); };
        screen.Show();
    }

    static std::string Place(const char* what, int row, int column) {
        return std::string(what) + ' ' + NumberText(row) + ' ' + NumberText(column);
    }

    /// The script's output, and then "line 3: why" if it fails.
    std::string OutputOf(const std::string& script) {
        std::ostringstream output;
        ScriptRunner runner(program, machine.dialogs, machine.clock, output);
        running = &runner;
        try {
            runner.Run(ReadScript(script));
        } catch (const ScriptError& error) {
            output << "line " << error.Line() << ": " << error.what() << '\n';
        }
        return output.str();
    }
};

struct Case {
    const char* script;
    const char* output;
};

TEST_F(ConsoleTest, CommandsDoAndPrintWhatTheySay) {
    const Case cases[] = {
        {"click frmSample.cmdGo\nshow frmSample.lblText", "gone\n"},
        {"click FRMSAMPLE.CMDGO\nexpect frmSample.lblText \"gone\"", ""},
        {"click frmMaster.mnuSetup\nshow frmSample.lblText", "set up\n"},
        {"click frmSample.chkSound\nshow frmSample.chkSound\nclick frmSample.chkSound\nshow frmSample.chkSound",
         "True\nFalse\n"},
        {"set frmSample.txtName \"Ann\"\nshow frmSample.lblText\nshow frmSample.txtName", "left Ann\nAnn\n"},
        {"choose frmSample.cboList 1\nshow frmSample.lblText\nchoose frmSample.cboList \"six\"\nshow frmSample.lblText",
         "chose 5\nchose six\n"},
        {"click frmSample.grdRows 1\nshow frmSample.lblText\nclick frmSample.grdRows 0 1\nshow frmSample.lblText",
         "clicked 1 0\nclicked 0 1\n"},
        {"doubleclick frmSample.grdRows 1 1\nshow frmSample.lblText", "opened 1 1\n"},
        {"show frmSample.grdRows\ncell frmSample.grdRows 1 1\nset frmSample.grdRows 1 1 \"3\"\n"
         "expectcell frmSample.grdRows 1 1 \"3\"",
         "A\tB\n1\ttwo\ntwo\n"},
        {"show frmSample.cmdGo.Enabled\nshow frmSample.cmdGo.visible\nshow frmSample.cmdGo.BackColor\n"
         "show frmSample.cmdGo.ToolTip\nshow frmSample.cmdGo\nshow frmSample.BackColor\n"
         "show frmSample.grdRows.BackColor 1 0",
         "True\nTrue\n240,240,240\ntwo\nlines\n&Go\n240,240,240\n0,255,0\n"},
        {"front\nexpectfront frmSample", "frmSample\n"},
        {"answer Yes\nanswer No\nclick frmSample.optFirst\nshow frmSample.lblText\nclick frmSample.optFirst\n"
         "show frmSample.lblText\nboxes\nboxes",
         "answer Yes\nanswer No\nTitle\tStop?\\nNow.\t36\tYes\nTitle\tStop?\\nNow.\t36\tNo\n"},
        {"input \"in\"\nfile \"a b.ini\"\nfolder cancel\nclick frmSample.optSecond\nshow frmSample.lblText",
         "a b.ini none in\n"},
        {"input \"\"\nfile cancel\nfolder \"cancel\"\nclick frmSample.optSecond\nshow frmSample.lblText",
         "none cancel \n"},
        // While the program waits, the script continues.
        {"click frmSample.optOther\nfront\nclick frmSample.chkSound\nshow frmSample.lblText", "frmSample\nwaited\n"},
        {"click frmSample.chkSound", ""},
        // A failure inside the program is reported, and the script continues.
        {"answer OK\nclick frmSample.lblText\nboxes\nclick frmSample.cmdGo\nshow frmSample.lblText",
         "Bellmark\tbroken\\n\\nWhile: frmSample.lblText.Click\t16\tOK\ngone\n"},
        {"answer No\nquit\nfront", "frmSample\n"},
        {"repeat 2\nset frmSample.txtName \"a$i$i\"\nshow frmSample.txtName\nend\nset frmSample.txtName \"$i\"\n"
         "show frmSample.txtName",
         "a11\na22\n$i\n"},
        // $i belongs to the innermost loop; after its end it is the number of the outer one again.
        {"repeat 2\nrepeat $i\nset frmSample.txtName \"$i\"\nshow frmSample.txtName\nend\nset frmSample.txtName "
         "\"=$i\"\n"
         "show frmSample.txtName\nend",
         "1\n=1\n1\n2\n=2\n"},
        {"answer Yes\nquit", ""},
    };
    for (const Case& test : cases) EXPECT_EQ(OutputOf(test.script), test.output) << test.script;
    machine.dialogs.TakeBoxes();
}

TEST_F(ConsoleTest, FailingLinesSayWhereAndWhy) {
    const Case cases[] = {
        {"\nclik frmSample.cmdGo", "line 2: there is no command \"clik\"\n"},
        {"click", "line 1: click needs more words\n"},
        {"front now", "line 1: front takes fewer words\n"},
        {"show frmNone.cmdGo", "line 1: there is no screen \"frmNone\" yet\n"},
        {"show frmSample.cmdNone", "line 1: there is no control \"frmSample.cmdNone\"\n"},
        {"show frmSample", "line 1: there is no control \"frmSample\"\n"},
        {"show frmSample.cmdGo.Height", "line 1: there is no property \"Height\"\n"},
        {"show frmSample.cmdGo.Visible.now", "line 1: \"frmSample.cmdGo.Visible.now\" has too many parts\n"},
        {"click frmBehind.cmdGo", "line 1: frmBehind is not in front; frmSample is\n"},
        {"click frmSample.grdRows", "line 1: frmSample.grdRows is a grid: say which row\n"},
        {"click frmSample.cmdGo 1", "line 1: frmSample.cmdGo is not a grid\n"},
        {"click frmSample.grdRows 2", "line 1: frmSample.grdRows has no cell 2 0\n"},
        {"click frmSample.grdRows 1.5", "line 1: \"1.5\" is not a whole number\n"},
        {"click frmSample.grdRows \"1\"", "line 1: \"1\" is not a whole number\n"},
        {"click frmSample.grdRows 1E+300", "line 1: \"1E+300\" is not a whole number\n"},
        {"set frmSample.cmdGo \"x\"", "line 1: frmSample.cmdGo is not a text box\n"},
        {"set frmSample.grdRows 1 \"x\"", "line 1: set takes a text, or a row, a column and a text\n"},
        {"set frmSample.grdRows 1 0 \"x\"", "line 1: frmSample.grdRows: this cell cannot be edited\n"},
        {"choose frmSample.cboList 3", "line 1: frmSample.cboList has no entry 3\n"},
        {"choose frmSample.cboList \"seven\"", "line 1: frmSample.cboList has no entry \"seven\"\n"},
        {"choose frmSample.txtName 1", "line 1: frmSample.txtName is not a list\n"},
        {"answer Maybe", "line 1: an answer is OK, Cancel, Yes or No\n"},
        {"expect frmSample.txtName \"x\"", "line 1: expected \"x\" and found \"\"\n"},
        {"expectfront frmBehind", "line 1: expected \"frmBehind\" and found \"frmSample\"\n"},
        {"expectcell frmSample.grdRows 1 1 \"one\"", "line 1: expected \"one\" and found \"two\"\n"},
        {"cell frmSample.grdRows 5 5", "line 1: there is no such cell\n"},
        {"cell frmSample.cmdGo 0 0", "line 1: frmSample.cmdGo is not a grid\n"},
        {"show frmSample.grdRows.BackColor 5 5", "line 1: there is no such cell\n"},
        {"show frmSample.cmdGo.BackColor 0 0", "line 1: a row and a column go with the BackColor of a grid\n"},
        {"clock \"soon\"", "line 1: \"soon\" is not a date and time\n"},
        {"advance -1", "line 1: the clock only goes forward\n"},
        {"repeat 0\nend", "line 1: a repeat has at least one turn\n"},
        {"repeat x\nend", "line 1: \"x\" is not a whole number\n"},
        {"front\nrepeat 2\nrepeat 2\nfront\nend", "line 2: this repeat has no end\n"},
        {"repeat 2\nend\nend", "line 3: there is no repeat that this end closes\n"},
        {"repeat 2\nrepeat 3\nexpect frmSample.txtName \"\"\nset frmSample.txtName \"$i\"\nend\nend",
         "line 3: expected \"\" and found \"1\" (turn 1, 2)\n"},
        {"enter", "line 1: Enter presses no button of frmSample\n"},
        {"click frmSample.optFirst",
         "line 1: a message box came up and no answer is queued: Title\tStop?\\nNow.\t36\n"},
        {"answer OK\n\nclick frmSample.optFirst",
         "line 3: the message box has no button OK: Title\tStop?\\nNow.\t36\n"},
        {"click frmSample.optSecond", "line 1: a file dialog came up and no file is queued: \n"},
        {"file \"a\"\nclick frmSample.optSecond", "line 2: a folder dialog came up and no folder is queued: Where?\n"},
        {"file \"a\"\nfolder \"b\"\nclick frmSample.optSecond",
         "line 3: an input box came up and no input is queued:  What?\n"},
    };
    for (const Case& test : cases) EXPECT_EQ(OutputOf(test.script), test.output) << test.script;

    screen.chkSound.Value = false;
    EXPECT_EQ(OutputOf("click frmSample.optOther\nfront"),
              "frmSample\nline 1: the program waits for something and the script has no line left\n");
    screen.cmdGo.Enabled = false;
    EXPECT_EQ(OutputOf("click frmSample.cmdGo"), "line 1: frmSample.cmdGo is disabled\n");
    screen.cmdGo.Visible = false;
    EXPECT_EQ(OutputOf("click frmSample.cmdGo"), "line 1: frmSample.cmdGo is hidden\n");
    EXPECT_EQ(OutputOf("answer Yes\nquit\nfront"), "line 3: the program has ended\n");
}

TEST_F(ConsoleTest, EnterPressesTheButtonThatTheKeyWould) {
    const auto pressed = [&] {
        screen.lblText.Caption = "";
        const std::string failed = OutputOf("enter");
        return failed.empty() ? screen.lblText.Caption.Get() : failed;
    };
    const std::string none = "line 1: Enter presses no button of frmSample\n";
    Button cmdOther{screen, "cmdOther"};
    cmdOther.Click = [this] { screen.lblText.Caption = "other"; };
    screen.SetFocus(screen.cmdGo);
    EXPECT_EQ(pressed(), "gone") << "the button with the keyboard";
    screen.SetFocus(screen.txtName);
    cmdOther.BackColor = colors::suggestedNext;
    EXPECT_EQ(pressed(), "other") << "the suggested step";
    screen.SetDefaultButton(&screen.cmdGo);
    EXPECT_EQ(pressed(), "gone") << "the default button comes before the suggestion";
    screen.SetFocus(cmdOther);
    EXPECT_EQ(pressed(), "other") << "and the keyboard before both";
    cmdOther.Enabled = false;
    EXPECT_EQ(pressed(), "gone");
    screen.SetFocus(screen.grdRows);
    EXPECT_EQ(pressed(), none) << "in a list Enter chooses the row";
    screen.SetFocus(screen.txtName);
    screen.cmdGo.Enabled = false;
    EXPECT_EQ(pressed(), none) << "what cannot be pressed is not replaced by another button";
    screen.SetDefaultButton(nullptr);
    EXPECT_EQ(pressed(), none);
}

TEST_F(ConsoleTest, APrintedScreenTellsItsPlotAndTexts) {
    screen.txtName.Text = "A. Operator";
    Plot plot;
    plot.title = "Load Cell Trial 1";
    screen.picPlot.Draw(plot);
    EXPECT_EQ(PrintedLines(screen),
              (std::vector<std::string>{"frmSample", "txtName: A. Operator", "Load Cell Trial 1"}));
}

TEST_F(ConsoleTest, SetsAndAdvancesTheClock) {
    screen.tmrTick.Start();
    EXPECT_EQ(OutputOf("advance 9\nshow frmSample.lblText\nadvance 21\nshow frmSample.lblText"), "\n...\n");
    EXPECT_EQ(OutputOf("clock \"2012-12-31 23:59:59\"\nshow frmSample.lblText"), "...\n") << "setting runs no timer";
    EXPECT_EQ(program.Now(), MakeDateTime(2012, 12, 31, 23, 59, 59));
    EXPECT_EQ(OutputOf("advance 1000"), "");
    EXPECT_EQ(program.Now(), MakeDateTime(2013, 1, 1));
}

TEST_F(ConsoleTest, EchoesLinesAndBoxes) {
    std::ostringstream output;
    ScriptRunner runner(program, machine.dialogs, machine.clock, output);
    runner.echo = true;
    runner.Run(ReadScript("answer Yes\n\nclick frmSample.optFirst # asks"));
    EXPECT_EQ(output.str(), "1: answer Yes\n3: click frmSample.optFirst\n    box: Title\tStop?\\nNow.\t36\tYes\n");
}

}  // namespace
}  // namespace bellmark
