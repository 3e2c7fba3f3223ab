#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "controls/control.h"
#include "platform/formatted_text.h"

namespace bellmark {

/// A control with a caption: "&" comes before the letter that reaches it by keyboard.
class CaptionedControl : public Control {
  public:
    CaptionedControl(Place place, std::string name, std::string caption = {})
        : Control(place, std::move(name)), Caption(*this, std::move(caption)) {}
    std::string DisplayText() const override { return Caption; }
    Property<std::string> Caption;
};

/// Buttons on screens, and the items of the main frame's menus.
class Button : public CaptionedControl {
  public:
    Button(Place place, std::string name, std::string caption = {});
    bool IsMenuItem = false;
};

class Label : public CaptionedControl {
  public:
    using CaptionedControl::CaptionedControl;
};

/// Holds other controls; hiding or disabling it does so to all it holds.
class Frame : public CaptionedControl {
  public:
    using CaptionedControl::CaptionedControl;

    /// What Enter and Escape press while the keyboard is in the frame, in place of the screen's own button.
    Button* DefaultButton = nullptr;
    Button* CancelButton = nullptr;
};

class TextBox : public Control {
  public:
    TextBox(Place place, std::string name) : Control(place, std::move(name)) {}
    std::string DisplayText() const override { return Text; }

    Property<std::string> Text{*this, {}};
    Property<bool> Locked{*this, false};         ///< shown, not to be changed
    Property<std::string> EmptyHint{*this, {}};  ///< shown faintly while there is no text

    std::function<void()> Leave;  ///< the user has changed the text and left the box

    /// Types the text and leaves the box. Throws UserError when it is locked or not reachable, and for a character that
    /// the files of the program cannot hold.
    void UserEnter(const std::string& text);
};

/// Shows a formatted text, as it will be printed.
class RichTextBox : public Control {
  public:
    RichTextBox(Place place, std::string name) : Control(place, std::move(name)) {}
    std::string DisplayText() const override { return PlainText(Content.Get()); }
    Property<FormattedText> Content{*this, {}};
};

class CheckBox : public CaptionedControl {
  public:
    using CaptionedControl::CaptionedControl;
    Property<bool> Value{*this, false};

  protected:
    void BeforeClick() override { Value = !Value.Get(); }
};

/// One of several choices: choosing it, by the user or by the program, drops the others of its group on the same
/// screen.
class OptionButton : public CaptionedControl {
  public:
    OptionButton(Place place, std::string name, std::string group, std::string caption = {})
        : CaptionedControl(place, std::move(name), std::move(caption)), group_(std::move(group)) {}
    bool IsChosen() const { return chosen_; }
    void Choose();
    void Drop();
    const std::string& Group() const { return group_; }

  protected:
    void BeforeClick() override { Choose(); }

  private:
    Property<bool> chosen_{*this, false};
    std::string group_;
};

class ComboBox : public Control {
  public:
    ComboBox(Place place, std::string name) : Control(place, std::move(name)) {}
    std::string DisplayText() const override;

    Property<std::vector<std::string>> Items{*this, {}};
    Property<int> ListIndex{*this, -1};  ///< -1 while nothing is chosen

    std::function<void()> Leave;  ///< the user has chosen an entry and left the list

    bool ChooseText(const std::string& item);  ///< the program chooses; false when there is no such entry
    void UserChoose(int index);                ///< raises Click; throws UserError for an index past the end
    void UserChoose(const std::string& item);
    void UserLeave();

  private:
    bool chosenSinceLeft_ = false;
};

/// A table of texts. Row and column count from 0, fixed ones (headings) included.
class Grid : public Control {
  public:
    Grid(Place place, std::string name, int fixedRows = 1, int fixedColumns = 0)
        : Control(place, std::move(name)), fixedRows_(fixedRows), fixedColumns_(fixedColumns) {}
    std::string DisplayText() const override;  ///< rows joined by line breaks, cells by tabs

    int Rows() const { return static_cast<int>(cells_.size()); }
    int Columns() const { return columns_; }
    int FixedRows() const { return fixedRows_; }
    int FixedColumns() const { return fixedColumns_; }

    void SetHeadings(const std::vector<std::string>& headings);  ///< clears every row but the first
    void AddRow(const std::vector<std::string>& texts);
    void Resize(int rows, int columns);
    bool HasCell(int row, int column) const { return row >= 0 && row < Rows() && column >= 0 && column < columns_; }
    const std::string& Cell(int row, int column) const { return At(row, column).text; }
    void SetCell(int row, int column, std::string text);
    Color CellColor(int row, int column) const { return At(row, column).color; }
    void SetCellColor(int row, int column, Color color);
    const std::string& CellToolTip(int row, int column) const { return At(row, column).toolTip; }
    void SetCellToolTip(int row, int column, std::string text);
    bool IsEditable(int row, int column) const { return At(row, column).editable; }
    void SetEditable(int row, int column, bool editable);

    Property<int> SelectedRow{*this, -1};

    std::function<void(int row, int column)> CellClick;
    std::function<void(int row, int column)> CellDoubleClick;
    std::function<void(int row, int column, const std::string& text)> CellEdit;  ///< sets the cell itself, or refuses

    void UserClickCell(int row, int column);
    void UserDoubleClickCell(int row, int column);
    void UserEditCell(int row, int column, const std::string& text);

  private:
    struct GridCell {
        std::string text;
        std::string toolTip;
        Color color = colors::window;
        bool editable = false;
    };
    GridCell& At(int row, int column);
    const GridCell& At(int row, int column) const;
    void RequireUserCell(int row, int column) const;

    int fixedRows_;
    int fixedColumns_;
    int columns_ = 0;
    std::vector<std::vector<GridCell>> cells_;
};

/// Calls Tick each interval while it runs.
class Timer : public Control {
  public:
    Timer(Place place, std::string name, std::chrono::milliseconds interval)
        : Control(place, std::move(name)), interval_(interval) {}
    ~Timer() override { Stop(); }
    std::string DisplayText() const override { return IsRunning() ? "running" : "stopped"; }

    void SetInterval(std::chrono::milliseconds interval) { interval_ = interval; }  ///< takes effect at the next start
    void Start();  ///< restarts the interval when already running
    void Stop();
    bool IsRunning() const { return id_.has_value(); }
    std::function<void()> Tick;

  private:
    std::chrono::milliseconds interval_;
    std::optional<std::size_t> id_;
};

}  // namespace bellmark
