#include "console/script_runner.h"

#include <algorithm>
#include <cmath>
#include <ostream>

#include "app/program.h"
#include "console/script_dialogs.h"
#include "controls/controls.h"
#include "controls/enter_key.h"
#include "controls/picture.h"
#include "controls/screen.h"
#include "platform/clock.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "platform/timers.h"

namespace bellmark {

namespace {

/// Reports a failed line; the runner adds the line's number.
[[noreturn]] void Fail(const std::string& why) {
    throw ScriptStop{why};
}

std::string WithoutReturns(std::string text) {
    std::erase(text, '\r');
    return text;
}

int WholeNumber(const ScriptWord& word) {
    const auto number = word.quoted ? std::nullopt : NumberIn(word.text);
    constexpr double largest = 2147483647;
    if (!number || std::abs(*number) > largest || *number != std::trunc(*number))
        Fail("\"" + word.text + "\" is not a whole number");
    return static_cast<int>(*number);
}

/// Replaces every $i by the number of the turn.
void FillInTurn(std::string& text, int turn) {
    constexpr std::string_view sign = "$i";
    const std::string number = NumberText(turn);
    for (auto at = text.find(sign); at != std::string::npos; at = text.find(sign, at + number.size())) {
        text.replace(at, sign.size(), number);
    }
}

std::string Truth(bool value) {
    return value ? "True" : "False";
}

}  // namespace

ScriptRunner::ScriptRunner(Program& program, ScriptDialogs& dialogs, ScriptClock& clock, std::ostream& output)
    : program_(program), dialogs_(dialogs), clock_(clock), output_(output) {
    dialogs_.Shown = [this](const std::string& shown) {
        if (echo) output_ << "    box: " << shown << '\n';
    };
}

const std::vector<ScriptRunner::Command>& ScriptRunner::Commands() {
    static const std::vector<Command> commands{
        {"click", 2, 4, &ScriptRunner::Click},
        {"doubleclick", 4, 4, &ScriptRunner::DoubleClick},
        {"set", 3, 5, &ScriptRunner::Set},
        {"choose", 3, 3, &ScriptRunner::Choose},
        {"answer", 2, 2, &ScriptRunner::QueueAnswer},
        {"file", 2, 2, &ScriptRunner::QueueFile},
        {"folder", 2, 2, &ScriptRunner::QueueFolder},
        {"input", 2, 2, &ScriptRunner::QueueInput},
        {"show", 2, 4, &ScriptRunner::Show},
        {"expect", 3, 3, &ScriptRunner::Expect},
        {"cell", 4, 4, &ScriptRunner::ShowCell},
        {"expectcell", 5, 5, &ScriptRunner::ExpectCell},
        {"front", 1, 1, &ScriptRunner::ShowFront},
        {"expectfront", 2, 2, &ScriptRunner::ExpectFront},
        {"boxes", 1, 1, &ScriptRunner::ShowBoxes},
        {"clock", 2, 2, &ScriptRunner::SetClock},
        {"advance", 2, 2, &ScriptRunner::Advance},
        {"quit", 1, 1, &ScriptRunner::Quit},
        {"enter", 1, 1, &ScriptRunner::PressEnter},
        {"repeat", 2, 2, &ScriptRunner::BeginLoop},
        {"end", 1, 1, &ScriptRunner::EndTurn},
    };
    return commands;
}

void ScriptRunner::Run(const std::vector<ScriptLine>& lines) {
    lines_ = &lines;
    next_ = 0;
    loops_.clear();
    while (next_ < lines.size()) RunNextLine();
}

void ScriptRunner::TakeTurn() {
    if (!lines_ || next_ >= lines_->size()) Fail("the program waits for something and the script has no line left");
    RunNextLine();
}

void ScriptRunner::RunNextLine() {
    ScriptLine line = (*lines_)[next_++];
    if (!loops_.empty()) {
        FillInTurn(line.heading, loops_.back().turn);
        for (ScriptWord& word : line.words) FillInTurn(word.text, loops_.back().turn);
    }
    RunLine(line);
}

std::string ScriptRunner::TurnsInWords() const {
    std::string words;
    for (const Loop& loop : loops_) words += (words.empty() ? " (turn " : ", ") + NumberText(loop.turn);
    return words.empty() ? words : words + ')';
}

void ScriptRunner::RunLine(const ScriptLine& line) {
    const std::string& name = line.words.front().text;
    if (progress && !line.heading.empty()) output_ << line.heading << std::endl;
    if (echo) {
        output_ << line.number << ':';
        for (const auto& word : line.words) output_ << ' ' << OnOneLine(word.text);
        output_ << std::endl;
    }
    try {
        if (ended_) Fail("the program has ended");
        const auto command = std::find_if(Commands().begin(), Commands().end(),
                                          [&](const Command& known) { return name == known.name; });
        if (command == Commands().end()) Fail("there is no command \"" + name + '"');
        if (line.words.size() < command->fewestWords) Fail(name + " needs more words");
        if (line.words.size() > command->mostWords) Fail(name + " takes fewer words");
        (this->*command->run)(line.words);
    } catch (const ScriptStop& stop) {
        throw ScriptError(line.number, stop.why + TurnsInWords());
    } catch (const UserError& error) {
        throw ScriptError(line.number, error.what() + TurnsInWords());
    }
}

ScriptRunner::Target ScriptRunner::Find(const std::string& name) const {
    const auto parts = Split(name, '.');
    Target target;
    target.screen = program_.Screens.Find(parts[0]);
    if (!target.screen) Fail("there is no screen \"" + parts[0] + "\" yet");
    std::size_t used = 1;
    if (parts.size() > used) target.control = target.screen->Find(parts[used]);
    if (target.control) ++used;
    if (parts.size() > used) target.property = parts[used++];
    const bool isScreensOwn = !target.control && EqualIgnoringCase(target.property, "BackColor");
    if (!target.control && !isScreensOwn) Fail("there is no control \"" + name + '"');
    if (parts.size() > used) Fail("\"" + name + "\" has too many parts");
    return target;
}

Control& ScriptRunner::FindControl(const std::string& name) const {
    const Target target = Find(name);
    if (!target.control || !target.property.empty()) Fail("\"" + name + "\" is not a control");
    return *target.control;
}

Control& ScriptRunner::FindReachable(const std::string& name) const {
    Control& control = FindControl(name);
    const Screen& screen = control.Owner();
    if (!screen.IsAlwaysAtHand() && program_.Screens.Front() != &screen) {
        Fail(screen.Name() + " is not in front; " + FrontName() + " is");
    }
    return control;
}

template <class ControlType>
ControlType& ScriptRunner::FindReachableAs(const std::string& name, const char* kind) const {
    auto* control = dynamic_cast<ControlType*>(&FindReachable(name));
    if (!control) Fail(name + " is not a " + kind);
    return *control;
}

Grid& ScriptRunner::FindGrid(const std::string& name) const {
    auto* grid = dynamic_cast<Grid*>(&FindControl(name));
    if (!grid) Fail(name + " is not a grid");
    return *grid;
}

void ScriptRunner::Click(const Words& words) {
    if (words.size() == 2) {
        Control& control = FindReachable(words[1].text);
        if (dynamic_cast<Grid*>(&control)) Fail(words[1].text + " is a grid: say which row");
        control.UserClick();
        return;
    }
    auto& grid = FindReachableAs<Grid>(words[1].text, "grid");
    grid.UserClickCell(WholeNumber(words[2]), words.size() > 3 ? WholeNumber(words[3]) : 0);
}

void ScriptRunner::DoubleClick(const Words& words) {
    auto& grid = FindReachableAs<Grid>(words[1].text, "grid");
    grid.UserDoubleClickCell(WholeNumber(words[2]), WholeNumber(words[3]));
}

void ScriptRunner::Set(const Words& words) {
    if (words.size() == 4) Fail("set takes a text, or a row, a column and a text");
    if (words.size() == 3) {
        FindReachableAs<TextBox>(words[1].text, "text box").UserEnter(words[2].text);
    } else {
        FindReachableAs<Grid>(words[1].text, "grid")
            .UserEditCell(WholeNumber(words[2]), WholeNumber(words[3]), words[4].text);
    }
}

void ScriptRunner::Choose(const Words& words) {
    auto& list = FindReachableAs<ComboBox>(words[1].text, "list");
    if (words[2].quoted) {
        list.UserChoose(words[2].text);
    } else {
        list.UserChoose(WholeNumber(words[2]));
    }
    list.UserLeave();
}

void ScriptRunner::QueueAnswer(const Words& words) {
    for (const Answer answer : {Answer::OK, Answer::Cancel, Answer::Yes, Answer::No}) {
        if (words[1].text == AnswerText(answer)) return dialogs_.QueueAnswer(answer);
    }
    Fail("an answer is OK, Cancel, Yes or No");
}

void ScriptRunner::QueueFile(const Words& words) {
    const bool cancel = !words[1].quoted && words[1].text == "cancel";
    dialogs_.QueueFile(cancel ? std::nullopt : std::optional(PathFromText(words[1].text)));
}

void ScriptRunner::QueueFolder(const Words& words) {
    const bool cancel = !words[1].quoted && words[1].text == "cancel";
    dialogs_.QueueFolder(cancel ? std::nullopt : std::optional(PathFromText(words[1].text)));
}

void ScriptRunner::QueueInput(const Words& words) {
    dialogs_.QueueInput(words[1].text);
}

std::string ScriptRunner::TextOf(const Target& target) const {
    if (!target.control) return ColorText(target.screen->BackColor());
    const Control& control = *target.control;
    if (target.property.empty()) {
        if (const auto* option = dynamic_cast<const OptionButton*>(&control)) return Truth(option->IsChosen());
        if (const auto* check = dynamic_cast<const CheckBox*>(&control)) return Truth(check->Value);
        return WithoutReturns(control.DisplayText());
    }
    if (EqualIgnoringCase(target.property, "BackColor")) return ColorText(control.BackColor);
    if (EqualIgnoringCase(target.property, "Enabled")) return Truth(control.Enabled);
    if (EqualIgnoringCase(target.property, "Visible")) return Truth(control.Visible);
    if (EqualIgnoringCase(target.property, "ToolTip")) return WithoutReturns(control.ToolTip);
    if (EqualIgnoringCase(target.property, "Caption")) return WithoutReturns(control.DisplayText());
    Fail("there is no property \"" + target.property + '"');
}

void ScriptRunner::RequireEqual(const std::string& found, const std::string& expected) const {
    if (found != expected) Fail("expected \"" + OnOneLine(expected) + "\" and found \"" + OnOneLine(found) + '"');
}

void ScriptRunner::Show(const Words& words) {
    const Target target = Find(words[1].text);
    if (words.size() == 2) {
        output_ << TextOf(target) << '\n';
        return;
    }
    const auto* grid = dynamic_cast<const Grid*>(target.control);
    if (words.size() != 4 || !grid || !EqualIgnoringCase(target.property, "BackColor")) {
        Fail("a row and a column go with the BackColor of a grid");
    }
    const int row = WholeNumber(words[2]);
    const int column = WholeNumber(words[3]);
    if (!grid->HasCell(row, column)) Fail("there is no such cell");
    output_ << ColorText(grid->CellColor(row, column)) << '\n';
}

void ScriptRunner::Expect(const Words& words) {
    RequireEqual(TextOf(Find(words[1].text)), words[2].text);
}

void ScriptRunner::ShowCell(const Words& words) {
    const Grid& grid = FindGrid(words[1].text);
    const int row = WholeNumber(words[2]);
    const int column = WholeNumber(words[3]);
    if (!grid.HasCell(row, column)) Fail("there is no such cell");
    output_ << grid.Cell(row, column) << '\n';
}

void ScriptRunner::ExpectCell(const Words& words) {
    const Grid& grid = FindGrid(words[1].text);
    const int row = WholeNumber(words[2]);
    const int column = WholeNumber(words[3]);
    if (!grid.HasCell(row, column)) Fail("there is no such cell");
    RequireEqual(grid.Cell(row, column), words[4].text);
}

std::string ScriptRunner::FrontName() const {
    const Screen* front = program_.Screens.Front();
    return front ? front->Name() : std::string("none");
}

void ScriptRunner::ShowFront(const Words&) {
    output_ << FrontName() << '\n';
}

void ScriptRunner::ExpectFront(const Words& words) {
    RequireEqual(FrontName(), words[1].text);
}

void ScriptRunner::ShowBoxes(const Words&) {
    for (const auto& shown : dialogs_.TakeBoxes()) output_ << shown << '\n';
}

void ScriptRunner::SetClock(const Words& words) {
    const auto moment = ReadDateTime(words[1].text);
    if (!moment) Fail("\"" + words[1].text + "\" is not a date and time");
    clock_.Set(*moment);
}

void ScriptRunner::Advance(const Words& words) {
    using std::chrono::milliseconds;
    const milliseconds step(WholeNumber(words[1]));
    if (step < milliseconds(0)) Fail("the clock only goes forward");
    Timers& timers = program_.Services.timers;
    clock_.Advance(milliseconds(0));
    const milliseconds end = clock_.Elapsed() + step;
    while (const auto due = timers.NextDue()) {
        if (*due > end) break;
        clock_.Advance(std::max(*due - clock_.Elapsed(), milliseconds(0)));
        timers.RunDue();
    }
    // A timer that led to a wait, in which the script advanced further, may have passed the end already.
    clock_.Advance(std::max(end - clock_.Elapsed(), milliseconds(0)));
}

void ScriptRunner::PressEnter(const Words&) {
    const Screen* front = program_.Screens.Front();
    Button* pressed = front ? ButtonOfEnter(*front, front->Focus()) : nullptr;
    if (!pressed) Fail("Enter presses no button of " + FrontName());
    pressed->UserClick();
}

void ScriptRunner::BeginLoop(const Words& words) {
    const int turns = WholeNumber(words[1]);
    if (turns < 1) Fail("a repeat has at least one turn");
    loops_.push_back({next_, turns});
}

void ScriptRunner::EndTurn(const Words&) {
    Loop& loop = loops_.back();
    if (loop.turn == loop.turns) return loops_.pop_back();
    ++loop.turn;
    next_ = loop.firstLine;
}

void ScriptRunner::Quit(const Words&) {
    Screen* frame = program_.Screens.Find("frmMaster");
    if (!frame) Fail("there is no main frame");
    program_.Screens.Dispatch("frmMaster.Close", [frame] { frame->CloseRequested(); });
}

}  // namespace bellmark
