#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "console/script.h"

namespace bellmark {

class Control;
class Grid;
class Program;
class Screen;
class ScriptClock;
class ScriptDialogs;

/// Runs the lines of a script on a program, as its operator would act.
class ScriptRunner {
  public:
    ScriptRunner(Program& program, ScriptDialogs& dialogs, ScriptClock& clock, std::ostream& output);

    /// Throws ScriptError for the first line that is wrong or whose check fails.
    void Run(const std::vector<ScriptLine>& lines);

    /// Called while the program waits: runs the next line of the script.
    void TakeTurn();

    void ProgramHasEnded() { ended_ = true; }
    bool echo = false;      ///< prints each line before it runs
    bool progress = false;  ///< prints the comment above a line before it runs

  private:
    using Words = std::vector<ScriptWord>;
    struct Command {
        const char* name;
        std::size_t fewestWords;
        std::size_t mostWords;
        void (ScriptRunner::*run)(const Words& words);
    };
    static const std::vector<Command>& Commands();
    struct Target {
        Screen* screen = nullptr;
        Control* control = nullptr;  ///< nullptr: the screen itself
        std::string property;
    };

    struct Loop {
        std::size_t firstLine = 0;  ///< index of the line below the repeat
        int turns = 0;
        int turn = 1;
    };

    void RunNextLine();
    void RunLine(const ScriptLine& line);
    std::string TurnsInWords() const;
    Target Find(const std::string& name) const;
    Control& FindControl(const std::string& name) const;
    Control& FindReachable(const std::string& name) const;
    Grid& FindGrid(const std::string& name) const;
    template <class ControlType>
    ControlType& FindReachableAs(const std::string& name, const char* kind) const;
    std::string TextOf(const Target& target) const;
    void RequireEqual(const std::string& found, const std::string& expected) const;

    void Click(const Words& words);
    void DoubleClick(const Words& words);
    void Set(const Words& words);
    void Choose(const Words& words);
    void QueueAnswer(const Words& words);
    void QueueFile(const Words& words);
    void QueueFolder(const Words& words);
    void QueueInput(const Words& words);
    void Show(const Words& words);
    void Expect(const Words& words);
    void ShowCell(const Words& words);
    void ExpectCell(const Words& words);
    void ShowFront(const Words& words);
    void ExpectFront(const Words& words);
    void ShowBoxes(const Words& words);
    void SetClock(const Words& words);
    void Advance(const Words& words);
    void PressEnter(const Words& words);
    void BeginLoop(const Words& words);
    void EndTurn(const Words& words);
    void Quit(const Words& words);
    std::string FrontName() const;

    Program& program_;
    ScriptDialogs& dialogs_;
    ScriptClock& clock_;
    std::ostream& output_;
    const std::vector<ScriptLine>* lines_ = nullptr;
    std::size_t next_ = 0;
    std::vector<Loop> loops_;  ///< the loops around the next line, the innermost last
    bool ended_ = false;
};

}  // namespace bellmark
